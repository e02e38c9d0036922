#include "openwindow.h"
#include "workbench/models/temperaturesmodel.h"
#include "workbench/panels/panel.h"
#include "workbench/panels/plot.h"

#include <QAction>
#include <QChart>
#include <QCheckBox>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QElapsedTimer>
#include <QFile>
#include <QFileDialog>
#include <QImage>
#include <QLabel>
#include <QLineSeries>
#include <QMenu>
#include <QPushButton>
#include <QTableView>
#include <QTemporaryDir>

namespace tov::testing {

namespace {

namespace controls = host::controls;
using workbench::TemperaturesModel;

constexpr auto table = "temperatures-table";

class Temperatures : public OpenWindow
{
protected:
    void SetUp() override
    {
        m_opened.start();
        open(QStringLiteral("overview"));
        find<QCheckBox>("keeps-up").setChecked(false); // so that nothing comes but what the test wants
        EXPECT_TRUE(window->bringUp("temperatures"));
        waitUntil([this] { return rows() > 0 && instrument.isIdle() && !panel().isWaiting(); });
    }

    int rows() { return find<QTableView>(table).model()->rowCount(); }
    QString shown(int row, int column)
    {
        const auto* const model = find<QTableView>(table).model();
        return model->index(row, column).data().toString();
    }
    double now(int row) { return shown(row, TemperaturesModel::Latest).toDouble(); }
    workbench::Panel& panel() { return find<workbench::Panel>("temperatures"); }
    QString fault() { return panel().fault(); }
    QList<QPointF> curve(int number)
    {
        auto* const series = find<workbench::Plot>("temperatures-plot").chart()->series().at(number);
        return qobject_cast<QLineSeries*>(series)->points();
    }

    void pass(int choice)
    {
        find<QPushButton>("pass").menu()->actions().at(choice)->trigger();
        waitUntil([this] { return find<QPushButton>("pass").isEnabled(); });
    }

    QString save(const char* button, const char* name)
    {
        const QString path = m_folder.filePath(QString::fromLatin1(name));
        QTest::mouseClick(&find<QPushButton>(button), Qt::LeftButton);
        auto* const dialog = window->findChild<QFileDialog*>();
        EXPECT_NE(dialog, nullptr);
        dialog->selectFile(path);
        QMetaObject::invokeMethod(dialog, "accept");
        return path;
    }

    // What passes on the wall passes for the readings too.
    double onTheWall() const { return static_cast<double>(m_opened.elapsed()); }

private:
    QElapsedTimer m_opened;
    QTemporaryDir m_folder;
};

} // namespace

TEST_F(Temperatures, AreThoseOfTheInstrumentAndOfItsModules)
{
    EXPECT_EQ(rows(), 10);
    EXPECT_EQ(shown(0, TemperaturesModel::Name), "overall");
    EXPECT_EQ(shown(1, TemperaturesModel::Name), "Digital board");
    EXPECT_EQ(now(0), 23.0);
}

TEST_F(Temperatures, ComeWhenTheInstrumentTellsOfThem)
{
    simulated->simulated().passTime(std::chrono::minutes(10));
    waitUntil([this] { return now(0) > 40.0; });
    EXPECT_EQ(fault(), "");
}

TEST_F(Temperatures, AreRecordedSecondBySecondWhenTimePassesAtOnce)
{
    pass(2); // ten minutes
    waitUntil([this] { return now(0) > 40.0; });
    find<QComboBox>("span").setCurrentIndex(3); // all
    const auto points = curve(0);
    ASSERT_GT(points.size(), 200);
    const double span = points.last().x() - points.first().x();
    EXPECT_GT(span, 540'000);
    EXPECT_LT(span, 601'000 + onTheWall());
    EXPECT_EQ(points.first().y(), 23.0);
}

TEST_F(Temperatures, AreShownOverTheSpanThatIsChosen)
{
    pass(2);
    waitUntil([this] { return now(0) > 40.0; });
    find<QComboBox>("span").setCurrentIndex(0); // a minute
    const auto ofAMinute = curve(0).size();
    EXPECT_GT(ofAMinute, 10);
    EXPECT_LT(ofAMinute, 70);
    find<QComboBox>("span").setCurrentIndex(1); // ten
    EXPECT_GT(curve(0).size(), ofAMinute);
}

TEST_F(Temperatures, KeepUpWithTheClockWhileThePanelIsInFront)
{
    find<QCheckBox>("keeps-up").setChecked(true);
    waitUntil([this] { return now(0) > 23.0; });
    EXPECT_EQ(fault(), "");
}

TEST_F(Temperatures, AboveTheLimitAreNamedAndTheLimitIsALine)
{
    find<QDoubleSpinBox>("limit").setValue(40.0);
    EXPECT_EQ(shown(0, TemperaturesModel::State), "within");
    simulated->simulated().passTime(std::chrono::minutes(10));
    waitUntil([this] { return shown(0, TemperaturesModel::State).startsWith("▲ too warm by "); });
    const auto hasLevel = [this] {
        for (auto* const series : find<workbench::Plot>("temperatures-plot").chart()->series())
            if (series->name() == "limit 40")
                return true;
        return false;
    };
    waitUntil(hasLevel);
}

TEST_F(Temperatures, AreSavedAsTextAndAsAPicture)
{
    const QString readings = save("save-readings", "readings.csv");
    waitUntil([&] { return QFile::exists(readings) && QFile(readings).size() > 0; });
    QFile file(readings);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_TRUE(file.readLine().startsWith("time,overall,Digital board,"));
    delete window->findChild<QFileDialog*>();

    const QString picture = save("save-picture", "picture.png");
    waitUntil([&] { return !QImage(picture).isNull(); });
    EXPECT_EQ(QImage(picture).size(), find<workbench::Plot>("temperatures-plot").size());
    EXPECT_EQ(fault(), "");
}

TEST_F(Temperatures, GoOnWhenTheControlsCameBack)
{
    const auto isAbsent = [this] {
        return find<QWidget>(controls::temperature.name.data()).findChild<QLabel*>("absent")->isVisible();
    };
    EXPECT_TRUE(simulated->releaseControls());
    waitUntil(isAbsent);
    EXPECT_TRUE(simulated->offerControls());
    waitUntil([&] { return !isAbsent(); });
    simulated->simulated().passTime(std::chrono::minutes(10));
    waitUntil([this] { return now(0) > 40.0; });
    EXPECT_EQ(fault(), "");
}

TEST_F(Temperatures, AreRecordedBehindOtherPanelsAndTellNobodyWhenTheWindowIsGone)
{
    EXPECT_TRUE(window->bringUp("overview"));
    simulated->simulated().passTime(std::chrono::minutes(10));
    waitUntil([this] { return now(0) > 40.0; });
    window.reset();
    simulated->simulated().passTime(std::chrono::minutes(10));
    simulated->simulated().waitUntilQuiet();
    QCoreApplication::processEvents();
    EXPECT_EQ(instrument.state(), workbench::Instrument::State::Open);
}

} // namespace tov::testing
