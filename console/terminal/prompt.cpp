#include "console/terminal/prompt.h"

#include "console/terminal/shellwords.h"
#include "console/terminal/terminal.h"

#include <iostream>
#include <utility>

#ifdef SERVICE_CONSOLE_EDITS_LINES
#include <QFile>
#include <QFileInfo>

#include <editline/readline.h>
#include <unistd.h>

#include <cstdio>
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
char* nextCompletion(const char* begun, int state)
{
    // NOLINTBEGIN(cppcoreguidelines-avoid-non-const-global-variables)
    static std::vector<std::string> fitting;
    static bool files = false;
    // NOLINTEND(cppcoreguidelines-avoid-non-const-global-variables)
    if (state == 0) {
        fitting = completer(wordsBegun(std::string(rl_line_buffer, static_cast<std::size_t>(rl_point))));
        files = std::erase(fitting, localFiles) > 0;
    }
    const auto index = static_cast<std::size_t>(state);
    rl_completion_append_character = ' ';
    if (index < fitting.size())
        return strdup(asOneWord(fitting[index]).c_str());
    char* const file = files ? filename_completion_function(begun, static_cast<int>(index - fitting.size())) : nullptr;
    if (file != nullptr && QFileInfo(QFile::decodeName(file)).isDir())
        rl_completion_append_character = '/';
    return file;
}

char** complete(const char* begun, int /*start*/, int /*end*/)
{
    rl_attempted_completion_over = 1; // files are offered where they fit only
    return rl_completion_matches(begun, nextCompletion);
}

// The next character of the terminal; EOF when there is none, or Ctrl-C comes instead.
int nextCharacter(std::FILE* /*terminal*/)
{
    const auto nextByte = []() -> int {
        unsigned char byte = 0;
        return Interruption::waitForInput() && ::read(0, &byte, 1) == 1 ? byte : EOF;
    };
    const int first = nextByte();
    if (first < 0xC0)
        return first;
    const int following = 1 + (first >= 0xE0 ? 1 : 0) + (first >= 0xF0 ? 1 : 0); // in UTF-8
    int character = first & (0x3F >> following);
    for (int i = 0; i < following; ++i)
        character = character << 6 | (nextByte() & 0x3F);
    return character;
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

Prompt::Prompt(std::string prompt, Completer wordCompleter, std::optional<History> history)
    : m_prompt(std::move(prompt))
    , m_isTerminal(standardInputIsTerminal())
    , m_history(std::move(history))
{
    completer = std::move(wordCompleter);
    if (!m_isTerminal)
        return;
    m_interruption.emplace();
    rl_readline_name = "service-console";
    rl_attempted_completion_function = complete;
    rl_basic_word_break_characters = " \t\n";
    rl_getc_function = nextCharacter;
    using_history();
    if (m_history)
        for (const std::string& line : m_history->lines())
            add_history(line.c_str());
}

Prompt::~Prompt()
{
    rl_attempted_completion_function = nullptr;
    completer = nullptr;
}

#else

Prompt::Prompt(std::string prompt, Completer /*wordCompleter*/, std::optional<History> history)
    : m_prompt(std::move(prompt))
    , m_isTerminal(standardInputIsTerminal())
    , m_history(std::move(history))
{
    if (m_isTerminal)
        m_interruption.emplace();
}

Prompt::~Prompt() = default;

#endif

std::optional<std::string> Prompt::read()
{
    Interruption::came(); // what was meant for the command before
    std::optional<std::string> line = readLine();
    if (line || !m_isTerminal || !Interruption::came())
        return line;
    std::cin.clear();
    std::cout << "^C\n" << std::flush;
    return std::string();
}

std::optional<std::string> Prompt::readLine()
{
#ifdef SERVICE_CONSOLE_EDITS_LINES
    if (m_isTerminal) {
        const std::unique_ptr<char, Free> line(readline(m_prompt.c_str()));
        if (!line)
            return {};
        if (*line != '\0') {
            add_history(line.get());
            if (m_history)
                m_history->add(line.get());
        }
        return std::string(line.get());
    }
#endif
    if (m_isTerminal) {
        std::cout << m_prompt << std::flush;
        if (!Interruption::waitForInput())
            return {};
    }
    std::string line;
    return std::getline(std::cin, line) ? std::optional(line) : std::nullopt;
}

} // namespace tov::console
