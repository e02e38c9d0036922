#include "operations/operations.h"
#include "service/tuning/sdkkz515powercontrol.h"
#include "service/valueadaptercontract.h"
#include "testing/fakekz515powercontrol.h"

#include <gmock/gmock.h>

#include <memory>
#include <string>

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

INSTANTIATE_TEST_SUITE_P(SdkKz515PowerControl, ValueAdapter, ::testing::ValuesIn(kz515PowerOperations()),
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
