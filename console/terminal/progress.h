#pragma once

#include <string>

namespace tov::console {

/// Shows on standard error how far a long operation has come: as a bar that grows on a terminal, as a line a
/// step otherwise.
///
/// Thread: one at a time.
class Progress
{
public:
    explicit Progress(std::string what);
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    /// Ends the bar's line.
    ~Progress();

    void show(unsigned int done, unsigned int total);

private:
    const std::string m_what;
    const bool m_isTerminal;
    bool m_shown = false;
};

} // namespace tov::console
