#pragma once

#include "sdk/service/iyqfactorypowercalibrationcontrol.h"
#include "simulator/support/laststored.h"
#include "simulator/calibration/simulatedcalibration.h"
#include "simulator/storedcalibrations.h"

#include <memory>

namespace tov::simulator {

/// The factory power calibration that the simulated instrument was given last.
class FactoryPowerCalibrationState final : public LastStored<StoredFactoryPowerCalibration>
{
private:
    QCborMap toCbor(const StoredFactoryPowerCalibration& stored) const override;
    StoredFactoryPowerCalibration fromCbor(const QCborMap& saved) const override;
};

/// The factory power calibration as the simulated instrument offers it.
class SimulatedYqFactoryPowerCalibrationControl final
    : public SimulatedCalibration<sdk::service::IYqFactoryPowerCalibrationControl>
{
public:
    SimulatedYqFactoryPowerCalibrationControl(std::shared_ptr<Machine> machine,
                                              std::shared_ptr<FactoryPowerCalibrationState> state);

    void saveCalibrationData(std::chrono::sys_seconds time, double parameter,
                             std::vector<PowerCalPoint> points) override;

private:
    const std::shared_ptr<FactoryPowerCalibrationState> m_state;
};

} // namespace tov::simulator
