#include "devices/icontrollifecycleobserver.h"
#include "operations/operations.h"
#include "service/enumerationwalk.h"
#include "service/tuning/sdkulkpowercontrol.h"
#include "service/valueadaptercontract.h"
#include "signals/metaobjects.h"
#include "testing/fakeulkpowercontrol.h"

#include <gmock/gmock.h>

#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <vector>

namespace tov::testing {

using devices::service::SdkUlkPowerControl;
using sdk::service::IUlkPowerControl;
using ::testing::ElementsAre;
using ::testing::ElementsAreArray;
using ::testing::IsEmpty;

namespace {

struct Change
{
    std::string signal;
    void (SdkUlkPowerControl::*changed)();
    std::function<void(SdkUlkPowerControl&)> set;
};

// Every signal in the order of declaration, with the setter that emits it.
const std::vector<Change> changes = {
    {"loPowerChanged", &SdkUlkPowerControl::loPowerChanged, [](SdkUlkPowerControl& adapter) { adapter.setLoPower(1); }},
    {"rfPowerChanged", &SdkUlkPowerControl::rfPowerChanged, [](SdkUlkPowerControl& adapter) { adapter.setRfPower(1); }},
    {"syntPowerModeChanged", &SdkUlkPowerControl::syntPowerModeChanged,
     [](SdkUlkPowerControl& adapter) { adapter.setSyntPowerMode(SdkUlkPowerControl::SyntPowerMode::Mode1); }},
    {"attenuationStepChanged", &SdkUlkPowerControl::attenuationStepChanged,
     [](SdkUlkPowerControl& adapter) { adapter.setAttenuationStep(1); }},
    {"stepAttenuatorModeChanged", &SdkUlkPowerControl::stepAttenuatorModeChanged,
     [](SdkUlkPowerControl& adapter) { adapter.setStepAttenuatorMode(SdkUlkPowerControl::StepAttenuatorMode::Mode1); }},
    {"discreteAttenuatorEnabledChanged", &SdkUlkPowerControl::discreteAttenuatorEnabledChanged,
     [](SdkUlkPowerControl& adapter) { adapter.enableDiscreteAttenuator(true); }},
    {"discreteAttenuatorModeChanged", &SdkUlkPowerControl::discreteAttenuatorModeChanged,
     [](SdkUlkPowerControl& adapter) {
         adapter.setDiscreteAttenuatorMode(SdkUlkPowerControl::DiscreteAttenuatorMode::Mode1);
     }},
    {"attenuationModeChanged", &SdkUlkPowerControl::attenuationModeChanged,
     [](SdkUlkPowerControl& adapter) { adapter.setAttenuationMode(SdkUlkPowerControl::AttenuationMode::Mode1); }},
    {"commonAttenuationModeChanged", &SdkUlkPowerControl::commonAttenuationModeChanged,
     [](SdkUlkPowerControl& adapter) {
         adapter.setCommonAttenuationMode(SdkUlkPowerControl::CommonAttenuationMode::Mode1);
     }},
    {"commonAttenuationStepChanged", &SdkUlkPowerControl::commonAttenuationStepChanged,
     [](SdkUlkPowerControl& adapter) { adapter.setCommonAttenuationStep(1); }},
    {"ampTPort1Changed", &SdkUlkPowerControl::ampTPort1Changed,
     [](SdkUlkPowerControl& adapter) { adapter.setAmpTPort1(SdkUlkPowerControl::AmpGain::Gain1); }},
    {"ampTPort2Changed", &SdkUlkPowerControl::ampTPort2Changed,
     [](SdkUlkPowerControl& adapter) { adapter.setAmpTPort2(SdkUlkPowerControl::AmpGain::Gain1); }},
    {"ampRPort1Changed", &SdkUlkPowerControl::ampRPort1Changed,
     [](SdkUlkPowerControl& adapter) { adapter.setAmpRPort1(SdkUlkPowerControl::AmpGain::Gain1); }},
};

std::vector<std::string> allSignals()
{
    std::vector<std::string> names;
    for (const Change& change : changes)
        names.push_back(change.signal);
    return names;
}

class SdkUlkPower : public ::testing::Test
{
protected:
    std::shared_ptr<FakeUlkPowerControl> fake = std::make_shared<FakeUlkPowerControl>();
    SdkUlkPowerControl adapter{
        devices::ReacquiringControl<IUlkPowerControl>([this] { return sdk::ControlHandle<IUlkPowerControl>(fake); })};
    std::vector<std::string> emitted;

    // Writes down what is emitted.
    void SetUp() override
    {
        for (const Change& change : changes)
            QObject::connect(&adapter, change.changed, [this, &change] { emitted.push_back(change.signal); });
    }
};

} // namespace

INSTANTIATE_TEST_SUITE_P(SdkUlkPowerControl, ValueAdapter, ::testing::ValuesIn(ulkPowerOperations()), operationName);

TEST_F(SdkUlkPower, HasItsThirteenSignalsInOrder)
{
    const QMetaObject& meta = SdkUlkPowerControl::staticMetaObject;
    EXPECT_STREQ(meta.className(), "tov::devices::service::SdkUlkPowerControl");
    EXPECT_EQ(meta.superClass(), &QObject::staticMetaObject);
    std::vector<std::string> expected;
    for (const std::string& signal : allSignals())
        expected.push_back(signal + "()");
    EXPECT_THAT(ownMembers(meta), ElementsAreArray(expected));
    EXPECT_EQ(adapter.parent(), nullptr);
}

TEST_F(SdkUlkPower, TellsEveryChangeByItsOwnSignal)
{
    for (const Change& change : changes) {
        emitted.clear();
        change.set(adapter);
        EXPECT_THAT(emitted, ElementsAre(change.signal));
    }
}

TEST_F(SdkUlkPower, TellsAChangeToTheSameValueAgain)
{
    adapter.setLoPower(5);
    adapter.setLoPower(5);
    EXPECT_THAT(emitted, ElementsAre("loPowerChanged", "loPowerChanged"));
}

TEST_F(SdkUlkPower, TellsNothingOfPowerCodes)
{
    adapter.setLoPowerCodes({1, 2});
    adapter.setRfPowerCodes({1, 2});
    EXPECT_THAT(emitted, IsEmpty());
}

TEST_F(SdkUlkPower, TellsAResetByEverySignalInOrder)
{
    adapter.reset();
    EXPECT_THAT(emitted, ElementsAreArray(allSignals()));
    EXPECT_THAT(fake->calls(), ElementsAre("reset()"));
}

TEST_F(SdkUlkPower, TellsNothingWhenTheControlIsAbsent)
{
    fake.reset();
    for (const Change& change : changes)
        change.set(adapter);
    adapter.reset();
    EXPECT_THAT(emitted, IsEmpty());
}

TEST_F(SdkUlkPower, TellsNothingWhenTheSdkThrowsAndLetsGoOfTheControl)
{
    fake->duringCall = [] { throw std::runtime_error("the instrument failed"); };
    for (const Change& change : changes)
        EXPECT_THROW(change.set(adapter), std::runtime_error) << change.signal;
    EXPECT_THROW(adapter.reset(), std::runtime_error);
    EXPECT_THAT(emitted, IsEmpty());
    EXPECT_EQ(fake.use_count(), 1);
}

TEST_F(SdkUlkPower, TellsWhileTheControlIsStillHeld)
{
    const auto journal = std::make_shared<Journal>();
    fake->recordInto(journal);
    const std::weak_ptr<FakeUlkPowerControl> alive = fake;
    QObject::connect(&adapter, &SdkUlkPowerControl::rfPowerChanged, [&] {
        fake.reset();
        EXPECT_FALSE(alive.expired());
        adapter.rfPower();
    });
    adapter.setRfPower(3);
    EXPECT_TRUE(alive.expired());
    EXPECT_THAT(journal->calls(),
                ElementsAre("setRfPower(" + exactly(static_cast<unsigned char>(3)) + ")", "rfPower()"));
}

TEST_F(SdkUlkPower, TellsAResetWhileTheControlIsStillHeld)
{
    const std::weak_ptr<FakeUlkPowerControl> alive = fake;
    QObject::connect(&adapter, &SdkUlkPowerControl::ampRPort1Changed, [&] {
        fake.reset();
        EXPECT_FALSE(alive.expired()) << "at the last of its signals";
    });
    adapter.reset();
    EXPECT_TRUE(alive.expired());
}

TEST_F(SdkUlkPower, IsAQObjectAndNothingElse)
{
    static_assert(!std::is_copy_constructible_v<SdkUlkPowerControl>);
    static_assert(!std::is_base_of_v<devices::IControlLifecycleObserver, SdkUlkPowerControl>);
    EXPECT_EQ(sizeof(SdkUlkPowerControl),
              sizeof(QObject) + sizeof(devices::ReacquiringControl<sdk::service::IUlkPowerControl>));
}

TEST_F(SdkUlkPower, FoldsUnknownNumbersInto0)
{
    walkEnumeration(adapter, *fake, "syntPowerMode", &SdkUlkPowerControl::syntPowerMode,
                    &SdkUlkPowerControl::setSyntPowerMode,
                    {.toSdk = {{0, 0}, {1, 1}}, .unknownReads = 0, .unknownIsSent = 0});
    walkEnumeration(adapter, *fake, "attenuationMode", &SdkUlkPowerControl::attenuationMode,
                    &SdkUlkPowerControl::setAttenuationMode,
                    {.toSdk = {{0, 0}, {1, 1}}, .unknownReads = 0, .unknownIsSent = 0});
    walkEnumeration(adapter, *fake, "stepAttenuatorMode", &SdkUlkPowerControl::stepAttenuatorMode,
                    &SdkUlkPowerControl::setStepAttenuatorMode,
                    {.toSdk = {{0, 0}, {1, 1}, {2, 2}, {3, 3}}, .unknownReads = 0, .unknownIsSent = 0});
    walkEnumeration(adapter, *fake, "discreteAttenuatorMode", &SdkUlkPowerControl::discreteAttenuatorMode,
                    &SdkUlkPowerControl::setDiscreteAttenuatorMode,
                    {.toSdk = {{0, 0}, {1, 1}}, .unknownReads = 0, .unknownIsSent = 0});
    walkEnumeration(adapter, *fake, "commonAttenuationMode", &SdkUlkPowerControl::commonAttenuationMode,
                    &SdkUlkPowerControl::setCommonAttenuationMode,
                    {.toSdk = {{0, 0}, {1, 1}}, .unknownReads = 0, .unknownIsSent = 0});
    walkEnumeration<unsigned char>(adapter, *fake, "ampTPort1", &SdkUlkPowerControl::ampTPort1,
                                   &SdkUlkPowerControl::setAmpTPort1,
                                   {.toSdk = {{0, 0}, {1, 1}}, .unknownReads = 0, .unknownIsSent = 0});
    walkEnumeration<unsigned char>(adapter, *fake, "ampTPort2", &SdkUlkPowerControl::ampTPort2,
                                   &SdkUlkPowerControl::setAmpTPort2,
                                   {.toSdk = {{0, 0}, {1, 1}}, .unknownReads = 0, .unknownIsSent = 0});
    walkEnumeration<unsigned char>(adapter, *fake, "ampRPort1", &SdkUlkPowerControl::ampRPort1,
                                   &SdkUlkPowerControl::setAmpRPort1,
                                   {.toSdk = {{0, 0}, {1, 1}}, .unknownReads = 0, .unknownIsSent = 0});
}

} // namespace tov::testing
