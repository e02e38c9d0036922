#pragma once

#include "sdk/service/iyqifswcalibrationcontrol.h"
#include "simulator/calibration/simulatedyqcalibration.h"
#include "simulator/storeddata.h"
#include "simulator/support/laststored.h"

#include <memory>

namespace tov::simulator {

/// The IF-switch calibration that the simulated instrument was given last.
using IfswCalibrationState = LastStored<StoredIfswCalibration>;
QCborMap toCbor(const StoredIfswCalibration& stored);
void fromCbor(const QCborMap& saved, StoredIfswCalibration& stored);

/// The IF-switch calibration as the simulated instrument offers it.
class SimulatedYqIfswCalibrationControl final : public SimulatedYqCalibration<sdk::service::IYqIfswCalibrationControl>
{
public:
    SimulatedYqIfswCalibrationControl(std::shared_ptr<Machine> machine, std::shared_ptr<IfswCalibrationState> state);

    void saveCalibrationData(CalibrationData data) override;

private:
    const std::shared_ptr<IfswCalibrationState> m_state;
};

} // namespace tov::simulator
