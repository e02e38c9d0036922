#include "operations/operations.h"
#include "operations/valuerows.h"
#include "service/tuning/sdkulkpowercontrol.h"
#include "service/tuning/sdkulksynthesiscontrol.h"
#include "testing/fakeulkpowercontrol.h"
#include "testing/fakeulksynthesiscontrol.h"

#include <array>
#include <limits>
#include <span>

namespace tov::testing {

using namespace devices::service;
using namespace sdk::service;

namespace {

constexpr std::array frequencies = {7.5e6, 10.7e6, 2.5e6};

} // namespace

Rows<SdkUlkSynthesisControl> ulkSynthesisRows()
{
    return {
        reads("loLeakageMode", &SdkUlkSynthesisControl::loLeakageMode, {false}, {true}),
        writes("setLoLeakageMode", &SdkUlkSynthesisControl::setLoLeakageMode, true),
        reads("manualIfEnabled", &SdkUlkSynthesisControl::manualIfEnabled, {false}, {true}),
        writes("enableManualIf", &SdkUlkSynthesisControl::enableManualIf, true),
        reads("selectedIf", &SdkUlkSynthesisControl::selectedIf, {0}, {3}),
        writes("setSelectedIf", &SdkUlkSynthesisControl::setSelectedIf, -7),
        reads("supportedIfs", &SdkUlkSynthesisControl::supportedIfs, {{}},
              SdkAnswers{std::span<const double>(frequencies)}, {7.5e6, 10.7e6, 2.5e6}),
        reads("filter1Frequency", &SdkUlkSynthesisControl::filter1Frequency, {0.0}, {2.5e9}),
        writes("setFilter1Frequency", &SdkUlkSynthesisControl::setFilter1Frequency, -0.125),
        reads("manualRefEnabled", &SdkUlkSynthesisControl::manualRefEnabled, {false}, {true}),
        writes("enableManualRef", &SdkUlkSynthesisControl::enableManualRef, true),
        reads("selectedRef", &SdkUlkSynthesisControl::selectedRef, {0}, {2}),
        writes("setSelectedRef", &SdkUlkSynthesisControl::setSelectedRef, std::numeric_limits<int>::max()),
        reads("supportedRefs", &SdkUlkSynthesisControl::supportedRefs, {{}},
              SdkAnswers{std::span<const double>(frequencies)}, {7.5e6, 10.7e6, 2.5e6}),
        writes("reset", &SdkUlkSynthesisControl::reset),
    };
}

Operations ulkSynthesisOperations()
{
    return operations<SdkUlkSynthesisControl, IUlkSynthesisControl, FakeUlkSynthesisControl>(ulkSynthesisRows());
}

Rows<SdkUlkPowerControl> ulkPowerRows()
{
    return {
        reads("loPower", &SdkUlkPowerControl::loPower, {0}, {200}),
        writes("setLoPower", &SdkUlkPowerControl::setLoPower, 255),
        reads("rfPower", &SdkUlkPowerControl::rfPower, {0}, {7}),
        writes("setRfPower", &SdkUlkPowerControl::setRfPower, 8),
        reads("minPowerCode", &SdkUlkPowerControl::minPowerCode, {0}, {3}),
        reads("maxPowerCode", &SdkUlkPowerControl::maxPowerCode, {0}, {250}),
        reads("syntPowerMode", &SdkUlkPowerControl::syntPowerMode, {SdkUlkPowerControl::SyntPowerMode::Mode0},
              SdkAnswers{1}, SdkUlkPowerControl::SyntPowerMode::Mode1),
        writes("setSyntPowerMode", &SdkUlkPowerControl::setSyntPowerMode, SdkUlkPowerControl::SyntPowerMode::Mode1)
            .as("setSyntPowerMode(1)"),
        reads("attenuationMode", &SdkUlkPowerControl::attenuationMode, {SdkUlkPowerControl::AttenuationMode::Mode0},
              SdkAnswers{1}, SdkUlkPowerControl::AttenuationMode::Mode1),
        writes("setAttenuationMode", &SdkUlkPowerControl::setAttenuationMode,
               SdkUlkPowerControl::AttenuationMode::Mode1)
            .as("setAttenuationMode(1)"),
        reads("attenuationStep", &SdkUlkPowerControl::attenuationStep, {0}, {3}),
        writes("setAttenuationStep", &SdkUlkPowerControl::setAttenuationStep, -7),
        reads("defaultAttenuationStep", &SdkUlkPowerControl::defaultAttenuationStep, {0}, {4}),
        reads("stepAttenuatorMode", &SdkUlkPowerControl::stepAttenuatorMode,
              {SdkUlkPowerControl::StepAttenuatorMode::Mode0}, SdkAnswers{3},
              SdkUlkPowerControl::StepAttenuatorMode::Mode3),
        writes("setStepAttenuatorMode", &SdkUlkPowerControl::setStepAttenuatorMode,
               SdkUlkPowerControl::StepAttenuatorMode::Mode3)
            .as("setStepAttenuatorMode(3)"),
        reads("discreteAttenuatorEnabled", &SdkUlkPowerControl::discreteAttenuatorEnabled, {false}, {true}),
        writes("enableDiscreteAttenuator", &SdkUlkPowerControl::enableDiscreteAttenuator, true),
        reads("discreteAttenuatorMode", &SdkUlkPowerControl::discreteAttenuatorMode,
              {SdkUlkPowerControl::DiscreteAttenuatorMode::Mode0}, SdkAnswers{1},
              SdkUlkPowerControl::DiscreteAttenuatorMode::Mode1),
        writes("setDiscreteAttenuatorMode", &SdkUlkPowerControl::setDiscreteAttenuatorMode,
               SdkUlkPowerControl::DiscreteAttenuatorMode::Mode1)
            .as("setDiscreteAttenuatorMode(1)"),
        reads("commonAttenuationMode", &SdkUlkPowerControl::commonAttenuationMode,
              {SdkUlkPowerControl::CommonAttenuationMode::Mode0}, SdkAnswers{1},
              SdkUlkPowerControl::CommonAttenuationMode::Mode1),
        writes("setCommonAttenuationMode", &SdkUlkPowerControl::setCommonAttenuationMode,
               SdkUlkPowerControl::CommonAttenuationMode::Mode1)
            .as("setCommonAttenuationMode(1)"),
        reads("commonAttenuationStep", &SdkUlkPowerControl::commonAttenuationStep, {0}, {3}),
        writes("setCommonAttenuationStep", &SdkUlkPowerControl::setCommonAttenuationStep, -7),
        reads("ampTPort1", &SdkUlkPowerControl::ampTPort1, {SdkUlkPowerControl::AmpGain::Gain0},
              SdkAnswers{static_cast<unsigned char>(1)}, SdkUlkPowerControl::AmpGain::Gain1),
        writes("setAmpTPort1", &SdkUlkPowerControl::setAmpTPort1, SdkUlkPowerControl::AmpGain::Gain1)
            .as("setAmpTPort1(" + exactly(static_cast<unsigned char>(1)) + ")"),
        reads("ampTPort2", &SdkUlkPowerControl::ampTPort2, {SdkUlkPowerControl::AmpGain::Gain0},
              SdkAnswers{static_cast<unsigned char>(1)}, SdkUlkPowerControl::AmpGain::Gain1),
        writes("setAmpTPort2", &SdkUlkPowerControl::setAmpTPort2, SdkUlkPowerControl::AmpGain::Gain1)
            .as("setAmpTPort2(" + exactly(static_cast<unsigned char>(1)) + ")"),
        reads("ampRPort1", &SdkUlkPowerControl::ampRPort1, {SdkUlkPowerControl::AmpGain::Gain0},
              SdkAnswers{static_cast<unsigned char>(1)}, SdkUlkPowerControl::AmpGain::Gain1),
        writes("setAmpRPort1", &SdkUlkPowerControl::setAmpRPort1, SdkUlkPowerControl::AmpGain::Gain1)
            .as("setAmpRPort1(" + exactly(static_cast<unsigned char>(1)) + ")"),
        writes("setLoPowerCodes", &SdkUlkPowerControl::setLoPowerCodes, {1, 0, 255}),
        writes("setRfPowerCodes", &SdkUlkPowerControl::setRfPowerCodes, {1, 0, 255}),
        writes("reset", &SdkUlkPowerControl::reset),
    };
}

Operations ulkPowerOperations()
{
    return operations<SdkUlkPowerControl, IUlkPowerControl, FakeUlkPowerControl>(ulkPowerRows());
}

} // namespace tov::testing
