// The simulated calibration services, used through the library's adapters as an application does.

#include "host/instrumentsession.h"
#include "sdk/ifactorycorrectioncontrol.h"
#include "sdk/service/imemoryoperationscontrol.h"
#include "sdk/service/imemoryserialnumbercontrol.h"
#include "sdk/service/isystemtermscontrol.h"
#include "sdk/service/iyqfactorypowercalibrationcontrol.h"
#include "sdk/service/iyqifswcalibrationcontrol.h"
#include "simulator/simulatedinstrument.h"

#include <QTemporaryDir>

#include <gmock/gmock.h>

#include <atomic>
#include <chrono>
#include <memory>
#include <string>
#include <thread>
#include <vector>

namespace tov::testing {

namespace {

namespace controls = devices::controls;
using namespace devices::service;
using devices::FactoryCorrection;
using sdk::service::calibrations::ICalibrationController;
using simulator::CalibrationUnit;
using simulator::Operation;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

using namespace std::chrono_literals;

/// Writes down what it is told, and whether on another thread than the one that made it.
class Story
{
public:
    std::vector<std::string> lines;
    bool onOtherThread = true;

protected:
    ~Story() = default;

    void tell(const std::string& line)
    {
        lines.push_back(line);
        onOtherThread = onOtherThread && std::this_thread::get_id() != m_owner;
    }

private:
    const std::thread::id m_owner = std::this_thread::get_id();
};

template <typename Observer>
class CalibrationStory final : public Observer, public Story
{
public:
    void onFirstEvent() override { tell("first"); }
    void onSecondEvent() override { tell("second"); }
    void onThirdEvent() override { tell("third"); }
    void onStateChanged(CalibrationState state) override { tell("state " + std::to_string(static_cast<int>(state))); }
};

class CorrectionStory final : public SdkFactoryCorrectionControl::Observer, public Story
{
public:
    void onCorrectionsChanged() override { tell("corrections"); }
    void onCorrectionStatesChanged() override { tell("states"); }
    void onEnabledChanged(FactoryCorrection correction, bool enabled) override
    {
        tell(std::to_string(static_cast<int>(correction)) + (enabled ? " on" : " off"));
    }
};

class UnitStory final : public ICalibrationController::Observer, public Story
{
public:
    void onUnitStatusChanged() override { tell("unit"); }
    void onSaveProgress(int save, const ICalibrationController::SaveProgress& progress) override
    {
        tell(std::to_string(save) + ": " + std::to_string(progress.done) + "/" + std::to_string(progress.total));
    }
    void onConfigurationChanged() override { tell("configuration"); }
};

class SimulatedCalibrations : public ::testing::Test
{
protected:
    std::shared_ptr<simulator::SimulatedInstrument> instrument = std::make_shared<simulator::SimulatedInstrument>();
    host::InstrumentSession session{instrument};
};

SdkYqIfswCalibrationControl::IfswCalibrationData someIfswData()
{
    SdkYqIfswCalibrationControl::IfswCalibrationData data;
    data.values = {1e9, 2e9};
    data.groups[0].second = {{1.0, -0.5, 1e-300}};
    data.groups[2].first = {{4.0, 5.0, 6.0}, {7.0, 8.0, 9.0}};
    return data;
}

void expectSomeIfswData(const std::optional<simulator::StoredIfswCalibration>& stored)
{
    ASSERT_TRUE(stored);
    EXPECT_THAT(stored->data.values, ElementsAre(1e9, 2e9));
    EXPECT_THAT(stored->data.groups[0].first, IsEmpty());
    ASSERT_THAT(stored->data.groups[0].second, SizeIs(1));
    EXPECT_EQ(stored->data.groups[0].second[0].value3, 1e-300);
    ASSERT_THAT(stored->data.groups[2].first, SizeIs(2));
    EXPECT_EQ(stored->data.groups[2].first[1].value2, 8.0);
}

} // namespace

TEST_F(SimulatedCalibrations, GiveAPlanThatRisesWithoutGaps)
{
    const auto ifsw = session.control(controls::ifswCalibration)->frequencyPlan().segments;
    ASSERT_GT(ifsw.size(), 1U);
    for (std::size_t i = 0; i < ifsw.size(); ++i) {
        EXPECT_LT(ifsw[i].start, ifsw[i].stop);
        EXPECT_GT(ifsw[i].points, 1);
        if (i > 0) {
            EXPECT_EQ(ifsw[i].start, ifsw[i - 1].stop);
        }
    }
    EXPECT_EQ(session.control(controls::factoryPowerCalibration)->frequencyPlan().segments.size(), ifsw.size());
}

TEST_F(SimulatedCalibrations, KeepTheIfswDataWithTheTimeOfTheSaveAndTellOfIt)
{
    const auto ifsw = session.control(controls::ifswCalibration);
    CalibrationStory<SdkYqIfswCalibrationControl::Observer> story;
    ifsw->addObserver(&story);
    EXPECT_FALSE(instrument->storedIfswCalibration());

    const auto before = std::chrono::floor<std::chrono::seconds>(std::chrono::system_clock::now());
    ifsw->saveCalibrationData(someIfswData());
    instrument->waitUntilQuiet();
    expectSomeIfswData(instrument->storedIfswCalibration());
    EXPECT_GE(instrument->storedIfswCalibration()->time, before);
    EXPECT_LE(instrument->storedIfswCalibration()->time, std::chrono::system_clock::now());
    EXPECT_THAT(story.lines, ElementsAre("state 1", "first", "state 2", "second"));
    EXPECT_TRUE(story.onOtherThread);

    story.lines.clear();
    ifsw->saveCalibrationData({});
    instrument->waitUntilQuiet();
    EXPECT_THAT(story.lines, ElementsAre("state 1", "first", "state 0", "third"));
    ifsw->removeObserver(&story);
}

TEST_F(SimulatedCalibrations, KeepThePowerPointsWithTheirTime)
{
    const auto power = session.control(controls::factoryPowerCalibration);
    CalibrationStory<SdkYqFactoryPowerCalibrationControl::Observer> story;
    power->addObserver(&story);
    power->saveCalibrationData(std::chrono::sys_seconds(1'700'000'000s), -1.5,
                               {{1e9, 0.1F, 3.0F, 4, 255, 6.0F, 7, 8.0F, 9.0F}});
    instrument->waitUntilQuiet();

    const auto stored = instrument->storedFactoryPowerCalibration();
    ASSERT_TRUE(stored);
    EXPECT_EQ(stored->time.time_since_epoch(), 1'700'000'000s);
    EXPECT_EQ(stored->parameter, -1.5);
    ASSERT_THAT(stored->points, SizeIs(1));
    EXPECT_EQ(stored->points[0].value2, 0.1F);
    EXPECT_EQ(stored->points[0].value5, 255);
    EXPECT_THAT(story.lines, ElementsAre("state 1", "first", "state 2", "second"));
    power->removeObserver(&story);
}

TEST_F(SimulatedCalibrations, HaveCorrectionsThatAreNotValidOrNotModifiable)
{
    const auto corrections = session.control(controls::factoryCorrections);
    CorrectionStory story;
    corrections->addObserver(&story);
    ASSERT_THAT(corrections->supported(), SizeIs(10));
    EXPECT_FALSE(corrections->isValid(FactoryCorrection::Correction6));
    EXPECT_FALSE(corrections->isModifiable(FactoryCorrection::Correction1));
    EXPECT_TRUE(corrections->isEnabled(FactoryCorrection::Correction1));

    corrections->setEnabled(FactoryCorrection::Correction6, true);
    corrections->setEnabled(FactoryCorrection::Correction1, false);
    EXPECT_FALSE(corrections->isEnabled(FactoryCorrection::Correction6));
    EXPECT_TRUE(corrections->isEnabled(FactoryCorrection::Correction1));

    corrections->setEnabled(FactoryCorrection::Correction3, true);
    corrections->setEnabled(FactoryCorrection::Correction3, true);
    EXPECT_TRUE(corrections->isEnabled(FactoryCorrection::Correction3));
    instrument->waitUntilQuiet();
    EXPECT_THAT(story.lines, ElementsAre("2 on", "states"));
    EXPECT_TRUE(story.onOtherThread);
    corrections->removeObserver(&story);
}

TEST_F(SimulatedCalibrations, RefuseToSwitchACorrectionThatIsNotValidAlsoByThemselves)
{
    const auto control = std::static_pointer_cast<sdk::IFactoryCorrectionControl>(
        instrument->findControl(controls::factoryCorrections.keys.sdk));
    const auto before = control->enabledCorrections();
    for (const unsigned int flag : {0x8000U, 0x0001U, 0x0400U})
        control->setEnabled(static_cast<sdk::CorrectionFlag>(flag), (before & flag) == 0);
    EXPECT_EQ(control->enabledCorrections(), before);
}

TEST_F(SimulatedCalibrations, SwitchOffACorrectionWhoseDataBecomeInvalid)
{
    const auto corrections = session.control(controls::factoryCorrections);
    CorrectionStory story;
    corrections->addObserver(&story);
    instrument->setCorrectionValid(sdk::CorrectionFlag{0x0002}, false);
    EXPECT_FALSE(corrections->isValid(FactoryCorrection::Correction2));
    EXPECT_FALSE(corrections->isEnabled(FactoryCorrection::Correction2));
    instrument->setCorrectionValid(sdk::CorrectionFlag{0x0002}, true);
    EXPECT_TRUE(corrections->isValid(FactoryCorrection::Correction2));
    instrument->waitUntilQuiet();
    EXPECT_THAT(story.lines, ElementsAre("corrections", "1 off", "states", "corrections"));
    corrections->removeObserver(&story);
}

TEST_F(SimulatedCalibrations, TellOfEachUnitToWhoObservesItsController)
{
    const auto first = session.control(controls::calibrationController1);
    const auto second = session.control(controls::calibrationController2);
    UnitStory firstStory;
    UnitStory secondStory;
    first->lock()->addObserver(&firstStory);
    second->lock()->addObserver(&secondStory);

    CalibrationUnit& unit = instrument->calibrationUnit(controls::calibrationController1.keys.sdk);
    unit.setStatus(CalibrationUnit::Status::Disconnected);
    unit.setStatus(CalibrationUnit::Status::Disconnected);
    unit.setConfiguration("4 ports");
    instrument->waitUntilQuiet();
    EXPECT_THAT(firstStory.lines, ElementsAre("unit", "configuration"));
    EXPECT_TRUE(firstStory.onOtherThread);
    EXPECT_THAT(secondStory.lines, IsEmpty());
    EXPECT_EQ(unit.status(), CalibrationUnit::Status::Disconnected);
    EXPECT_EQ(unit.configuration(), "4 ports");

    instrument->releaseControls();
    unit.setStatus(CalibrationUnit::Status::Ready);
    instrument->waitUntilQuiet();
    EXPECT_THAT(firstStory.lines, SizeIs(2)) << "who observed the old controller is told nothing";
    EXPECT_THROW(instrument->calibrationUnit(controls::loLeakage.keys.sdk), std::out_of_range);
}

TEST_F(SimulatedCalibrations, TellHowFarASaveHasComeOverItsDuration)
{
    const auto handle = session.control(controls::calibrationController2);
    UnitStory story;
    handle->lock()->addObserver(&story);
    CalibrationUnit& unit = instrument->calibrationUnit(controls::calibrationController2.keys.sdk);

    const auto start = std::chrono::steady_clock::now();
    unit.beginSave(25, 2ms);
    instrument->waitUntilQuiet();
    EXPECT_GE(std::chrono::steady_clock::now() - start, 2ms);
    EXPECT_THAT(story.lines, ElementsAre("1: 0/25", "1: 2/25", "1: 4/25", "1: 6/25", "1: 8/25", "1: 10/25", "1: 12/25",
                                         "1: 14/25", "1: 16/25", "1: 18/25", "1: 25/25"));
    EXPECT_TRUE(story.onOtherThread);
    EXPECT_EQ(unit.saves(), 1);
}

TEST_F(SimulatedCalibrations, TellTheRestOfASaveToAControllerThatIsOfferedMeanwhile)
{
    UnitStory story;
    auto other = std::make_unique<simulator::SimulatedInstrument>();
    other->calibrationUnit(controls::calibrationController1.keys.sdk).beginSave(10, 10h);
    other->releaseControls();
    other->offerControls();
    const auto controller =
        std::static_pointer_cast<ICalibrationController>(other->findControl(controls::calibrationController1.keys.sdk));
    controller->addObserver(&story);
    other.reset(); // whoever waits is told at once
    ASSERT_THAT(story.lines, SizeIs(::testing::Ge(10U)));
    EXPECT_EQ(story.lines.back(), "1: 10/10");
}

TEST_F(SimulatedCalibrations, AreKeptInAFile)
{
    const QTemporaryDir folder;
    const QString file = folder.filePath("state");
    session.control(controls::ifswCalibration)->saveCalibrationData(someIfswData());
    session.control(controls::factoryPowerCalibration)
        ->saveCalibrationData(std::chrono::sys_seconds(-5s), 2.5, {{1.0, 2.0F, 0.1F, 4, 5, 6.0F, 7, 8.0F, -9.0F}});
    session.control(controls::factoryCorrections)->setEnabled(FactoryCorrection::Correction4, true);
    instrument->setCorrectionValid(sdk::CorrectionFlag{0x0002}, false);
    CalibrationUnit& unit = instrument->calibrationUnit(controls::calibrationController2.keys.sdk);
    unit.setStatus(CalibrationUnit::Status::WarmingUp);
    unit.setConfiguration("2 ports");
    instrument->save(file);

    simulator::SimulatedInstrument other;
    other.load(file);
    expectSomeIfswData(other.storedIfswCalibration());
    EXPECT_EQ(other.storedIfswCalibration()->time, instrument->storedIfswCalibration()->time);
    const auto stored = other.storedFactoryPowerCalibration();
    ASSERT_TRUE(stored);
    EXPECT_EQ(stored->time.time_since_epoch(), -5s);
    EXPECT_EQ(stored->parameter, 2.5);
    ASSERT_THAT(stored->points, SizeIs(1));
    EXPECT_EQ(stored->points[0].value1, 1.0);
    EXPECT_EQ(stored->points[0].value3, 0.1F);
    EXPECT_EQ(stored->points[0].value7, 7);
    EXPECT_EQ(stored->points[0].value9, -9.0F);
    const auto corrections = std::static_pointer_cast<sdk::IFactoryCorrectionControl>(
        other.findControl(controls::factoryCorrections.keys.sdk));
    EXPECT_EQ(corrections->enabledCorrections(), 0x0009);
    EXPECT_EQ(corrections->validCorrections() & 0x0002, 0);
    const CalibrationUnit& otherUnit = other.calibrationUnit(controls::calibrationController2.keys.sdk);
    EXPECT_EQ(otherUnit.status(), CalibrationUnit::Status::WarmingUp);
    EXPECT_EQ(otherUnit.configuration(), "2 ports");
}

TEST_F(SimulatedCalibrations, ThrowWhenToldTo)
{
    for (const auto operation : {Operation::IfswPlan, Operation::IfswSave, Operation::FactoryPowerPlan,
                                 Operation::FactoryPowerSave, Operation::CorrectionsRead, Operation::CorrectionSwitch})
        instrument->faults().throwFrom(operation);
    const auto ifsw = session.control(controls::ifswCalibration);
    const auto power = session.control(controls::factoryPowerCalibration);
    const auto corrections = session.control(controls::factoryCorrections);
    EXPECT_THROW(ifsw->frequencyPlan(), std::runtime_error);
    EXPECT_THROW(ifsw->saveCalibrationData({}), std::runtime_error);
    EXPECT_THROW(power->frequencyPlan(), std::runtime_error);
    EXPECT_THROW(power->saveCalibrationData({}, 0.0, {}), std::runtime_error);
    EXPECT_THROW(corrections->supported(), std::runtime_error);
    instrument->faults().heal(Operation::CorrectionsRead);
    EXPECT_THROW(corrections->setEnabled(FactoryCorrection::Correction3, true), std::runtime_error);
    EXPECT_FALSE(instrument->storedIfswCalibration());
}

TEST_F(SimulatedCalibrations, RegisterNobodyWhereObservingWasToldToThrow)
{
    const auto throwsAsTold = [this]<typename Control, typename... Types>(
                                  const devices::ControlKind<Control, Types...>& kind, Operation observing) {
        const auto control = std::static_pointer_cast<Control>(instrument->findControl(kind.keys.sdk));
        instrument->faults().throwFrom(observing);
        EXPECT_THROW(control->addObserver(nullptr), std::runtime_error) << kind.name;
    };
    throwsAsTold(controls::memoryOperations, Operation::MemoryObserve);
    throwsAsTold(controls::serialNumber, Operation::SerialNumberObserve);
    throwsAsTold(controls::systemTerms, Operation::TermsObserve);
    throwsAsTold(controls::ifswCalibration, Operation::IfswObserve);
    throwsAsTold(controls::factoryPowerCalibration, Operation::FactoryPowerObserve);
    throwsAsTold(controls::factoryCorrections, Operation::CorrectionsObserve);
    throwsAsTold(controls::calibrationController1, Operation::CalibrationController1Observe);

    const auto controller = std::static_pointer_cast<ICalibrationController>(
        instrument->findControl(controls::calibrationController2.keys.sdk));
    UnitStory story;
    instrument->faults().throwFrom(Operation::CalibrationController2Observe);
    EXPECT_THROW(controller->addObserver(&story), std::runtime_error);
    CalibrationUnit& unit = instrument->calibrationUnit(controls::calibrationController2.keys.sdk);
    unit.setStatus(CalibrationUnit::Status::WarmingUp);
    instrument->waitUntilQuiet();
    instrument->faults().heal(Operation::CalibrationController2Observe);
    controller->addObserver(&story);
    unit.setStatus(CalibrationUnit::Status::Ready);
    instrument->waitUntilQuiet();
    EXPECT_THAT(story.lines, SizeIs(1)) << "only what came after it was registered";
    controller->removeObserver(&story);
}

} // namespace tov::testing
