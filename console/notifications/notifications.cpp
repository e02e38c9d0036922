#include "console/notifications/notifications.h"

#include <utility>

namespace tov::console {

Notifications::Notifications(ConsoleSession& console, std::shared_ptr<CsvLog> log)
    : m_lines(std::make_shared<NotificationLines>(console, std::move(log)))
    , m_hearing(console.session(), [lines = m_lines](std::string_view control, std::string_view notification,
                                                     std::initializer_list<double> numbers) {
        lines->print(control, notification, numbers);
    })
{
    if (m_hearing.hearsNothing())
        throw Failure("the instrument has no control that notifies");
}

} // namespace tov::console
