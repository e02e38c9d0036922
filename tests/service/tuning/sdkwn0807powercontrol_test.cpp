#include "fakes/fakewn0807powermodulecontrol.h"
#include "service/enumerationwalk.h"
#include "service/tuning/sdkwn0807powercontrol.h"
#include "service/valueadaptercontract.h"

#include <gmock/gmock.h>

#include <array>
#include <limits>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace tov::testing {

using devices::service::SdkWn0807PowerControl;
using sdk::service::IWn0807PowerModuleControl;

namespace {

class SdkWn0807Power : public ::testing::Test
{
protected:
    std::shared_ptr<FakeWn0807PowerModuleControl> fake = std::make_shared<FakeWn0807PowerModuleControl>();
    SdkWn0807PowerControl adapter{devices::ReacquiringControl<IWn0807PowerModuleControl>(
        [this] { return sdk::ControlHandle<IWn0807PowerModuleControl>(fake); })};
};

} // namespace

INSTANTIATE_TEST_SUITE_P(
    SdkWn0807PowerControl, ValueAdapter,
    (operations<SdkWn0807PowerControl, IWn0807PowerModuleControl, FakeWn0807PowerModuleControl>({
        reads("dacMode", &SdkWn0807PowerControl::dacMode, {SdkWn0807PowerControl::DacMode::Mode0}, SdkAnswers{2},
              SdkWn0807PowerControl::DacMode::Mode2),
        writes("setDacMode", &SdkWn0807PowerControl::setDacMode, SdkWn0807PowerControl::DacMode::Mode2)
            .as("setDacMode(2)"),
        reads("powerMode", &SdkWn0807PowerControl::powerMode, {SdkWn0807PowerControl::PowerMode::Mode0}, SdkAnswers{1},
              SdkWn0807PowerControl::PowerMode::Mode1),
        writes("setPowerMode", &SdkWn0807PowerControl::setPowerMode, SdkWn0807PowerControl::PowerMode::Mode1)
            .as("setPowerMode(1)"),
        reads("stepAttenuatorMode", &SdkWn0807PowerControl::stepAttenuatorMode,
              {SdkWn0807PowerControl::StepAttenuatorMode::Mode0}, SdkAnswers{4},
              SdkWn0807PowerControl::StepAttenuatorMode::Mode3),
        writes("setStepAttenuatorMode", &SdkWn0807PowerControl::setStepAttenuatorMode,
               SdkWn0807PowerControl::StepAttenuatorMode::Mode3)
            .as("setStepAttenuatorMode(4)"),
        reads("discreteAttenuatorMode", &SdkWn0807PowerControl::discreteAttenuatorMode,
              {SdkWn0807PowerControl::DiscreteAttenuatorMode::Mode0}, SdkAnswers{1},
              SdkWn0807PowerControl::DiscreteAttenuatorMode::Mode1),
        writes("setDiscreteAttenuatorMode", &SdkWn0807PowerControl::setDiscreteAttenuatorMode,
               SdkWn0807PowerControl::DiscreteAttenuatorMode::Mode1)
            .as("setDiscreteAttenuatorMode(1)"),
        reads("powerConstant", &SdkWn0807PowerControl::powerConstant, {SdkWn0807PowerControl::PowerConstant::Constant0},
              SdkAnswers{1}, SdkWn0807PowerControl::PowerConstant::Constant1),
        writes("setPowerConstant", &SdkWn0807PowerControl::setPowerConstant,
               SdkWn0807PowerControl::PowerConstant::Constant1)
            .as("setPowerConstant(1)"),
        reads("rfDac", &SdkWn0807PowerControl::rfDac, {0}, {40000}),
        writes("setRfDac", &SdkWn0807PowerControl::setRfDac, 65535),
        reads("splitDac", &SdkWn0807PowerControl::splitDac, {0}, {40000}),
        writes("setSplitDac", &SdkWn0807PowerControl::setSplitDac, 65535),
        reads("splitDds", &SdkWn0807PowerControl::splitDds, {0}, {40000}),
        writes("setSplitDds", &SdkWn0807PowerControl::setSplitDds, 65535),
        reads("attenuationDb", &SdkWn0807PowerControl::attenuationDb, {0.0}, {-10.5}),
        writes("setAttenuationDb", &SdkWn0807PowerControl::setAttenuationDb, 0.1),
        reads("attenuationStep", &SdkWn0807PowerControl::attenuationStep, {0}, {40000}),
        writes("setAttenuationStep", &SdkWn0807PowerControl::setAttenuationStep, 65535),
        reads("discreteAttenuatorEnabled", &SdkWn0807PowerControl::discreteAttenuatorEnabled, {false}, {true}),
        writes("enableDiscreteAttenuator", &SdkWn0807PowerControl::enableDiscreteAttenuator, true),
        reads("squarePatternStep", &SdkWn0807PowerControl::squarePatternStep, {0.0}, {0.25}),
        writes("setSquarePatternStep", &SdkWn0807PowerControl::setSquarePatternStep, 1e-3),
        reads("ddsCorrectionMode", &SdkWn0807PowerControl::ddsCorrectionMode,
              {SdkWn0807PowerControl::DdsCorrectionMode::Mode0}, SdkAnswers{1},
              SdkWn0807PowerControl::DdsCorrectionMode::Mode1),
        writes("setDdsCorrectionMode", &SdkWn0807PowerControl::setDdsCorrectionMode,
               SdkWn0807PowerControl::DdsCorrectionMode::Mode1)
            .as("setDdsCorrectionMode(1)"),
        reads("ddsCorrectionEnabled", &SdkWn0807PowerControl::ddsCorrectionEnabled, {false}, {true}),
        writes("enableDdsCorrection", &SdkWn0807PowerControl::enableDdsCorrection, true),
        writes("assignPowerCalibrationTable", &SdkWn0807PowerControl::assignPowerCalibrationTable, {1, 0, 255}),
    })),
    operationName);

TEST_F(SdkWn0807Power, FoldsUnknownNumbersAndCrossesTheStepAttenuator)
{
    walkEnumeration(adapter, *fake, "dacMode", &SdkWn0807PowerControl::dacMode, &SdkWn0807PowerControl::setDacMode,
                    {.toSdk = {{0, 0}, {1, 1}, {2, 2}, {3, 3}}, .unknownReads = 3, .unknownIsSent = 3});
    walkEnumeration(adapter, *fake, "powerMode", &SdkWn0807PowerControl::powerMode,
                    &SdkWn0807PowerControl::setPowerMode,
                    {.toSdk = {{0, 0}, {1, 1}}, .unknownReads = 1, .unknownIsSent = 1});
    walkEnumeration(adapter, *fake, "stepAttenuatorMode", &SdkWn0807PowerControl::stepAttenuatorMode,
                    &SdkWn0807PowerControl::setStepAttenuatorMode,
                    {.toSdk = {{0, 0}, {1, 1}, {2, 2}, {3, 4}, {4, 3}}, .unknownReads = 3, .unknownIsSent = 3});
    walkEnumeration(adapter, *fake, "discreteAttenuatorMode", &SdkWn0807PowerControl::discreteAttenuatorMode,
                    &SdkWn0807PowerControl::setDiscreteAttenuatorMode,
                    {.toSdk = {{0, 0}, {1, 1}, {2, 2}}, .unknownReads = 2, .unknownIsSent = 2});
    walkEnumeration(adapter, *fake, "powerConstant", &SdkWn0807PowerControl::powerConstant,
                    &SdkWn0807PowerControl::setPowerConstant,
                    {.toSdk = {{0, 0}, {1, 1}, {2, 2}}, .unknownReads = 2, .unknownIsSent = 2});
    walkEnumeration(adapter, *fake, "ddsCorrectionMode", &SdkWn0807PowerControl::ddsCorrectionMode,
                    &SdkWn0807PowerControl::setDdsCorrectionMode,
                    {.toSdk = {{0, 0}, {1, 1}}, .unknownReads = 1, .unknownIsSent = 1});
}

} // namespace tov::testing
