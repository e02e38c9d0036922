#include "operations/operations.h"
#include "service/enumerationwalk.h"
#include "service/tuning/sdkwn0807powercontrol.h"
#include "service/valueadaptercontract.h"
#include "testing/fakewn0807powermodulecontrol.h"

#include <gmock/gmock.h>

#include <memory>

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

INSTANTIATE_TEST_SUITE_P(SdkWn0807PowerControl, ValueAdapter, ::testing::ValuesIn(wn0807PowerOperations()),
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
