#include "operations/operations.h"
#include "service/tuning/sdkyqsynthesiscontrol.h"
#include "service/valueadaptercontract.h"
#include "testing/fakeyqsynthesiscontrol.h"

#include <gmock/gmock.h>

#include <cstring>
#include <limits>
#include <span>

namespace tov::testing {

using devices::service::SdkYqSynthesisControl;
using sdk::service::IYqSynthesisControl;
using ::testing::ElementsAre;

namespace {

class SdkYqSynthesis : public ::testing::Test
{
protected:
    std::shared_ptr<FakeYqSynthesisControl> fake = std::make_shared<FakeYqSynthesisControl>();
    SdkYqSynthesisControl adapter{devices::ReacquiringControl<IYqSynthesisControl>(
        [this] { return sdk::ControlHandle<IYqSynthesisControl>(fake); })};
};

} // namespace

INSTANTIATE_TEST_SUITE_P(SdkYqSynthesisControl, ValueAdapter, ::testing::ValuesIn(yqSynthesisOperations()),
                         operationName);

TEST_F(SdkYqSynthesis, PassesAnyIndexOnUnchecked)
{
    adapter.setSelectedIf(std::numeric_limits<int>::min());
    adapter.setSelectedIf(std::numeric_limits<int>::max());

    EXPECT_THAT(fake->calls(), ElementsAre("setSelectedIf(-2147483648)", "setSelectedIf(2147483647)"));
}

TEST_F(SdkYqSynthesis, GivesACopyOfTheIfsThatDoesNotFollowTheInstrument)
{
    std::vector<double> ofTheInstrument = {1.0, 2.0};
    fake->answer("supportedIfs", std::span<const double>(ofTheInstrument));

    const auto copy = adapter.supportedIfs();
    ofTheInstrument[0] = 9.0;

    EXPECT_THAT(copy, ElementsAre(1.0, 2.0));
    EXPECT_EQ(copy.capacity(), copy.size());
}

TEST(SdkYqSynthesisLife, CopiesTheIfsWhileTheControlStillLives)
{
    // A control whose list ends with it, on an instrument that lets go while the list is read.
    class MortalList final : public FakeYqSynthesisControl
    {
    public:
        explicit MortalList(std::vector<double>& ofTheInstrument)
            : m_ifs(ofTheInstrument)
        {
        }
        MortalList(const MortalList&) = delete;
        MortalList& operator=(const MortalList&) = delete;
        ~MortalList() override { m_ifs.assign(m_ifs.size(), -1.0); }

    private:
        std::vector<double>& m_ifs;
    };
    std::vector<double> ofTheInstrument = {1.0, 2.0};
    auto control = std::make_shared<MortalList>(ofTheInstrument);
    control->answer("supportedIfs", std::span<const double>(ofTheInstrument));
    control->duringCall = [&] { control.reset(); };
    const SdkYqSynthesisControl dying{devices::ReacquiringControl<IYqSynthesisControl>(
        [&] { return sdk::ControlHandle<IYqSynthesisControl>(control); })};

    EXPECT_THAT(dying.supportedIfs(), ElementsAre(1.0, 2.0));
    EXPECT_THAT(ofTheInstrument, ElementsAre(-1.0, -1.0)) << "the control is gone now";
}

TEST_F(SdkYqSynthesis, CopiesTheIfsBitForBit)
{
    const std::vector<double> odd = {-0.0, std::numeric_limits<double>::denorm_min(),
                                     std::numeric_limits<double>::infinity(),
                                     std::numeric_limits<double>::signaling_NaN()};
    fake->answer("supportedIfs", std::span<const double>(odd));

    const auto copy = adapter.supportedIfs();
    ASSERT_EQ(copy.size(), odd.size());
    EXPECT_EQ(std::memcmp(copy.data(), odd.data(), odd.size() * sizeof(double)), 0);
}

TEST_F(SdkYqSynthesis, AllocatesNothingForAnEmptyList)
{
    EXPECT_EQ(adapter.supportedIfs().capacity(), 0U);
}

TEST_F(SdkYqSynthesis, RaisesTheVectorsErrorForAListThatNoVectorHoldsAndLetsGoOfTheControl)
{
    const double one = 1.0;
    fake->answer("supportedIfs", std::span<const double>(&one, std::vector<double>().max_size() + 1));

    EXPECT_THROW(adapter.supportedIfs(), std::length_error);
    EXPECT_EQ(fake.use_count(), 1);
}

} // namespace tov::testing
