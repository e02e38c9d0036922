#include "operations/operations.h"
#include "service/tuning/sdkulksynthesiscontrol.h"
#include "service/valueadaptercontract.h"
#include "testing/fakeulksynthesiscontrol.h"

#include <gmock/gmock.h>

#include <memory>
#include <span>
#include <vector>

namespace tov::testing {

using devices::service::SdkUlkSynthesisControl;
using sdk::service::IUlkSynthesisControl;
using ::testing::ElementsAre;

namespace {

class SdkUlkSynthesis : public ::testing::Test
{
protected:
    std::shared_ptr<FakeUlkSynthesisControl> fake = std::make_shared<FakeUlkSynthesisControl>();
    SdkUlkSynthesisControl adapter{devices::ReacquiringControl<IUlkSynthesisControl>(
        [this] { return sdk::ControlHandle<IUlkSynthesisControl>(fake); })};
};

} // namespace

INSTANTIATE_TEST_SUITE_P(SdkUlkSynthesisControl, ValueAdapter, ::testing::ValuesIn(ulkSynthesisOperations()),
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
