#include "openwindow.h"
#include "workbench/panels/panel.h"

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QFile>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QStackedWidget>
#include <QTemporaryDir>
#include <QTimer>

#include <gmock/gmock.h>

#include <algorithm>
#include <stdexcept>
#include <string>
#include <vector>

namespace tov::testing {

namespace {

namespace controls = host::controls;

class Tuning : public OpenWindow
{
protected:
    void SetUp() override { open(QStringLiteral("tuning")); }

    // Brings the page of a module to the front, and gives it when it is read.
    QWidget& page(const host::ControlName& module)
    {
        auto& names = find<QListWidget>("modules");
        const auto found = names.findItems(QString::fromUtf8(module.name), Qt::MatchExactly);
        EXPECT_EQ(found.size(), 1);
        names.setCurrentItem(found.first());
        auto& stack = find<QStackedWidget>("pages");
        waitUntil([&] { return stack.currentWidget()->isEnabled() && instrument.isIdle(); });
        return *stack.currentWidget();
    }

    // The editor of a setting, on a page.
    template <typename Editor>
    static Editor& editor(const QWidget& page, const char* setting)
    {
        auto* const found = page.findChild<QWidget*>(QString::fromLatin1(setting));
        if (found == nullptr)
            throw std::logic_error(std::string("no setting ") + setting);
        for (auto* const editor : found->findChildren<Editor*>())
            if (!editor->isHidden())
                return *editor;
        throw std::logic_error(std::string("no such editor of ") + setting);
    }

    static void type(QDoubleSpinBox& box, const QString& text)
    {
        box.setFocus();
        box.selectAll();
        QTest::keyClicks(&box, text);
        QTest::keyClick(&box, Qt::Key_Return);
    }

    // What the instrument has.
    template <typename Exposed, typename Getter>
    auto held(const host::Control<Exposed>& kind, Getter getter)
    {
        auto answer = instrument.call(kind, "look", [getter](Exposed& control) { return (control.*getter)(); });
        waitUntil([&] { return answer.isFinished(); });
        return answer.result();
    }

    QString fault() { return find<workbench::Panel>("tuning").fault(); }
};

using Answer = provider::ITestHooks::Answer;
using Ulk = devices::service::SdkUlkPowerControl;
using Leakage = devices::service::SdkLoLeakageControl;
using Wn0807 = devices::service::SdkWn0807PowerControl;

} // namespace

TEST_F(Tuning, WritesASettingWhenEditingEndsAndUndoesIt)
{
    const QWidget& ulk = page(controls::ulkPower);
    auto& power = editor<QDoubleSpinBox>(ulk, "lo-power");
    const auto before = held(controls::ulkPower, &Ulk::loPower);
    ASSERT_NE(before, 12);
    EXPECT_EQ(power.value(), before);
    EXPECT_FALSE(find<QAction>("undo").isEnabled());

    type(power, "12");
    waitUntil([&] { return find<QAction>("undo").isEnabled(); });
    EXPECT_EQ(held(controls::ulkPower, &Ulk::loPower), 12);

    find<QAction>("undo").trigger();
    EXPECT_EQ(held(controls::ulkPower, &Ulk::loPower), before);
    waitUntil([&] { return power.value() == before; });
    find<QAction>("redo").trigger();
    EXPECT_EQ(held(controls::ulkPower, &Ulk::loPower), 12);
    waitUntil([&] { return power.value() == 12; });
    EXPECT_EQ(fault(), "");
}

TEST_F(Tuning, WritesOnceThoughEditingEndsTwice)
{
    const QWidget& ulk = page(controls::ulkPower);
    int written = 0;
    QObject::connect(&instrument, &workbench::Instrument::callChanged, window.get(), [&](const workbench::Call& call) {
        if (call.state == workbench::Call::State::Waiting && call.what == "set lo-power of ulk-power to 12")
            ++written;
    });
    type(editor<QDoubleSpinBox>(ulk, "lo-power"), "12");
    editor<QDoubleSpinBox>(ulk, "rf-power").setFocus();
    waitUntil([&] { return find<QAction>("undo").isEnabled() && instrument.isIdle(); });
    EXPECT_EQ(written, 1);
}

TEST_F(Tuning, SwitchesByCheckBoxAndChoosesByList)
{
    auto& leakage = editor<QCheckBox>(page(controls::loLeakage), "lo-leakage");
    EXPECT_FALSE(leakage.isChecked());
    QTest::keyClick(&leakage, Qt::Key_Space);
    waitUntil([&] { return find<QAction>("undo").isEnabled(); });
    EXPECT_TRUE(held(controls::loLeakage, &Leakage::isEnabled));

    auto& mode = editor<QComboBox>(page(controls::wn0807Power), "dac-mode");
    EXPECT_EQ(mode.count(), 4);
    mode.setFocus();
    QTest::keyClick(&mode, Qt::Key_Down);
    waitUntil([&] { return instrument.isIdle(); });
    EXPECT_EQ(static_cast<int>(held(controls::wn0807Power, &Wn0807::dacMode)), 1);
}

TEST_F(Tuning, OffersWhatTheInstrumentTakes)
{
    const QWidget& ulk = page(controls::ulkPower);
    const auto& power = editor<QDoubleSpinBox>(ulk, "lo-power");
    EXPECT_EQ(power.minimum(), held(controls::ulkPower, &Ulk::minPowerCode));
    EXPECT_EQ(power.maximum(), held(controls::ulkPower, &Ulk::maxPowerCode));

    const auto& gain = editor<QComboBox>(page(controls::kz515Power), "reference-gain");
    std::vector<double> gains;
    for (int i = 0; i < gain.count(); ++i)
        gains.push_back(gain.itemData(i).toDouble());
    EXPECT_THAT(gains, ::testing::ElementsAre(0, 6, 12, 18));
}

TEST_F(Tuning, SaysWhatTheInstrumentDidNotTake)
{
    auto& attenuation = editor<QDoubleSpinBox>(page(controls::wn0807Power), "attenuation-db");
    type(attenuation, "10.3");
    waitUntil([&] { return !fault().isEmpty(); });
    EXPECT_EQ(fault(), "Could not set attenuation-db of wn0807-power to 10.3: the instrument did not take 10.3 for "
                       "attenuation-db but 10.25; it holds 0 as before.");
    waitUntil([&] { return attenuation.value() == 0; });
    EXPECT_FALSE(find<QAction>("undo").isEnabled());
}

TEST_F(Tuning, FollowsWhatElseChangesAModuleThatTells)
{
    const auto& power = editor<QDoubleSpinBox>(page(controls::ulkPower), "rf-power");
    instrument.call(controls::ulkPower, "set it elsewhere", [](auto& ulk) { ulk.setRfPower(7); });
    waitUntil([&] { return power.value() == 7; });
}

TEST_F(Tuning, ReadsWhatChangedWhileAnotherPanelWasInFront)
{
    const auto& power = editor<QDoubleSpinBox>(page(controls::ulkPower), "rf-power");
    bool isTold = false;
    QObject::connect(&instrument, &workbench::Instrument::notified, window.get(),
                     [&](const workbench::Notification& told) { isTold |= told.control == "ulk-power"; });
    EXPECT_TRUE(window->bringUp("overview"));
    instrument.call(controls::ulkPower, "set it elsewhere", [](auto& ulk) { ulk.setRfPower(7); });
    waitUntil([&] { return isTold; });
    const auto timers = find<workbench::Panel>("tuning").findChildren<QTimer*>(Qt::FindDirectChildrenOnly);
    waitUntil([&] { return std::ranges::none_of(timers, &QTimer::isActive); }); // what would be read is read
    EXPECT_TRUE(window->bringUp("tuning"));
    waitUntil([&] { return power.value() == 7; });
}

TEST_F(Tuning, DoesNotTakeAnAdapterWithoutItsControlForTheInstrument)
{
    const QWidget& ulk = page(controls::ulkPower);
    const auto& power = editor<QDoubleSpinBox>(ulk, "lo-power");
    const double before = power.value();
    ASSERT_NE(before, 0.0);
    CallUnderWay underWay(instrument);
    find<QAction>("refresh").trigger();
    settle(); // the control was there when that was asked for
    loseControls();
    underWay.end();
    waitUntil([&] { return instrument.isIdle() && !find<workbench::Panel>("tuning").isWaiting(); });
    EXPECT_EQ(fault(), "Could not read the settings of ulk-power: the instrument has no ulk-power control.");
    EXPECT_EQ(power.value(), before);
    EXPECT_FALSE(ulk.isEnabled());
}

TEST_F(Tuning, UndoesToWhatTheInstrumentHadAndNotToWhatItRefused)
{
    auto& attenuation = editor<QDoubleSpinBox>(page(controls::wn0807Power), "attenuation-db");
    CallUnderWay underWay(instrument);
    type(attenuation, "10.3"); // which is not taken
    type(attenuation, "12");
    underWay.end();
    waitUntil([&] { return find<QAction>("undo").isEnabled() && instrument.isIdle(); });
    EXPECT_EQ(held(controls::wn0807Power, &Wn0807::attenuationDb), 12);
    find<QAction>("undo").trigger();
    EXPECT_EQ(held(controls::wn0807Power, &Wn0807::attenuationDb), 0);
}

TEST_F(Tuning, UndoesNothingWhileAChangeWaits)
{
    auto& power = editor<QDoubleSpinBox>(page(controls::ulkPower), "lo-power");
    type(power, "12");
    waitUntil([&] { return find<QAction>("undo").isEnabled(); });
    CallUnderWay underWay(instrument);
    type(power, "13");
    EXPECT_FALSE(find<QAction>("undo").isEnabled());
    underWay.end();
    waitUntil([&] { return find<QAction>("undo").isEnabled(); });
    find<QAction>("undo").trigger();
    EXPECT_EQ(held(controls::ulkPower, &Ulk::loPower), 12);
}

TEST_F(Tuning, CanUndoAgainWhatCouldNotBeUndone)
{
    auto& power = editor<QDoubleSpinBox>(page(controls::ulkPower), "lo-power");
    const auto before = held(controls::ulkPower, &Ulk::loPower);
    type(power, "12");
    waitUntil([&] { return find<QAction>("undo").isEnabled(); });
    EXPECT_TRUE(simulated->setAnswer(controls::ulkPower.keys.sdk, "change", Answer::Throwing));
    find<QAction>("undo").trigger();
    waitUntil([&] { return !fault().isEmpty() && find<QAction>("undo").isEnabled(); });
    EXPECT_FALSE(find<QAction>("redo").isEnabled());
    EXPECT_EQ(held(controls::ulkPower, &Ulk::loPower), 12);

    EXPECT_TRUE(simulated->setAnswer(controls::ulkPower.keys.sdk, "change", Answer::AsUsual));
    find<QAction>("undo").trigger();
    EXPECT_EQ(held(controls::ulkPower, &Ulk::loPower), before);
    waitUntil([&] { return find<QAction>("redo").isEnabled(); });
    EXPECT_FALSE(find<QAction>("undo").isEnabled());
}

TEST_F(Tuning, UndoesByTheKeyboardInTheBoxThatWasEdited)
{
    auto& power = editor<QDoubleSpinBox>(page(controls::ulkPower), "lo-power");
    const double before = power.value();
    activate();
    type(power, "12");
    waitUntil([&] { return find<QAction>("undo").isEnabled() && instrument.isIdle(); });
    EXPECT_TRUE(power.hasFocus());
    QTest::keyClick(&power, Qt::Key_Z, Qt::ControlModifier);
    waitUntil([&] { return power.value() == before; });
}

TEST_F(Tuning, ReadsAnewWhenTheControlsComeBack)
{
    const auto& power = editor<QDoubleSpinBox>(page(controls::kz515Power), "lo-power");
    const double before = power.value();
    EXPECT_TRUE(simulated->releaseControls());
    waitUntil([&] { return !fault().isEmpty(); });
    EXPECT_FALSE(find<QStackedWidget>("pages").currentWidget()->isEnabled());
    EXPECT_TRUE(simulated->offerControls());
    waitUntil([&] { return find<QStackedWidget>("pages").currentWidget()->isEnabled(); });
    EXPECT_EQ(power.value(), before);
    EXPECT_EQ(fault(), "");
}

TEST_F(Tuning, ResetsAModule)
{
    QWidget& ulk = page(controls::ulkPower);
    const auto start = held(controls::ulkPower, &Ulk::loPower);
    auto& power = editor<QDoubleSpinBox>(ulk, "lo-power");
    type(power, "12");
    waitUntil([&] { return find<QAction>("undo").isEnabled(); });
    QTest::mouseClick(ulk.findChild<QPushButton*>("reset"), Qt::LeftButton);
    waitUntil([&] { return power.value() == start && !find<QAction>("undo").isEnabled(); });
    EXPECT_EQ(held(controls::ulkPower, &Ulk::loPower), start);
}

TEST_F(Tuning, LoadsATableFromAFile)
{
    const QTemporaryDir folder;
    QFile file(folder.filePath("codes.bin"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("abc");
    file.close();

    QStringList ended;
    QObject::connect(&instrument, &workbench::Instrument::callChanged, window.get(), [&](const workbench::Call& call) {
        if (call.state == workbench::Call::State::Done)
            ended.append(call.what);
    });
    QWidget& ulk = page(controls::ulkPower);
    const auto choose = [&](const QString& name) {
        QTest::mouseClick(ulk.findChild<QPushButton*>("load-lo-power-codes"), Qt::LeftButton);
        auto* const dialog = ulk.findChild<QFileDialog*>();
        ASSERT_NE(dialog, nullptr);
        Q_EMIT dialog->fileSelected(name);
        dialog->close();
    };
    choose(file.fileName());
    waitUntil([&] { return ended.contains("load lo-power-codes into ulk-power"); });
    EXPECT_EQ(fault(), "");
    choose(folder.filePath("none"));
    waitUntil([&] { return !fault().isEmpty(); });
    EXPECT_TRUE(fault().startsWith("Could not load lo-power-codes into ulk-power: " + folder.filePath("none")
                                   + " cannot be read: "))
        << fault().toStdString();
}

TEST_F(Tuning, IsReachedByTheKeyboard)
{
    EXPECT_TRUE(window->bringUp("overview"));
    activate();
    QTest::keyClick(window.get(), Qt::Key_2, Qt::ControlModifier);
    EXPECT_TRUE(find<workbench::Panel>("tuning").isVisible());
}

} // namespace tov::testing
