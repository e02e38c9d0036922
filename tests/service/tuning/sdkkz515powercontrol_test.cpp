#include "fakes/fakekz515powercontrol.h"
#include "service/tuning/sdkkz515powercontrol.h"
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

using devices::service::SdkKz515PowerControl;
using sdk::service::IKZ515PowerControl;
using ControlMode = SdkKz515PowerControl::ControlMode;
using ::testing::ElementsAre;

namespace {

class SdkKz515Power : public ::testing::Test
{
protected:
    std::shared_ptr<FakeKz515PowerControl> fake = std::make_shared<FakeKz515PowerControl>();
    SdkKz515PowerControl adapter{devices::ReacquiringControl<IKZ515PowerControl>(
        [this] { return sdk::ControlHandle<IKZ515PowerControl>(fake); })};
};

} // namespace

INSTANTIATE_TEST_SUITE_P(
    SdkKz515PowerControl, ValueAdapter,
    (operations<SdkKz515PowerControl, IKZ515PowerControl, FakeKz515PowerControl>({
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
    })),
    operationName);

TEST_F(SdkKz515Power, ReadsEveryDacModeButOneAsNoUnion)
{
    for (int mode = -2; mode <= 300; ++mode) {
        fake->answer("dacMode", mode);
        EXPECT_EQ(adapter.isDacModeUnion(), mode == 1) << mode;
    }
}

TEST_F(SdkKz515Power, SwitchesTheUnionOffWithMode0)
{
    adapter.setDacModeUnion(false);
    EXPECT_THAT(fake->calls(), ElementsAre("setDacMode(0)"));
}

TEST_F(SdkKz515Power, PassesEveryControlModeUnchanged)
{
    for (int mode = -2; mode <= 300; ++mode) {
        fake->answer("powerControlMode", static_cast<IKZ515PowerControl::ControlMode>(mode));
        fake->answer("dacControlMode", static_cast<IKZ515PowerControl::ControlMode>(mode));
        EXPECT_EQ(static_cast<int>(adapter.powerControlMode()), mode);
        EXPECT_EQ(static_cast<int>(adapter.dacControlMode()), mode);
        adapter.setPowerControlMode(static_cast<ControlMode>(mode));
        EXPECT_EQ(fake->calls().back(), "setPowerControlMode(" + std::to_string(mode) + ")");
        adapter.setDacControlMode(static_cast<ControlMode>(mode));
        EXPECT_EQ(fake->calls().back(), "setDacControlMode(" + std::to_string(mode) + ")");
    }
}

TEST_F(SdkKz515Power, NumbersItsControlModesAsTheSdkDoes)
{
    EXPECT_EQ(static_cast<int>(ControlMode::Mode0), static_cast<int>(IKZ515PowerControl::ControlMode::Mode0));
    EXPECT_EQ(static_cast<int>(ControlMode::Mode1), static_cast<int>(IKZ515PowerControl::ControlMode::Mode1));
}

} // namespace tov::testing
