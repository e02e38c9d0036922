#include "operations/operations.h"
#include "operations/valuerows.h"
#include "service/tuning/sdkkz515powercontrol.h"
#include "service/tuning/sdkkz515synthesiscontrol.h"
#include "testing/fakekz515powercontrol.h"
#include "testing/fakekz515synthesiscontrol.h"

namespace tov::testing {

using namespace devices::service;
using namespace sdk::service;
using ControlMode = SdkKz515PowerControl::ControlMode;

Rows<SdkKz515PowerControl> kz515PowerRows()
{
    return {
        reads("maxPowerValue", &SdkKz515PowerControl::maxPowerValue, {0}, {255}),
        reads("powerControlMode", &SdkKz515PowerControl::powerControlMode, {ControlMode::Mode0},
              SdkAnswers{IKZ515PowerControl::ControlMode::Mode1}, ControlMode::Mode1),
        writes("setPowerControlMode", &SdkKz515PowerControl::setPowerControlMode, ControlMode::Mode1)
            .as("setPowerControlMode(1)"),
        reads("loPower", &SdkKz515PowerControl::loPower, {0}, {200}),
        writes("setLoPower", &SdkKz515PowerControl::setLoPower, 201),
        reads("rfPower", &SdkKz515PowerControl::rfPower, {0}, {7}),
        writes("setRfPower", &SdkKz515PowerControl::setRfPower, 0),
        reads("maxDacValue", &SdkKz515PowerControl::maxDacValue, {0}, {65535}),
        reads("dacControlMode", &SdkKz515PowerControl::dacControlMode, {ControlMode::Mode0},
              SdkAnswers{IKZ515PowerControl::ControlMode::Mode1}, ControlMode::Mode1),
        writes("setDacControlMode", &SdkKz515PowerControl::setDacControlMode, ControlMode::Mode1)
            .as("setDacControlMode(1)"),
        reads("isDacModeUnion", &SdkKz515PowerControl::isDacModeUnion, {false}, SdkAnswers{1}, true).as("dacMode()"),
        writes("setDacModeUnion", &SdkKz515PowerControl::setDacModeUnion, true).as("setDacMode(1)"),
        reads("unionDac", &SdkKz515PowerControl::unionDac, {0}, {40000}),
        writes("setUnionDac", &SdkKz515PowerControl::setUnionDac, 65535),
        reads("dacA", &SdkKz515PowerControl::dacA, {0}, {40000}),
        writes("setDacA", &SdkKz515PowerControl::setDacA, 65535),
        reads("dacB", &SdkKz515PowerControl::dacB, {0}, {40000}),
        writes("setDacB", &SdkKz515PowerControl::setDacB, 65535),
        reads("availableGains", &SdkKz515PowerControl::availableGains, {{}}, {{3, 1, 2}}),
        reads("referenceGain", &SdkKz515PowerControl::referenceGain, {0}, {255}),
        writes("setReferenceGain", &SdkKz515PowerControl::setReferenceGain, 254),
        reads("signalGain", &SdkKz515PowerControl::signalGain, {0}, {1}),
        writes("setSignalGain", &SdkKz515PowerControl::setSignalGain, 2),
        writes("assignReceiverCorrectionTable", &SdkKz515PowerControl::assignReceiverCorrectionTable, {1, 0, 255}),
        writes("assignPowerCalibrationTable", &SdkKz515PowerControl::assignPowerCalibrationTable, {}),
    };
}

Operations kz515PowerOperations()
{
    return operations<SdkKz515PowerControl, IKZ515PowerControl, FakeKz515PowerControl>(kz515PowerRows());
}

Rows<SdkKz515SynthesisControl> kz515SynthesisRows()
{
    return {
        reads("availableReferenceFrequencies", &SdkKz515SynthesisControl::availableReferenceFrequencies, {{}},
              {{1e7, 5e6}}),
        reads("currentReferenceFrequency", &SdkKz515SynthesisControl::currentReferenceFrequency, {0.0}, {1e7}),
        writes("setReferenceFrequency", &SdkKz515SynthesisControl::setReferenceFrequency, 0.1),
    };
}

Operations kz515SynthesisOperations()
{
    return operations<SdkKz515SynthesisControl, IKZ515SynthesisControl, FakeKz515SynthesisControl>(
        kz515SynthesisRows());
}

} // namespace tov::testing
