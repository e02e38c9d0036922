#include "console/terminal/spinner.h"

#include "console/terminal/terminal.h"

#include <iostream>
#include <string_view>

namespace tov::console {

Spinner::Spinner(std::string what)
    : m_what(std::move(what))
    , m_isTerminal(standardErrorIsTerminal())
{
}

Spinner::~Spinner()
{
    if (m_isTerminal && m_turns > 0)
        std::cerr << "\r\x1b[K" << std::flush;
}

void Spinner::turn()
{
    constexpr std::string_view positions = "|/-\\";
    if (m_isTerminal)
        std::cerr << "\r" << m_what << " " << positions[m_turns % positions.size()] << std::flush;
    ++m_turns;
}

} // namespace tov::console
