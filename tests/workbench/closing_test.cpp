#include "eventtimes.h"
#include "silentinstrument.h"
#include "workbench/panels/noticebar.h"
#include "workbench/panels/panel.h"
#include "workbench/running.h"

#include <QApplication>
#include <QLabel>
#include <QPushButton>
#include <QSignalSpy>
#include <QTimer>

#include <chrono>
#include <mutex>
#include <thread>

namespace tov::testing {

namespace {

namespace controls = host::controls;
using namespace std::chrono_literals;

const auto question = QStringLiteral("read the serial number");

class AskingPanel final : public workbench::Panel
{
public:
    using Panel::Panel;

    void refresh() override
    {
        ask(
            controls::serialNumber, question, [](auto& control) { return control.serialNumber(); },
            [this](const auto& /*answer*/) { ++answers; });
    }

    int answers = 0;
};

class SilentInstrument : public OpenWindow
{
protected:
    void SetUp() override
    {
        auto connection = std::make_unique<SilentConnection>(serialNumber);
        connection->duringLookup([lookups = lookups] { const std::lock_guard guard(*lookups); });
        open(opens(std::move(connection)), QStringLiteral("overview"));
        waitUntil([this] { return instrument.isIdle(); });
    }

    // Who waits at the end waits for an answer.
    ~SilentInstrument() override { serialNumber->answer(); }

    auto ask(const QString& what = question)
    {
        return instrument.call(controls::serialNumber, what, [](auto& control) { return control.serialNumber(); });
    }

    // Until the instrument has the call.
    void awaitCall()
    {
        waitUntil([this] { return serialNumber->asked() == 1; });
        waitUntil([this] { return find<QLabel>("call").text().startsWith(question); });
    }

    QString notice() { return find<workbench::NoticeBar>("notice").sentence(); }
    void press(const char* button) { QTest::mouseClick(&find<QPushButton>(button), Qt::LeftButton); }

    std::shared_ptr<std::mutex> lookups = std::make_shared<std::mutex>(); // who holds it holds up every lookup
    std::shared_ptr<SilentSerialNumber> serialNumber = std::make_shared<SilentSerialNumber>();
};

} // namespace

TEST_F(SilentInstrument, LeavesTheWindowFreeUntilItAnswers)
{
    auto& application = TimingApplication::instance();
    application.startAnew();
    const auto answer = ask();
    awaitCall();
    waitUntil([&] { return find<QLabel>("call").text().startsWith(question + ", for "); });
    EXPECT_TRUE(window->bringUp("tuning"));
    EXPECT_TRUE(window->bringUp("log"));
    EXPECT_FALSE(answer.isFinished()) << "otherwise nothing was waited for";
    serialNumber->answer();
    waitUntil([&] { return answer.isFinished(); });
    EXPECT_EQ(answer.result(), 4711U);
    EXPECT_LT(application.longestWork(), 50ms);
    EXPECT_LT(application.longest(), 1s) << "so long the instrument was silent at least";
    EXPECT_GT(application.events(), 10);
}

TEST_F(SilentInstrument, LeavesTheWindowFreeThoughItNeverAnswers)
{
    auto& application = TimingApplication::instance();
    application.startAnew();
    const auto answer = ask();
    awaitCall();
    waitUntil([&] { return find<QLabel>("call").text().startsWith(question + ", for "); });
    window->close();
    EXPECT_EQ(notice(), "Still waiting to read the serial number. The window closes when that is done.");
    EXPECT_LT(application.longestWork(), 50ms);
    EXPECT_LT(application.longest(), 1s) << "so long the instrument was silent at least";
    EXPECT_FALSE(answer.isFinished());
}

TEST_F(SilentInstrument, IsTakenBackWhatHasNotBegunWhenTheWindowCloses)
{
    const auto first = ask();
    const auto second = ask(QStringLiteral("read it again"));
    awaitCall();
    EXPECT_FALSE(window->close());
    EXPECT_TRUE(second.isCanceled());
    EXPECT_TRUE(second.isFinished());
    EXPECT_FALSE(first.isCanceled());
    EXPECT_TRUE(window->isVisible());
    serialNumber->answer();
    waitUntil([this] { return !window->isVisible(); });
    EXPECT_EQ(instrument.state(), workbench::Instrument::State::Closed);
    EXPECT_EQ(serialNumber->asked(), 0U) << "the second call was made";
}

TEST_F(SilentInstrument, IsWaitedForIfTheUserStays)
{
    const auto answer = ask();
    awaitCall();
    window->close();
    press("go-on");
    waitUntil([this] { return notice().isEmpty(); });
    serialNumber->answer();
    waitUntil([&] { return answer.isFinished() && instrument.isIdle(); });
    EXPECT_TRUE(window->isVisible());
    EXPECT_EQ(instrument.state(), workbench::Instrument::State::Open);
}

TEST_F(SilentInstrument, IsLeftWithoutTheAnswer)
{
    const QSignalSpy left(window.get(), &workbench::MainWindow::left);
    ask();
    awaitCall();
    window->close();
    QSettings().clear();
    press("leave");
    waitUntil([&] { return !left.isEmpty(); });
    EXPECT_TRUE(QSettings().contains("window/geometry"));
}

TEST_F(SilentInstrument, IsNamedByThePanelThatWaitsForIt)
{
    AskingPanel panel(instrument);
    panel.show();
    waitUntil([&] { return panel.findChild<QLabel*>("waiting")->isVisible(); });
    EXPECT_EQ(panel.findChild<QLabel*>("waiting")->text(), "Waiting to read the serial number");
    serialNumber->answer();
    waitUntil([&] { return panel.answers == 1; });
    EXPECT_FALSE(panel.findChild<QLabel*>("waiting")->isVisible());
    EXPECT_EQ(panel.fault(), "");
}

TEST_F(SilentInstrument, AnswersNobodyWhenThePanelIsGone)
{
    auto panel = std::make_unique<AskingPanel>(instrument);
    panel->show();
    awaitCall();
    panel.reset();
    serialNumber->answer();
    waitUntil([this] { return instrument.isIdle(); });
}

TEST_F(SilentInstrument, IsLeftAlsoWhenItHoldsUpWhatIsNoCall)
{
    const QSignalSpy left(window.get(), &workbench::MainWindow::left);
    std::unique_lock held(*lookups);
    instrument.lookForControls();
    window->close();
    waitUntil([this] { return !notice().isEmpty(); });
    EXPECT_EQ(notice(), "Still waiting to close the instrument. The window closes when that is done.");
    press("leave");
    waitUntil([&] { return !left.isEmpty(); });
    EXPECT_FALSE(instrument.isIdle()) << "what ends the program would wait";
    held.unlock();
    waitUntil([this] { return !window->isVisible(); });
}

TEST_F(SilentInstrument, ClosesAtOnceWhenNothingWaits)
{
    window->close();
    waitUntil([this] { return !window->isVisible(); });
    EXPECT_EQ(instrument.state(), workbench::Instrument::State::Closed);
}

namespace {

// What main() does; in a process of its own, because it ends that.
int leaveWhatNeverOpens()
{
    QTimer::singleShot(0, qApp, [] {
        for (QWidget* const widget : QApplication::topLevelWidgets())
            if (auto* const window = qobject_cast<workbench::MainWindow*>(widget)) {
                const auto* const call = window->findChild<QLabel*>("call");
                waitUntil([&] { return call->text().startsWith("open the instrument"); });
                window->close();
                QTest::mouseClick(window->findChild<QPushButton*>("leave"), Qt::LeftButton);
            }
    });
    return workbench::runWindow([]() -> provider::Result<workbench::Opened> {
        std::this_thread::sleep_for(24h);
        return std::unexpected(QStringLiteral("too late"));
    });
}

} // namespace

TEST(LeavingDeathTest, EndsTheProgramWithStatus0ThoughACallNeverReturns)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(std::exit(10 + leaveWhatNeverOpens()), ::testing::ExitedWithCode(0), "");
}

TEST(NotOpened, SaysWhyAndTriesAgain)
{
    workbench::Instrument instrument;
    int attempts = 0;
    workbench::MainWindow window(instrument, [&]() -> provider::Result<workbench::Opened> {
        ++attempts;
        return std::unexpected(QStringLiteral("nobody answers at COM%1").arg(attempts));
    });
    window.show();
    const auto* const notice = window.findChild<workbench::NoticeBar*>("notice");
    waitUntil([&] { return notice->sentence() == "The instrument could not be opened: nobody answers at COM1."; });
    QTest::mouseClick(window.findChild<QPushButton*>("again"), Qt::LeftButton);
    waitUntil([&] { return notice->sentence() == "The instrument could not be opened: nobody answers at COM2."; });
    window.close();
    waitUntil([&] { return !window.isVisible(); });
}

} // namespace tov::testing
