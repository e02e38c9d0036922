#pragma once

#include "sdk/service/iyqifswcalibrationcontrol.h"
#include "simulator/support/laststored.h"
#include "simulator/calibration/simulatedcalibration.h"
#include "simulator/storedcalibrations.h"

#include <memory>

namespace tov::simulator {

/// The IF-switch calibration that the simulated instrument was given last.
class IfswCalibrationState final : public LastStored<StoredIfswCalibration>
{
private:
    QCborMap toCbor(const StoredIfswCalibration& stored) const override;
    StoredIfswCalibration fromCbor(const QCborMap& saved) const override;
};

/// The IF-switch calibration as the simulated instrument offers it.
class SimulatedYqIfswCalibrationControl final : public SimulatedCalibration<sdk::service::IYqIfswCalibrationControl>
{
public:
    SimulatedYqIfswCalibrationControl(std::shared_ptr<Machine> machine, std::shared_ptr<IfswCalibrationState> state);

    void saveCalibrationData(CalibrationData data) override;

private:
    const std::shared_ptr<IfswCalibrationState> m_state;
};

} // namespace tov::simulator
