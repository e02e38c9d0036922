#include "service/calibration/sdkfactorycorrectioncontrol.h"

#include "service/support/callforwarding.h"

#include <utility>

namespace tov::devices::service {

using ISdkControl = sdk::IFactoryCorrectionControl;

class SdkFactoryCorrectionControl::SdkObserverAdapter final : public ISdkControl::IObserver
{
public:
    explicit SdkObserverAdapter(Observer* observer)
        : m_observer(observer)
    {
    }

    void onCorrectionsChanged() override { m_observer->onCorrectionsChanged(); }
    void onCorrectionStatesChanged() override { m_observer->onCorrectionStatesChanged(); }
    void onEnabledChanged(sdk::CorrectionFlag flag, bool enabled) override
    {
        if (const auto correction = fromSdkCorrection(flag))
            m_observer->onEnabledChanged(*correction, enabled);
    }

private:
    Observer* const m_observer;
};

SdkFactoryCorrectionControl::SdkFactoryCorrectionControl(ReacquiringControl<ISdkControl> control)
    : m_control(std::move(control))
{
}

SdkFactoryCorrectionControl::~SdkFactoryCorrectionControl() = default;

std::vector<FactoryCorrection> SdkFactoryCorrectionControl::supported() const
{
    std::vector<FactoryCorrection> corrections;
    const unsigned int mask = read(m_control, 0, &ISdkControl::supportedCorrections);
    for (unsigned int flag = 1; flag <= 0x8000; flag <<= 1)
        if ((mask & flag) != 0)
            if (const auto correction = fromSdkCorrection(static_cast<sdk::CorrectionFlag>(flag)))
                corrections.push_back(*correction);
    return corrections;
}

bool SdkFactoryCorrectionControl::isValid(FactoryCorrection correction) const
{
    return isIn(&ISdkControl::validCorrections, correction);
}

bool SdkFactoryCorrectionControl::isEnabled(FactoryCorrection correction) const
{
    return isIn(&ISdkControl::enabledCorrections, correction);
}

bool SdkFactoryCorrectionControl::isModifiable(FactoryCorrection correction) const
{
    return isIn(&ISdkControl::modifiableCorrections, correction);
}

void SdkFactoryCorrectionControl::setEnabled(FactoryCorrection correction, bool enable)
{
    if (isValid(correction) && isModifiable(correction))
        write(m_control, &ISdkControl::setEnabled, toSdkCorrection(correction), enable);
}

void SdkFactoryCorrectionControl::addObserver(Observer* observer)
{
    if (observer == nullptr || m_observers.contains(observer))
        return;
    auto* const adapter =
        m_observers.emplace(observer, std::make_unique<SdkObserverAdapter>(observer)).first->second.get();
    write(m_control, &ISdkControl::addObserver, adapter);
}

// While the control is absent nothing is removed: such an observer is told again when the controls are available.
void SdkFactoryCorrectionControl::removeObserver(Observer* observer)
{
    if (const auto locked = m_control.lock()) {
        const auto found = m_observers.find(observer);
        if (found == m_observers.end())
            return;
        const SdkObserverAdapter* const adapter = found->second.get();
        locked->removeObserver(found->second.get());
        // Looked up again: the SDK may have called back, and the observer be gone or have come anew.
        if (const auto again = m_observers.find(observer); again != m_observers.end() && again->second.get() == adapter)
            m_observers.erase(again);
    }
}

void SdkFactoryCorrectionControl::onControlsAboutToBeReleased()
{
    if (const auto locked = m_control.lock())
        for (const auto& [observer, adapter] : m_observers)
            locked->removeObserver(adapter.get());
}

// Nothing remembers whether the adapters are registered already: the application announces each release.
void SdkFactoryCorrectionControl::onControlsAvailable()
{
    if (const auto locked = m_control.lock())
        for (const auto& [observer, adapter] : m_observers) {
            locked->addObserver(adapter.get());
            adapter->onCorrectionsChanged();
            adapter->onCorrectionStatesChanged();
        }
}

bool SdkFactoryCorrectionControl::isIn(std::uint16_t (ISdkControl::*mask)(), FactoryCorrection correction) const
{
    return (read(m_control, 0, mask) & static_cast<std::uint16_t>(toSdkCorrection(correction))) != 0;
}

} // namespace tov::devices::service
