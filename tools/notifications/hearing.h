#pragma once

#include "host/instrumentsession.h"

#include <exception>
#include <functional>
#include <initializer_list>
#include <memory>
#include <string_view>

namespace tov::inline tools {

/// Is told of a notification: whose it is, its name and its numbers. Thread: *any thread*.
using NotificationSink =
    std::function<void(std::string_view control, std::string_view notification, std::initializer_list<double> numbers)>;

/// Is told of a control that cannot be heard, and what was thrown. Thread: the session's *owner's thread*.
using NotHeardSink = std::function<void(const host::ControlName& control, const std::exception_ptr& thrown)>;

/// Hears the notifications of every control that the instrument has, while it exists.
///
/// Thread: *owner's thread*, which is that of the session.
class Hearing
{
public:
    /// `session` must outlive this object. Without `notHeard`, what a control throws passes through, and those after it
    /// are not heard.
    Hearing(host::InstrumentSession& session, NotificationSink told, NotHeardSink notHeard = {});
    Hearing(const Hearing&) = delete;
    Hearing& operator=(const Hearing&) = delete;
    ~Hearing();

    /// Hears also the controls that were not there before, or could not be heard.
    void hearWhatIsThere();

    /// Whether the instrument had no control that notifies.
    bool hearsNothing() const;

private:
    struct Ears;

    const std::shared_ptr<const NotificationSink> m_told; // slots that still run at the end have a share of it
    std::unique_ptr<Ears> m_ears;
};

} // namespace tov::inline tools
