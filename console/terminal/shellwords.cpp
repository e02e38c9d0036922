#include "console/terminal/shellwords.h"

#include "tools/errors.h"

#include <optional>
#include <string_view>

namespace tov::console {

namespace {

constexpr std::string_view blanks = " \t\r\n";
constexpr std::string_view escapedInQuotes = R"("\$`)";

/// Takes a line apart letter by letter.
class Splitter
{
public:
    explicit Splitter(const std::string& line)
    {
        for (std::size_t i = 0; i < line.size(); ++i) {
            if (m_quote == 0 && !m_word && line[i] == '#')
                return;
            if (line[i] == '\\' && m_quote != '\'') {
                i += escape(std::string_view(line).substr(i + 1));
                continue;
            }
            take(line[i]);
        }
        if (m_word)
            m_last = *m_word;
    }

    std::vector<std::string> words; // that were ended by a blank
    char unclosed() const { return m_quote; }
    const std::optional<std::string>& last() const { return m_last; }

private:
    // The one that is being read, which begins here unless it has begun.
    std::string& word() { return m_word ? *m_word : m_word.emplace(); }

    // How many letters behind the backslash are taken.
    std::size_t escape(std::string_view behind)
    {
        if (behind.empty() || (m_quote == '"' && !escapedInQuotes.contains(behind.front()))) {
            word() += '\\';
            return 0;
        }
        word() += behind.front();
        return 1;
    }

    void take(char character)
    {
        if (m_quote != 0) {
            if (character == m_quote)
                m_quote = 0;
            else
                word() += character;
        } else if (blanks.contains(character)) {
            if (m_word)
                words.push_back(*m_word);
            m_word.reset();
        } else {
            std::string& begun = word();
            if (character == '"' || character == '\'')
                m_quote = character;
            else
                begun += character;
        }
    }

    std::optional<std::string> m_word;
    char m_quote = 0; // in which it is
    std::optional<std::string> m_last;
};

} // namespace

std::vector<std::string> wordsOf(const std::string& line)
{
    Splitter split(line);
    if (split.unclosed() != 0)
        throw BadUse(std::string("the quote ") + split.unclosed() + " is not closed");
    if (const auto& last = split.last())
        split.words.push_back(*last);
    return split.words;
}

std::vector<std::string> wordsBegun(const std::string& line)
{
    Splitter split(line);
    split.words.push_back(split.last().value_or(""));
    return split.words;
}

std::string asOneWord(const std::string& word)
{
    if (word.empty())
        return "''";
    std::string written;
    for (const char character : word) {
        if (blanks.contains(character) || character == '"' || character == '\'' || character == '\\'
            || character == '#')
            written += '\\';
        written += character;
    }
    return written;
}

} // namespace tov::console
