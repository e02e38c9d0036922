#include "console/terminal/progress.h"

#include "console/terminal/terminal.h"

#include <algorithm>
#include <iostream>
#include <utility>

namespace tov::console {

Progress::Progress(std::string what)
    : m_what(std::move(what))
    , m_isTerminal(standardErrorIsTerminal())
{
}

Progress::~Progress()
{
    if (m_isTerminal && m_shown)
        std::cerr << "\n";
}

void Progress::show(unsigned int done, unsigned int total)
{
    const unsigned int percent = total > 0 ? static_cast<unsigned int>(100ULL * done / total) : 0;
    m_shown = true;
    if (m_isTerminal) {
        constexpr std::size_t widest = 40;
        const std::size_t besides = m_what.size() + std::string(" [] 100 % ").size();
        const std::size_t terminal = std::max(errorTerminalWidth(), besides);
        const std::size_t width = std::min(widest, terminal - besides);
        const std::size_t filled = std::min<std::size_t>(percent * width / 100, width);
        std::cerr << "\r" << m_what;
        if (width > 0)
            std::cerr << " [" << std::string(filled, '#') << std::string(width - filled, '-') << "]";
        std::cerr << " " << percent << " %" << std::flush;
    } else {
        std::cerr << m_what << " " << percent << " %\n";
    }
}

} // namespace tov::console
