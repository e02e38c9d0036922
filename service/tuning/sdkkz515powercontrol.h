#pragma once

#include "devices/reacquiringcontrol.h"
#include "sdk/service/ikz515powercontrol.h"
#include "service/devicesservice_export.h"

#include <vector>

namespace tov::devices::service {

/// Power chain of the Kz515 module: power levels, DAC words and gains, in the module's own codes.
///
/// Nothing is cached: every call goes to the instrument. Copies reach the same SDK control; a moved-from object stays
/// usable, because moving copies. What the SDK throws passes through every operation. Arguments go to the instrument
/// unchecked. While the control is absent, setters do nothing and getters give 0, `Mode0`, false or an empty list, and
/// tables are dropped.
///
/// Thread: *any thread*.
class DEVICESSERVICE_EXPORT SdkKz515PowerControl
{
public:
    /// The SDK's own control modes by their numbers, whose meaning this library does not know; any other number passes
    /// unchanged too.
    enum class ControlMode : int {
        Mode0 = static_cast<int>(sdk::service::IKZ515PowerControl::ControlMode::Mode0), ///< the SDK's 0
        Mode1 = static_cast<int>(sdk::service::IKZ515PowerControl::ControlMode::Mode1), ///< the SDK's 1
    };

    /// Reaches the SDK's control through `control`.
    explicit SdkKz515PowerControl(ReacquiringControl<sdk::service::IKZ515PowerControl> control);

    /// Reaches the same SDK control as `other`.
    SdkKz515PowerControl(const SdkKz515PowerControl& other);

    /// The same; `other` stays usable.
    SdkKz515PowerControl(SdkKz515PowerControl&& other);

    SdkKz515PowerControl& operator=(const SdkKz515PowerControl&) = delete;
    SdkKz515PowerControl& operator=(SdkKz515PowerControl&&) = delete;
    ~SdkKz515PowerControl();

    /// The largest power level.
    unsigned char maxPowerValue() const;

    /// Mode in which the powers are controlled.
    ControlMode powerControlMode() const;
    /// Sets the mode in which the powers are controlled.
    void setPowerControlMode(ControlMode mode);

    /// Power level of the LO.
    unsigned char loPower() const;
    /// Sets the power level of the LO.
    void setLoPower(unsigned char power);

    /// RF power level.
    unsigned char rfPower() const;
    /// Sets the RF power level.
    void setRfPower(unsigned char power);

    /// The largest DAC word.
    unsigned short maxDacValue() const;

    /// Mode in which the DACs are controlled.
    ControlMode dacControlMode() const;
    /// Sets the mode in which the DACs are controlled.
    void setDacControlMode(ControlMode mode);

    /// Whether the two DACs act as one. Every other mode of the SDK's reads as false.
    bool isDacModeUnion() const;
    /// Sets the SDK's DAC mode to 1, in which the two DACs act as one, or to 0.
    void setDacModeUnion(bool on);

    /// The word of both DACs while they act as one.
    unsigned short unionDac() const;
    /// Sets the word of both DACs for when they act as one.
    void setUnionDac(unsigned short word);

    /// The word of DAC A.
    unsigned short dacA() const;
    /// Sets the word of DAC A.
    void setDacA(unsigned short word);

    /// The word of DAC B.
    unsigned short dacB() const;
    /// Sets the word of DAC B.
    void setDacB(unsigned short word);

    /// The gains that the module has, in the SDK's order.
    std::vector<unsigned char> availableGains() const;

    /// Reference gain as the module's code.
    unsigned char referenceGain() const;
    /// Sets the reference gain as the module's code.
    void setReferenceGain(unsigned char gain);

    /// Signal gain as the module's code.
    unsigned char signalGain() const;
    /// Sets the signal gain as the module's code.
    void setSignalGain(unsigned char gain);

    /// Loads the receiver correction table into the module, in the module's own format.
    void assignReceiverCorrectionTable(std::vector<unsigned char> table);

    /// Loads the power calibration table into the module, in the module's own format.
    void assignPowerCalibrationTable(std::vector<unsigned char> table);

private:
    ReacquiringControl<sdk::service::IKZ515PowerControl> m_control;
};

} // namespace tov::devices::service
