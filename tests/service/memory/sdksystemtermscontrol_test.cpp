#include "service/memory/sdksystemtermscontrol.h"
#include "testing/fakesystemtermscontrol.h"

#include <QTimeZone>

#include <gmock/gmock.h>

#include <limits>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace tov::testing {

namespace {

using namespace devices::service;
using Record = ISystemTermsControl::TermsRecord;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

class StoryOfTerms final : public ISystemTermsControl::Observer
{
public:
    void onTermsNotice() override { story.push_back("notice"); }
    void onTermsValue(unsigned int value) override { story.push_back("value " + std::to_string(value)); }
    void onTermsSecondNotice() override { story.push_back("second notice"); }
    void onTermsStatus(ISystemTermsControl::Status status) override
    {
        story.push_back("status " + std::to_string(static_cast<unsigned int>(status)));
    }

    std::vector<std::string> story;
};

vna::ErrorTerms onGrid(std::vector<double> frequencies)
{
    vna::ErrorTerms terms;
    terms.frequencies = std::move(frequencies);
    return terms;
}

class SdkSystemTerms : public ::testing::Test
{
protected:
    std::shared_ptr<FakeSystemTermsControl> fake = std::make_shared<FakeSystemTermsControl>();
    StoryOfTerms observer;
    std::unique_ptr<SdkSystemTermsControl> terms = make();
    const QDateTime time = QDateTime::fromMSecsSinceEpoch(1'700'000'000'999, Qt::UTC);

    std::unique_ptr<SdkSystemTermsControl> make()
    {
        return std::make_unique<SdkSystemTermsControl>(devices::ReacquiringControl<sdk::service::ISystemTermsControl>(
            [this] { return sdk::ControlHandle<sdk::service::ISystemTermsControl>(fake); }));
    }
};

} // namespace

TEST_F(SdkSystemTerms, ReadsRecordsWithTheirNumberWidenedWithItsSign)
{
    fake->answer("termsRecords", std::vector<sdk::service::ISystemTermsControl::TermsRecord>{
                                     {std::numeric_limits<std::int64_t>::min(), -0.5, -5}, {2, 1e300, 2147483647}});
    const auto records = terms->termsRecords();
    ASSERT_EQ(records.size(), 2U);
    EXPECT_EQ(records.capacity(), 2U);
    EXPECT_EQ(records[0].key, std::numeric_limits<std::int64_t>::min());
    EXPECT_EQ(records[0].value, -0.5);
    EXPECT_EQ(records[0].number, -5);
    EXPECT_EQ(records[1].value, 1e300);
    EXPECT_EQ(records[1].number, 2147483647);
}

TEST_F(SdkSystemTerms, WritesRecordsWithTheLow32BitsOfTheirNumber)
{
    terms->writeSystemTerms(time, -1.5, {{7, 0.25, 4'294'967'301}, {-8, 2.0, -1}}, onGrid({1e9}));

    EXPECT_THAT(fake->calls(), ElementsAre("writeSystemTerms with records(1700000000, -1.5)"));
    ASSERT_THAT(fake->writtenRecords, SizeIs(2));
    EXPECT_EQ(fake->writtenRecords[0].key, 7);
    EXPECT_EQ(fake->writtenRecords[0].value, 0.25);
    EXPECT_EQ(fake->writtenRecords[0].number, 5);
    EXPECT_EQ(fake->writtenRecords[1].key, -8);
    EXPECT_EQ(fake->writtenRecords[1].number, -1);
    EXPECT_THAT(fake->writtenTerms.frequencies, ElementsAre(1e9));
}

TEST_F(SdkSystemTerms, WritesNothingForAnEmptyListOfRecords)
{
    terms->writeSystemTerms(time, 1.0, {}, onGrid({1e9}));
    EXPECT_THAT(fake->calls(), IsEmpty());
}

TEST_F(SdkSystemTerms, WritesWithoutRecordsThroughTheOtherForm)
{
    terms->writeSystemTerms(QDateTime::fromSecsSinceEpoch(-5, Qt::UTC), 0.1, onGrid({1e6, 2e6}));
    EXPECT_THAT(fake->calls(), ElementsAre("writeSystemTerms(-5, 0.1)"));
    EXPECT_THAT(fake->writtenTerms.frequencies, ElementsAre(1e6, 2e6));
}

TEST_F(SdkSystemTerms, DropsWritesAndReadsNothingWhenTheControlIsAbsent)
{
    const auto journal = std::make_shared<Journal>();
    fake->recordInto(journal);
    fake->answer("systemTermsFlag", true);
    EXPECT_TRUE(terms->systemTermsFlag());
    fake.reset();

    EXPECT_FALSE(terms->systemTermsFlag());
    EXPECT_TRUE(terms->termsRecords().empty());
    terms->writeSystemTerms(time, 1.0, {{1, 2.0, 3}}, {});
    terms->writeSystemTerms(time, 1.0, {});
    EXPECT_THAT(journal->calls(), ElementsAre("systemTermsFlag()"));
}

TEST_F(SdkSystemTerms, PassesOnWhatTheSdkThrowsAndLetsGoOfTheControl)
{
    fake->duringCall = [] { throw std::runtime_error("the instrument failed"); };
    EXPECT_THROW(terms->termsRecords(), std::runtime_error);
    EXPECT_THROW(terms->writeSystemTerms(time, 1.0, {{1, 2.0, 3}}, {}), std::runtime_error);
    EXPECT_THROW(terms->writeSystemTerms(time, 1.0, {}), std::runtime_error);
    EXPECT_THROW(terms->systemTermsFlag(), std::runtime_error);
    EXPECT_EQ(fake.use_count(), 1);
}

TEST_F(SdkSystemTerms, RelaysNotificationsInOrder)
{
    terms->addObserver(&observer);
    auto* const listener = fake->observers().front();
    listener->onTermsNotice();
    listener->onTermsValue(0xFFFF'FFFF);
    listener->onTermsSecondNotice();
    EXPECT_THAT(observer.story, ElementsAre("notice", "value 4294967295", "second notice"));
}

TEST_F(SdkSystemTerms, FoldsEveryUnknownStatusInto0)
{
    terms->addObserver(&observer);
    auto* const listener = fake->observers().front();
    for (int status = -2; status <= 300; ++status) {
        observer.story.clear();
        listener->onTermsStatus(status);
        EXPECT_THAT(observer.story, ElementsAre("status " + std::to_string(status >= 1 && status <= 9 ? status : 0)));
    }
}

TEST_F(SdkSystemTerms, TellsAnObserverAsOftenAsItCameUntilItIsRemovedOnce)
{
    terms->addObserver(&observer);
    terms->addObserver(&observer);
    fake->observers().front()->onTermsNotice();
    EXPECT_THAT(observer.story, SizeIs(2));
    terms->removeObserver(&observer);
    fake->observers().front()->onTermsNotice();
    EXPECT_THAT(observer.story, SizeIs(2));
}

TEST_F(SdkSystemTerms, IsAttachedWhileItLivesAndTheControlsAreThere)
{
    terms->addObserver(&observer);
    terms->onControlsAboutToBeReleased();
    EXPECT_THAT(fake->observers(), IsEmpty());

    fake = std::make_shared<FakeSystemTermsControl>();
    terms->onControlsAvailable();
    fake->observers().front()->onTermsNotice();
    EXPECT_THAT(observer.story, SizeIs(1));

    terms.reset();
    EXPECT_THAT(fake->observers(), IsEmpty());
}

} // namespace tov::testing
