#include "console/terminal/following.h"

#include "console/terminal/terminal.h"
#include "tools/errors.h"

#include <iostream>

namespace tov::console {

void Following::print(const std::string& lines)
{
    const std::lock_guard guard(m_mutex);
    if (!(std::cout << lines << std::flush))
        m_lost = true;
}

void Following::requireReader() const
{
    if (m_lost || standardOutputIsUnread())
        throw OutputLost();
}

} // namespace tov::console
