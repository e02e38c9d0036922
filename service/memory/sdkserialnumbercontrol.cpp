#include "service/memory/sdkserialnumbercontrol.h"

#include "service/support/blockingbridge.h"
#include "service/support/callforwarding.h"
#include "service/support/observerlist.h"

namespace tov::devices::service {

using ISdkControl = sdk::service::IMemorySerialNumberControl;

class SdkSerialNumberControl::SdkControlObserver final : public ISdkControl::Observer
{
public:
    // The order of the two numbers is crossed on purpose.
    void onSerialNumberEvent(unsigned int a, unsigned int b) override
    {
        observers.notify(&ISerialNumberControl::Observer::onSerialNumberEvent,
                         SerialNumberEvent{.first = b, .second = a});
    }

    ObserverList<ISerialNumberControl::Observer> observers;
};

SdkSerialNumberControl::SdkSerialNumberControl(ReacquiringControl<ISdkControl> control)
    : m_control(std::move(control))
    , m_observer(std::make_unique<SdkControlObserver>())
{
    SdkSerialNumberControl::onControlsAvailable();
}

SdkSerialNumberControl::~SdkSerialNumberControl()
{
    detachForEver(m_control, m_observer.get());
}

std::expected<unsigned int, ISerialNumberControl::Error> SdkSerialNumberControl::serialNumber() const
{
    return request<std::expected<unsigned int, Error>>(m_control, &ISdkControl::readSerialNumber);
}

std::expected<void, ISerialNumberControl::Error> SdkSerialNumberControl::writeSerialNumber(unsigned int serialNumber)
{
    return request<std::expected<void, Error>>(m_control, &ISdkControl::writeSerialNumber, serialNumber);
}

void SdkSerialNumberControl::addObserver(Observer* observer)
{
    m_observer->observers.add(observer);
}

void SdkSerialNumberControl::removeObserver(Observer* observer)
{
    m_observer->observers.remove(observer);
}

void SdkSerialNumberControl::onControlsAboutToBeReleased()
{
    write(m_control, &ISdkControl::removeObserver, m_observer.get());
}

void SdkSerialNumberControl::onControlsAvailable()
{
    write(m_control, &ISdkControl::addObserver, m_observer.get());
}

} // namespace tov::devices::service
