#include "fakes/fakeulksynthesiscontrol.h"
#include "service/tuning/sdkulksynthesiscontrol.h"
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

using devices::service::SdkUlkSynthesisControl;
using sdk::service::IUlkSynthesisControl;
using ::testing::ElementsAre;

namespace {

constexpr std::array frequencies = {7.5e6, 10.7e6, 2.5e6};

class SdkUlkSynthesis : public ::testing::Test
{
protected:
    std::shared_ptr<FakeUlkSynthesisControl> fake = std::make_shared<FakeUlkSynthesisControl>();
    SdkUlkSynthesisControl adapter{devices::ReacquiringControl<IUlkSynthesisControl>(
        [this] { return sdk::ControlHandle<IUlkSynthesisControl>(fake); })};
};

} // namespace

INSTANTIATE_TEST_SUITE_P(SdkUlkSynthesisControl, ValueAdapter,
                         (operations<SdkUlkSynthesisControl, IUlkSynthesisControl, FakeUlkSynthesisControl>({
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
                             writes("setSelectedRef", &SdkUlkSynthesisControl::setSelectedRef,
                                    std::numeric_limits<int>::max()),
                             reads("supportedRefs", &SdkUlkSynthesisControl::supportedRefs, {{}},
                                   SdkAnswers{std::span<const double>(frequencies)}, {7.5e6, 10.7e6, 2.5e6}),
                             writes("reset", &SdkUlkSynthesisControl::reset),
                         })),
                         operationName);

TEST_F(SdkUlkSynthesis, GivesCopiesOfTheListsThatDoNotFollowTheInstrument)
{
    std::vector<double> ofTheInstrument = {1.0, 2.0};
    fake->answer("supportedIfs", std::span<const double>(ofTheInstrument));
    fake->answer("supportedRefs", std::span<const double>(ofTheInstrument));
    const auto ifs = adapter.supportedIfs();
    const auto refs = adapter.supportedRefs();
    ofTheInstrument[0] = 9.0;

    EXPECT_THAT(ifs, ElementsAre(1.0, 2.0));
    EXPECT_EQ(ifs.capacity(), 2U);
    EXPECT_THAT(refs, ElementsAre(1.0, 2.0));
    EXPECT_EQ(refs.capacity(), 2U);
}

} // namespace tov::testing
