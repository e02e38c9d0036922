#include "openpage.h"
#include "workbench/models/correctionsmodel.h"

#include <QSignalSpy>

namespace tov::testing {

namespace {

namespace controls = host::controls;
using Answer = provider::ITestHooks::Answer;
using devices::FactoryCorrection;
using workbench::CorrectionsModel;

class Corrections : public OpenPage
{
protected:
    void SetUp() override { openPage(QStringLiteral("calibration"), "corrections-page"); }

    QAbstractItemModel& model() { return *onPage<QTableView>("corrections").model(); }

    bool isOn(int row) { return shown("corrections", row, CorrectionsModel::Enabled) == "on"; }
    bool canSwitch(int row) { return (model().flags(model().index(row, 0)) & Qt::ItemIsUserCheckable) != 0; }
    bool turn(int row, bool on)
    {
        return enter("corrections", row, CorrectionsModel::Name, on ? Qt::Checked : Qt::Unchecked, Qt::CheckStateRole);
    }
    int firstThat(const std::function<bool(int)>& is)
    {
        for (int row = 0; row < model().rowCount(); ++row)
            if (is(row))
                return row;
        throw std::logic_error("there is no such correction");
    }
};

} // namespace

TEST(CorrectionsModel, SwitchesOnlyWhatIsValidAndModifiableAndFollowsWhatIsTold)
{
    CorrectionsModel model;
    model.setCorrections({{FactoryCorrection::Correction1, false, true, true},
                          {FactoryCorrection::Correction2, true, false, true},
                          {FactoryCorrection::Correction3, true, true, false}});
    QSignalSpy switched(&model, &CorrectionsModel::switched);
    const auto turnOn = [&](int row) { return model.setData(model.index(row, 0), Qt::Checked, Qt::CheckStateRole); };
    const auto box = [&](int row) { return model.index(row, 0).data(Qt::CheckStateRole).toInt(); };
    EXPECT_TRUE(turnOn(0));
    EXPECT_FALSE(turnOn(1));
    EXPECT_FALSE(turnOn(2));
    ASSERT_EQ(switched.size(), 1);
    EXPECT_EQ(box(0), Qt::Unchecked);
    model.setEnabled(FactoryCorrection::Correction1, true);
    model.setEnabled(FactoryCorrection::Correction9, true); // which is not shown
    EXPECT_EQ(box(0), Qt::Checked);
}

TEST_F(Corrections, AreShownWithWhatMayBeDoneToThem)
{
    EXPECT_EQ(model().rowCount(), 10);
    for (int row = 0; row < model().rowCount(); ++row)
        EXPECT_EQ(canSwitch(row), shown("corrections", row, CorrectionsModel::Valid) == "yes"
                                      && shown("corrections", row, CorrectionsModel::Modifiable) == "yes");
}

TEST_F(Corrections, AreSwitchedByTheirBoxes)
{
    const int row = firstThat([this](int each) { return canSwitch(each); });
    const bool was = isOn(row);
    EXPECT_TRUE(turn(row, !was));
    waitUntil([&] { return isOn(row) == !was; });
    EXPECT_FALSE(turn(firstThat([this](int each) { return !canSwitch(each); }), true));
    EXPECT_EQ(fault(), "");
}

TEST_F(Corrections, FollowWhatTheInstrumentTells)
{
    const int row = firstThat([this](int each) { return canSwitch(each) && isOn(each); });
    simulated->simulated().setCorrectionValid(devices::toSdkCorrection(static_cast<FactoryCorrection>(row)), false);
    waitUntil([&] { return !isOn(row) && !canSwitch(row); });
    EXPECT_EQ(shown("corrections", row, CorrectionsModel::Valid), "no");
}

TEST_F(Corrections, FollowWhatTheInstrumentTellsBehindAnotherPanel)
{
    const int row = firstThat([this](int each) { return canSwitch(each); });
    EXPECT_TRUE(window->bringUp("overview"));
    simulated->simulated().setCorrectionValid(devices::toSdkCorrection(static_cast<FactoryCorrection>(row)), false);
    waitUntil([&] { return !canSwitch(row); });
}

TEST_F(Corrections, AreReadOnceMoreAfterWhatWasToldDuringAReading)
{
    int readings = 0;
    int told = 0;
    QObject::connect(&instrument, &workbench::Instrument::callChanged, window.get(), [&](const workbench::Call& call) {
        readings += call.what == "read the corrections" && call.state == workbench::Call::State::Done ? 1 : 0;
    });
    QObject::connect(&instrument, &workbench::Instrument::notified, window.get(), [&] { ++told; });
    CallUnderWay underWay(instrument);
    readAnew();
    EXPECT_TRUE(simulated->notify(controls::factoryCorrections.keys.sdk));
    waitUntil([&] { return told == 4; }); // switched there and back, each told twice
    underWay.end();
    waitUntilIdle();
    EXPECT_EQ(readings, 2);
}

TEST_F(Corrections, SayInASentenceWhatFailed)
{
    const int row = firstThat([this](int each) { return canSwitch(each); });
    const bool was = isOn(row);
    misbehave(controls::factoryCorrections, "setEnabled", Answer::Throwing);
    turn(row, !was);
    waitUntil([this] { return fault().startsWith("Could not switch "); });
    EXPECT_EQ(isOn(row), was);
    misbehave(controls::factoryCorrections, "supportedCorrections", Answer::Throwing);
    readAnew();
    waitUntil([this] { return fault().startsWith("Could not read the corrections: "); });
}

TEST_F(Corrections, AreReadAgainWhenTheControlsCameBack)
{
    const int row = firstThat([this](int each) { return canSwitch(each); });
    const bool was = isOn(row);
    releaseControls();
    EXPECT_TRUE(isAbsent(controls::factoryCorrections));
    offerControls();
    EXPECT_FALSE(isAbsent(controls::factoryCorrections));
    turn(row, !was);
    waitUntil([&] { return isOn(row) == !was; });
}

} // namespace tov::testing
