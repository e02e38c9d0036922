#pragma once

#include "service/calibration/calibrationstate.h"
#include "service/support/enumerationmap.h"

#include <atomic>
#include <functional>

namespace tov::devices::service {

/// Relays the notifications of a calibration to one observer of the application, on the *SDK's notification
/// thread*.
template <typename SdkObserver, typename Observer>
class CalibrationObserverAdapter : public SdkObserver
{
public:
    /// Tells `observer`, which is not owned.
    explicit CalibrationObserverAdapter(Observer* observer)
        : m_observer(observer)
    {
    }

    /// Tells nobody from now on.
    void silence() noexcept { m_observer.store(nullptr, std::memory_order_release); }
    bool isSilent() const noexcept { return m_observer == nullptr; }

    void onFirstEvent() override { relay(&Observer::onFirstEvent); }
    void onSecondEvent() override { relay(&Observer::onSecondEvent); }
    void onThirdEvent() override { relay(&Observer::onThirdEvent); }
    void onStateChanged(int state) override { relay(&Observer::onStateChanged, states.fromSdk(state)); }

private:
    static constexpr auto states = sameNumbers<4>(CalibrationState::State0);

    template <typename Notification, typename... Arguments>
    void relay(Notification notification, Arguments... arguments)
    {
        if (Observer* const observer = m_observer)
            std::invoke(notification, *observer, arguments...);
    }

    std::atomic<Observer*> m_observer;
};

} // namespace tov::devices::service
