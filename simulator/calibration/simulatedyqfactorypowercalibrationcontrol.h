#pragma once

#include "sdk/service/iyqfactorypowercalibrationcontrol.h"
#include "simulator/calibration/simulatedyqcalibration.h"
#include "simulator/storeddata.h"
#include "simulator/support/laststored.h"

#include <memory>

namespace tov::simulator {

/// The factory power calibration that the simulated instrument was given last.
using FactoryPowerCalibrationState = LastStored<StoredFactoryPowerCalibration>;
QCborMap toCbor(const StoredFactoryPowerCalibration& stored);
void fromCbor(const QCborMap& saved, StoredFactoryPowerCalibration& stored);

/// The factory power calibration as the simulated instrument offers it.
class SimulatedYqFactoryPowerCalibrationControl final
    : public SimulatedYqCalibration<sdk::service::IYqFactoryPowerCalibrationControl>
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
