#include "openwindow.h"
#include "workbench/models/logmodel.h"
#include "workbench/panels/panel.h"

#include <QClipboard>
#include <QFile>
#include <QFileDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>
#include <QTemporaryDir>

namespace tov::testing {

namespace {

namespace controls = host::controls;
using workbench::LogModel;

class Log : public OpenWindow
{
protected:
    void SetUp() override { open(QStringLiteral("log")); }

    int lines() { return find<QTableView>("lines").model()->rowCount(); }
    QString shown(int row, LogModel::Column column)
    {
        return find<QTableView>("lines").model()->index(row, column).data().toString();
    }

    // The line that says this; -1: there is none.
    int lineOf(const QString& what)
    {
        for (int row = 0; row < lines(); ++row)
            if (shown(row, LogModel::What).startsWith(what))
                return row;
        return -1;
    }

    void press(const char* button) { QTest::mouseClick(&find<QPushButton>(button), Qt::LeftButton); }

    void call(const QString& what)
    {
        instrument.call(controls::serialNumber, what, [](auto& control) { return control.serialNumber(); });
        waitUntil([&] { return lineOf(what) >= 0 && shown(lineOf(what), LogModel::Outcome) == "done"; });
    }
};

} // namespace

TEST_F(Log, TellsOfEachCallWhoseItWasHowLongItTookAndWhatCameOfIt)
{
    call("read the serial number");
    const int row = lineOf("read the serial number");
    EXPECT_EQ(shown(row, LogModel::Control), "serial-number");
    EXPECT_FALSE(shown(row, LogModel::Thread).isEmpty());
    EXPECT_GT(shown(row, LogModel::Duration).toDouble(), 0);
    EXPECT_EQ(shown(lineOf("open the instrument"), LogModel::Outcome), "done");

    simulated->simulated().unfitControl(controls::usbId.keys.sdk);
    instrument.call(controls::usbId, "read the identifiers", [](auto& usbId) { return usbId.usbIds(); });
    waitUntil([&] {
        return shown(lineOf("read the identifiers"), LogModel::Outcome)
               == "failed: the instrument has no usb-id control";
    });
}

TEST_F(Log, TellsOfNotifications)
{
    EXPECT_TRUE(simulated->notify(controls::factoryCorrections.keys.sdk));
    waitUntil([this] { return lineOf("states") >= 0; });
    EXPECT_EQ(shown(lineOf("states"), LogModel::Control), "factory-corrections");
    EXPECT_EQ(shown(lineOf("states"), LogModel::Outcome), "notified");
    EXPECT_NE(shown(lineOf("states"), LogModel::Thread), "instrument") << "it is told on a thread of the instrument's";
}

TEST_F(Log, ShowsWhatContainsAText)
{
    call("read one thing");
    call("read another");
    const int all = lines();
    activate();
    QTest::keyClick(window.get(), Qt::Key_F, Qt::ControlModifier);
    EXPECT_EQ(window->focusWidget(), &find<QLineEdit>("filter"));
    QTest::keyClicks(&find<QLineEdit>("filter"), "ANOTHER");
    EXPECT_EQ(lines(), 1);
    EXPECT_EQ(shown(0, LogModel::What), "read another");
    find<QLineEdit>("filter").clear();
    EXPECT_EQ(lines(), all);
}

TEST_F(Log, CopiesWhatIsSelectedAndOtherwiseWhatIsShown)
{
    call("read one thing");
    call("read another");
    find<QTableView>("lines").selectRow(lineOf("read one thing"));
    press("copy");
    const QString one = QGuiApplication::clipboard()->text();
    EXPECT_EQ(one.count('\n'), 1);
    EXPECT_TRUE(one.contains("\tread one thing\t")) << one.toStdString();

    find<QTableView>("lines").clearSelection();
    press("copy");
    EXPECT_EQ(QGuiApplication::clipboard()->text().count('\n'), lines());
}

TEST_F(Log, SavesWhatIsShown)
{
    const QTemporaryDir folder;
    call("read one thing");
    QTest::keyClicks(&find<QLineEdit>("filter"), "one thing");
    const auto save = [&](const QString& name) {
        press("save");
        auto* const dialog = find<workbench::Panel>("log").findChild<QFileDialog*>();
        ASSERT_NE(dialog, nullptr);
        Q_EMIT dialog->fileSelected(folder.filePath(name));
        dialog->close();
    };
    save("log.tsv");
    const auto hasSaved = [&] { return !find<workbench::Panel>("log").isWaiting(); };
    waitUntil(hasSaved);
    QFile file(folder.filePath("log.tsv"));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QString saved = QString::fromUtf8(file.readAll());
    EXPECT_TRUE(saved.startsWith("Time\tThread\tControl\tWhat\tDuration (ms)\tOutcome\n")) << saved.toStdString();
    EXPECT_EQ(saved.count('\n'), 2);
    EXPECT_TRUE(saved.contains("\tserial-number\tread one thing\t"));

    save("no/log.tsv");
    waitUntil(hasSaved);
    EXPECT_TRUE(find<workbench::Panel>("log").fault().startsWith("Could not save the log: "));
}

TEST_F(Log, KeepsNoMoreLinesThanItsLimit)
{
    LogModel log;
    for (int i = 0; i <= LogModel::most; ++i)
        log.note(
            workbench::Notification{.time = {}, .thread = {}, .control = {}, .name = "told", .numbers = {1.0 * i}});
    EXPECT_EQ(log.rowCount(), LogModel::most);
    EXPECT_EQ(log.index(0, LogModel::What).data().toString(), "told 1");
}

} // namespace tov::testing
