#include "application.h"

#include <QObject>

#include <algorithm>

namespace tov::testing {

namespace {

consteval std::size_t indexOf(const devices::ControlName& kind)
{
    return static_cast<std::size_t>(std::ranges::find(devices::controls::all, kind) - devices::controls::all.begin());
}

constexpr std::size_t serialNumber = indexOf(devices::controls::serialNumber);
constexpr std::size_t memoryOperations = indexOf(devices::controls::memoryOperations);
constexpr std::size_t systemTerms = indexOf(devices::controls::systemTerms);
constexpr std::size_t ifswCalibration = indexOf(devices::controls::ifswCalibration);
constexpr std::size_t factoryPowerCalibration = indexOf(devices::controls::factoryPowerCalibration);
constexpr std::size_t factoryCorrections = indexOf(devices::controls::factoryCorrections);
constexpr std::size_t temperature = indexOf(devices::controls::temperature);

} // namespace

Application::Application(const devices::ControlRegistry& registry)
{
    m_instrument.offerControls();
    sdk::IVna* const instrument = &m_instrument;
    forEachKind([&](auto index) {
        auto& adapter = std::get<index>(m_adapters);
        const std::any made = registry.create(devices::controls::all[index].keys.registry, instrument);
        adapter = std::any_cast<std::shared_ptr<Exposed<index>>>(made);
        if constexpr (std::is_polymorphic_v<Exposed<index>>)
            if (auto* const observer = dynamic_cast<devices::IControlLifecycleObserver*>(adapter.get()))
                m_lifecycle.push_back(observer);
    });
    std::get<serialNumber>(m_adapters)->addObserver(&m_ear);
    std::get<memoryOperations>(m_adapters)->addObserver(&m_ear);
    std::get<systemTerms>(m_adapters)->addObserver(&m_ear);
    std::get<ifswCalibration>(m_adapters)->addObserver(&m_ifswEar);
    std::get<factoryPowerCalibration>(m_adapters)->addObserver(&m_powerEar);
    std::get<factoryCorrections>(m_adapters)->addObserver(&m_ear);
    QObject::connect(std::get<temperature>(m_adapters).get(),
                     &devices::service::SdkTemperatureControl::temperaturesChanged, [] { ++heard; });
}

// Observers with registrations of their own go with the controls.
Application::~Application()
{
    settle();
    release();
}

void Application::call(std::size_t index)
{
    forEachKind([&](auto each) {
        if (each == index)
            use(*std::get<each>(m_adapters));
    });
}

void Application::notify(unsigned int which)
{
    const auto tell = [this](auto index, auto notification) {
        if (const auto control = m_instrument.control<index>())
            control->tell(notification);
    };
    using Index = std::size_t;
    switch (which % 7) {
    case 0:
        return tell(std::integral_constant<Index, serialNumber>(), [](auto& o) { o.onSerialNumberEvent(1, 2); });
    case 1:
        return tell(std::integral_constant<Index, memoryOperations>(), [](auto& o) { o.onNotification2(1, 2); });
    case 2:
        return tell(std::integral_constant<Index, systemTerms>(), [](auto& o) { o.onTermsStatus(5); });
    case 3:
        return tell(std::integral_constant<Index, ifswCalibration>(), [](auto& o) { o.onStateChanged(2); });
    case 4:
        return tell(std::integral_constant<Index, factoryPowerCalibration>(), [](auto& o) { o.onFirstEvent(); });
    case 5:
        return tell(std::integral_constant<Index, factoryCorrections>(), [](auto& o) { o.onCorrectionsChanged(); });
    default:
        return tell(std::integral_constant<Index, temperature>(), [](auto& o) { o.onTemperatureChanged(); });
    }
}

void Application::change()
{
    const std::lock_guard guard(m_mutex);
    if (m_offered)
        release();
    else
        offer();
}

void Application::settle()
{
    const std::lock_guard guard(m_mutex);
    if (!m_offered)
        offer();
}

void Application::release()
{
    for (auto* const observer : m_lifecycle)
        observer->onControlsAboutToBeReleased();
    m_instrument.releaseControls();
    m_offered = false;
}

// The factory corrections have their observer read two things again, and the temperatures say that they changed.
void Application::offer()
{
    m_instrument.offerControls();
    saidByAdapters += 3;
    for (auto* const observer : m_lifecycle)
        observer->onControlsAvailable();
    m_offered = true;
}

} // namespace tov::testing
