#pragma once

#include "service/calibration/calibrationstate.h"

#include <atomic>
#include <functional>

namespace tov::devices::service {

/// Relays the notifications of a calibration to one observer of the application, on the *SDK's notification
/// thread*.
template <typename SdkObserver, typename Observer>
class CalibrationObserverAdapter : public SdkObserver
{
public:
    /// Tells `observer`, which is not owned; nobody when it is null.
    explicit CalibrationObserverAdapter(Observer* observer)
        : m_observer(observer)
    {
    }

    /// Tells `observer` from now on; nobody when it is null.
    void tell(Observer* observer) noexcept { m_observer = observer; }

    void onFirstEvent() override { relay(&Observer::onFirstEvent); }
    void onSecondEvent() override { relay(&Observer::onSecondEvent); }
    void onThirdEvent() override { relay(&Observer::onThirdEvent); }
    void onStateChanged(int state) override { relay(&Observer::onStateChanged, toCalibrationState(state)); }

private:
    static CalibrationState toCalibrationState(int state)
    {
        return state >= 0 && state <= 3 ? static_cast<CalibrationState>(state) : CalibrationState::State0;
    }

    template <typename Notification, typename... Arguments>
    void relay(Notification notification, Arguments... arguments)
    {
        if (Observer* const observer = m_observer)
            std::invoke(notification, *observer, arguments...);
    }

    std::atomic<Observer*> m_observer;
};

} // namespace tov::devices::service
