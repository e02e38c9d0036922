#pragma once

#include "console/terminal/history.h"
#include "console/terminal/interruption.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace tov::console {

/// Stands among the words that fit where names of this computer's files do too.
inline constexpr auto localFiles = "__files";

/// Reads lines from the user: on a terminal with history and completion, otherwise as they stand on standard input.
/// While there is a terminal, Ctrl-C gives up a line.
class Prompt
{
public:
    /// Gives the words that can stand in the place of the last of the words that were typed, which may be empty.
    using Completer = std::function<std::vector<std::string>(const std::vector<std::string>&)>;

    /// `prompt` is shown on a terminal only. There the lines of `history` can be called back, and are added to it.
    Prompt(std::string prompt, Completer completer, std::optional<History> history);
    Prompt(const Prompt&) = delete;
    Prompt& operator=(const Prompt&) = delete;
    ~Prompt();

    /// Whether somebody types the lines.
    bool isTerminal() const noexcept { return m_isTerminal; }

    /// The next line, empty where it was given up; nothing at the end of the input.
    std::optional<std::string> read();

private:
    std::optional<std::string> readLine();

    const std::string m_prompt;
    const bool m_isTerminal;
    const std::optional<History> m_history;
    std::optional<Interruption> m_interruption;
};

} // namespace tov::console
