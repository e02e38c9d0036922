#include "service/monitoring/sdktemperaturecontrol.h"

#include "service/support/callforwarding.h"

#include <algorithm>
#include <utility>

namespace tov::devices::service {

using ISdkControl = sdk::ITemperatureControl;

class SdkTemperatureControl::SdkObserverAdapter final : public ISdkControl::Observer
{
public:
    explicit SdkObserverAdapter(SdkTemperatureControl* owner)
        : m_owner(owner)
    {
    }

    void onTemperatureChanged() override { m_owner->onSdkTemperatureChanged(); }

private:
    SdkTemperatureControl* const m_owner;
};

SdkTemperatureControl::SdkTemperatureControl(ReacquiringControl<ISdkControl> control)
    : m_control(std::move(control))
    , m_adapter(std::make_unique<SdkObserverAdapter>(this))
{
    try {
        attachAdapter();
    } catch (...) {
        detachForEver(m_control, m_adapter.get()); // it may be the first reading that failed
        throw;
    }
}

SdkTemperatureControl::~SdkTemperatureControl()
{
    detachForEver(m_control, m_adapter.get());
}

double SdkTemperatureControl::temperature() const
{
    const std::lock_guard guard(m_mutex);
    return m_temperature;
}

std::vector<SdkTemperatureControl::ModuleTemperature> SdkTemperatureControl::modulesTemperature() const
{
    const std::lock_guard guard(m_mutex);
    return m_modules;
}

void SdkTemperatureControl::onControlsAboutToBeReleased()
{
    detachAdapter();
}

void SdkTemperatureControl::onControlsAvailable()
{
    attachAdapter();
    emit temperaturesChanged();
}

void SdkTemperatureControl::attachAdapter()
{
    if (const auto locked = m_control.lock()) {
        locked->addObserver(m_adapter.get());
        refreshSnapshot();
    }
}

void SdkTemperatureControl::detachAdapter()
{
    write(m_control, &ISdkControl::removeObserver, m_adapter.get());
}

void SdkTemperatureControl::onSdkTemperatureChanged()
{
    refreshSnapshot();
    emit temperaturesChanged();
}

// The instrument is asked before the snapshot is locked, so readers never wait for it.
void SdkTemperatureControl::refreshSnapshot()
{
    const auto locked = m_control.lock();
    if (!locked)
        return;

    const auto& sdkModules = locked->modulesTemperature();
    std::vector<ModuleTemperature> modules;
    modules.reserve(sdkModules.size());
    for (const auto& [name, temperature] : sdkModules)
        modules.push_back({QString::fromStdString(name), static_cast<double>(temperature)});
    std::ranges::sort(modules, {}, &ModuleTemperature::name);
    const auto temperature = static_cast<double>(locked->temperature());

    const std::lock_guard guard(m_mutex);
    m_modules = std::move(modules);
    m_temperature = temperature;
}

} // namespace tov::devices::service
