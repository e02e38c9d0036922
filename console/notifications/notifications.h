#pragma once

#include "console/notifications/notificationlines.h"
#include "console/session/consolesession.h"
#include "tools/notifications/hearing.h"

#include <memory>

namespace tov::console {

/// Prints the notifications of every control that the instrument has, while it exists.
class Notifications
{
public:
    /// Throws `Failure` when the instrument has no control that notifies. A `log` gets them too.
    explicit Notifications(ConsoleSession& console, std::shared_ptr<CsvLog> log = nullptr);

    /// Whether this one notified meanwhile. Thread: *any thread*.
    bool hasNotified(const host::ControlName& control) const { return m_lines->hasPrinted(control.name); }

private:
    const std::shared_ptr<NotificationLines> m_lines; // slots that still run at the end have a share of it
    Hearing m_hearing;
};

} // namespace tov::console
