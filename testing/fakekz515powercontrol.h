#pragma once

#include "sdk/service/ikz515powercontrol.h"
#include "testing/recordingcontrol.h"

namespace tov::testing {

/// A fake of `sdk::service::IKZ515PowerControl`.
class FakeKz515PowerControl final : public sdk::service::IKZ515PowerControl, public RecordingControl
{
public:
    unsigned char maxPowerValue() override { return called<unsigned char>("maxPowerValue"); }
    ControlMode powerControlMode() override { return called<ControlMode>("powerControlMode"); }
    void setPowerControlMode(ControlMode mode) override { called("setPowerControlMode", static_cast<int>(mode)); }
    unsigned char loPower() override { return called<unsigned char>("loPower"); }
    void setLoPower(unsigned char power) override { called("setLoPower", power); }
    unsigned char rfPower() override { return called<unsigned char>("rfPower"); }
    void setRfPower(unsigned char power) override { called("setRfPower", power); }
    unsigned short maxDacValue() override { return called<unsigned short>("maxDacValue"); }
    ControlMode dacControlMode() override { return called<ControlMode>("dacControlMode"); }
    void setDacControlMode(ControlMode mode) override { called("setDacControlMode", static_cast<int>(mode)); }
    int dacMode() override { return called<int>("dacMode"); }
    void setDacMode(int mode) override { called("setDacMode", mode); }
    unsigned short unionDac() override { return called<unsigned short>("unionDac"); }
    void setUnionDac(unsigned short word) override { called("setUnionDac", word); }
    unsigned short dacA() override { return called<unsigned short>("dacA"); }
    void setDacA(unsigned short word) override { called("setDacA", word); }
    unsigned short dacB() override { return called<unsigned short>("dacB"); }
    void setDacB(unsigned short word) override { called("setDacB", word); }
    std::vector<unsigned char> availableGains() override
    {
        return called<std::vector<unsigned char>>("availableGains");
    }
    unsigned char referenceGain() override { return called<unsigned char>("referenceGain"); }
    void setReferenceGain(unsigned char gain) override { called("setReferenceGain", gain); }
    unsigned char signalGain() override { return called<unsigned char>("signalGain"); }
    void setSignalGain(unsigned char gain) override { called("setSignalGain", gain); }
    void assignReceiverCorrectionTable(std::vector<unsigned char> table) override
    {
        called("assignReceiverCorrectionTable", table);
    }
    void assignPowerCalibrationTable(std::vector<unsigned char> table) override
    {
        called("assignPowerCalibrationTable", table);
    }
};

} // namespace tov::testing
