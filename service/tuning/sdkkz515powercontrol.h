#pragma once

#include "devices/reacquiringcontrol.h"
#include "sdk/service/ikz515powercontrol.h"
#include "service/devicesservice_export.h"

#include <vector>

namespace tov::devices::service {

/// Power chain of the Kz515 module: power levels, DAC words and gains, in the module's own codes.
///
/// Nothing is cached: every call goes to the instrument. Copies reach the same SDK control; a moved-from object stays
/// usable, because moving copies. What the SDK throws passes through every operation. While the control is absent,
/// setters do nothing and getters give 0, false or an empty list, and tables are dropped.
///
/// Thread: *any thread*.
class DEVICESSERVICE_EXPORT SdkKz515PowerControl
{
public:
    /// The SDK's own control modes by their numbers; any other number passes unchanged too.
    enum class ControlMode : int {
        Mode0 = static_cast<int>(sdk::service::IKZ515PowerControl::ControlMode::Mode0),
        Mode1 = static_cast<int>(sdk::service::IKZ515PowerControl::ControlMode::Mode1),
    };

    explicit SdkKz515PowerControl(ReacquiringControl<sdk::service::IKZ515PowerControl> control);
    SdkKz515PowerControl(const SdkKz515PowerControl& other);
    SdkKz515PowerControl(SdkKz515PowerControl&& other);
    SdkKz515PowerControl& operator=(const SdkKz515PowerControl&) = delete;
    SdkKz515PowerControl& operator=(SdkKz515PowerControl&&) = delete;
    ~SdkKz515PowerControl();

    /// The largest power level.
    unsigned char maxPowerValue() const;
    ControlMode powerControlMode() const;
    void setPowerControlMode(ControlMode mode);
    unsigned char loPower() const;
    void setLoPower(unsigned char power);
    unsigned char rfPower() const;
    void setRfPower(unsigned char power);

    /// The largest DAC word.
    unsigned short maxDacValue() const;
    ControlMode dacControlMode() const;
    void setDacControlMode(ControlMode mode);

    /// Whether the two DACs act as one. Every other mode of the SDK's reads as false.
    bool isDacModeUnion() const;
    void setDacModeUnion(bool on);

    /// The word of both DACs while they act as one.
    unsigned short unionDac() const;
    void setUnionDac(unsigned short word);
    unsigned short dacA() const;
    void setDacA(unsigned short word);
    unsigned short dacB() const;
    void setDacB(unsigned short word);

    std::vector<unsigned char> availableGains() const;
    unsigned char referenceGain() const;
    void setReferenceGain(unsigned char gain);
    unsigned char signalGain() const;
    void setSignalGain(unsigned char gain);

    /// Loads a table into the module.
    void assignReceiverCorrectionTable(std::vector<unsigned char> table);

    /// Loads a table into the module.
    void assignPowerCalibrationTable(std::vector<unsigned char> table);

private:
    ReacquiringControl<sdk::service::IKZ515PowerControl> m_control;
};

} // namespace tov::devices::service
