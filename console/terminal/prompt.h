#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace tov::console {

/// Reads lines from the user: on a terminal with history and completion, otherwise as they stand on standard input.
class Prompt
{
public:
    /// Gives the words that can stand in the place of the last of the words that were typed, which may be empty.
    using Completer = std::function<std::vector<std::string>(const std::vector<std::string>&)>;

    /// `prompt` is shown on a terminal only.
    Prompt(std::string prompt, Completer completer);
    Prompt(const Prompt&) = delete;
    Prompt& operator=(const Prompt&) = delete;
    ~Prompt();

    /// The next line; nothing at the end of the input.
    std::optional<std::string> read();

private:
    const std::string m_prompt;
    const bool m_isTerminal;
};

/// The words of `line`, divided by blanks; a word with blanks stands in double quotes.
std::vector<std::string> wordsOf(const std::string& line);

} // namespace tov::console
