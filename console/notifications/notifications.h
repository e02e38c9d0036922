#pragma once

#include "console/notifications/notificationlines.h"
#include "console/session/consolesession.h"

#include <memory>

namespace tov::console {

/// Prints the notifications of every control that the instrument has, while it exists.
class Notifications
{
public:
    /// Throws `Failure` when the instrument has no control that notifies.
    explicit Notifications(ConsoleSession& console);
    Notifications(const Notifications&) = delete;
    Notifications& operator=(const Notifications&) = delete;
    ~Notifications();

private:
    struct Observers;

    NotificationLines m_lines;
    std::unique_ptr<Observers> m_observers;
};

} // namespace tov::console
