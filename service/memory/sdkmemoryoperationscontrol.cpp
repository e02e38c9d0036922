#include "service/memory/sdkmemoryoperationscontrol.h"

#include "service/support/blockingbridge.h"
#include "service/support/callforwarding.h"
#include "service/support/observerlist.h"

namespace tov::devices::service {

using ISdkControl = sdk::service::IMemoryOperationsControl;

class SdkMemoryOperationsControl::SdkMemoryOperationsObserver final : public ISdkControl::IObserver
{
public:
    // Crossed on purpose: which notification becomes which, and the order of the two numbers.
    void onNotification1(unsigned int a, unsigned int b) override { relay(&Observer::onNotification3, a, b); }
    void onNotification2(unsigned int a, unsigned int b) override { relay(&Observer::onNotification4, a, b); }
    void onNotification3(unsigned int a, unsigned int b) override { relay(&Observer::onNotification2, a, b); }
    void onNotification4(unsigned int a, unsigned int b) override { relay(&Observer::onNotification1, a, b); }

    ObserverList<IMemoryOperationsControl::IObserver> observers;

private:
    using Observer = IMemoryOperationsControl::IObserver;

    void relay(void (Observer::*notification)(const MemoryOperationEvent&), unsigned int a, unsigned int b)
    {
        observers.notify(notification, MemoryOperationEvent{.first = b, .second = a});
    }
};

SdkMemoryOperationsControl::SdkMemoryOperationsControl(ReacquiringControl<ISdkControl> control)
    : m_control(std::move(control))
    , m_observer(std::make_unique<SdkMemoryOperationsObserver>())
{
    SdkMemoryOperationsControl::onControlsAvailable();
}

SdkMemoryOperationsControl::~SdkMemoryOperationsControl()
{
    detachForEver(m_control, m_observer.get());
}

std::expected<std::vector<std::byte>, IMemoryOperationsControl::Error> SdkMemoryOperationsControl::read()
{
    return request<std::expected<std::vector<std::byte>, Error>>(m_control, &ISdkControl::read);
}

std::expected<void, IMemoryOperationsControl::Error>
SdkMemoryOperationsControl::write(const std::vector<std::byte>& data)
{
    return request<std::expected<void, Error>>(m_control, &ISdkControl::write, data);
}

std::expected<void, IMemoryOperationsControl::Error> SdkMemoryOperationsControl::erase()
{
    return request<std::expected<void, Error>>(m_control, &ISdkControl::erase);
}

std::expected<void, IMemoryOperationsControl::Error> SdkMemoryOperationsControl::integrityCheck()
{
    return request<std::expected<void, Error>>(m_control, &ISdkControl::integrityCheck);
}

void SdkMemoryOperationsControl::addObserver(IObserver* observer)
{
    m_observer->observers.add(observer);
}

void SdkMemoryOperationsControl::removeObserver(IObserver* observer)
{
    m_observer->observers.remove(observer);
}

void SdkMemoryOperationsControl::onControlsAboutToBeReleased()
{
    service::write(m_control, &ISdkControl::removeObserver, m_observer.get());
}

void SdkMemoryOperationsControl::onControlsAvailable()
{
    service::write(m_control, &ISdkControl::addObserver, m_observer.get());
}

} // namespace tov::devices::service
