#include "console/terminal/prompt.h"

#include "console/terminal/terminal.h"

#include <iostream>
#include <utility>

#ifdef SERVICE_CONSOLE_EDITS_LINES
#include <editline/readline.h>

#include <cstdlib>
#include <cstring>
#include <memory>
#endif

namespace tov::console {

namespace {

#ifdef SERVICE_CONSOLE_EDITS_LINES

// The line editor's callbacks have no argument for it.
Prompt::Completer completer; // NOLINT(cppcoreguidelines-avoid-non-const-global-variables)

// The next of the words that fit, in memory that the line editor frees.
char* nextCompletion(const char* /*begun*/, int state)
{
    // NOLINTNEXTLINE(cppcoreguidelines-avoid-non-const-global-variables)
    static std::vector<std::string> fitting;
    if (state == 0) {
        const std::string line(rl_line_buffer, static_cast<std::size_t>(rl_point));
        std::vector<std::string> words = wordsOf(line);
        if (line.empty() || line.back() == ' ')
            words.emplace_back();
        fitting = completer(words);
    }
    const auto index = static_cast<std::size_t>(state);
    return index < fitting.size() ? strdup(fitting[index].c_str()) : nullptr;
}

char** complete(const char* begun, int /*start*/, int /*end*/)
{
    return rl_completion_matches(begun, nextCompletion);
}

struct Free
{
    // The line editor is written in C.
    // NOLINTNEXTLINE(cppcoreguidelines-no-malloc, cppcoreguidelines-owning-memory)
    void operator()(char* memory) const { std::free(memory); }
};

#endif

} // namespace

#ifdef SERVICE_CONSOLE_EDITS_LINES

Prompt::Prompt(std::string prompt, Completer wordCompleter)
    : m_prompt(std::move(prompt))
    , m_isTerminal(standardInputIsTerminal())
{
    completer = std::move(wordCompleter);
    rl_attempted_completion_function = complete;
    using_history();
}

Prompt::~Prompt()
{
    rl_attempted_completion_function = nullptr;
    completer = nullptr;
}

#else

Prompt::Prompt(std::string prompt, Completer /*wordCompleter*/)
    : m_prompt(std::move(prompt))
    , m_isTerminal(standardInputIsTerminal())
{
}

Prompt::~Prompt() = default;

#endif

std::optional<std::string> Prompt::read()
{
#ifdef SERVICE_CONSOLE_EDITS_LINES
    if (m_isTerminal) {
        const std::unique_ptr<char, Free> line(readline(m_prompt.c_str()));
        if (!line)
            return {};
        if (*line != '\0')
            add_history(line.get());
        return std::string(line.get());
    }
#endif
    if (m_isTerminal)
        std::cout << m_prompt << std::flush;
    std::string line;
    return std::getline(std::cin, line) ? std::optional(line) : std::nullopt;
}

std::vector<std::string> wordsOf(const std::string& line)
{
    std::vector<std::string> words;
    bool inWord = false;
    bool inQuotes = false;
    for (const char character : line) {
        const bool isBlank = character == ' ' || character == '\t' || character == '\r';
        if (character == '"') {
            inQuotes = !inQuotes;
            if (!inWord)
                words.emplace_back();
            inWord = true;
        } else if (isBlank && !inQuotes) {
            inWord = false;
        } else {
            if (!inWord)
                words.emplace_back();
            inWord = true;
            words.back() += character;
        }
    }
    return words;
}

} // namespace tov::console
