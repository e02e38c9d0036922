#include "openpage.h"
#include "workbench/models/calibrationdata.h"
#include "workbench/panels/calibrationpage.h"
#include "workbench/panels/noticebar.h"
#include "workbench/panels/plot.h"

#include <QAreaSeries>
#include <QChart>
#include <QComboBox>
#include <QProgressBar>

#include <gmock/gmock.h>

namespace tov::testing {

namespace {

namespace controls = host::controls;
using Answer = provider::ITestHooks::Answer;
using ::testing::ElementsAre;
using workbench::PlotBand;

constexpr auto ifswFile = "vector,value1,value2,value3\n1,1e9,,\n1,2e9,,\n2,0.5,-0.25,1\n7,1,2,3\n7,4,5,6\n";
constexpr auto powerFile = "time,2026-01-31T12:00:00Z\nparameter,1.5\n"
                           "value1,value2,value3,value4,value5,value6,value7,value8,value9\n"
                           "1e9,-10.5,0.25,1,0,20,3,0.5,0.125\n2e9,-11.5,0.5,2,0,21,4,0.25,0.5\n";

class Calibration : public OpenPage
{
protected:
    void openFile(const char* page, const QByteArray& contents, const char* name = "data.csv")
    {
        find<workbench::CalibrationPage>(page).openFile(file(name, contents));
        waitUntil([&] { return !fault().isEmpty() || textOf("calibration-file").startsWith(name); });
    }
};

} // namespace

TEST(CalibrationPlan, IsATableAndBandsAsHighAsTheyHavePoints)
{
    const std::vector<workbench::PlanSegment> plan = {{.start = 1e9, .stop = 2e9, .points = 11}, {3e9, 4e9, 5}};
    EXPECT_THAT(workbench::rowsOf(plan), ElementsAre(QVariantList{1e9, 2e9, 11}, QVariantList{3e9, 4e9, 5}));
    EXPECT_THAT(workbench::bandsOf(plan), ElementsAre(PlotBand{1, 2, 11}, PlotBand{3, 4, 5}));
}

TEST(CalibrationSheets, ShowEachListOfIfswDataAgainstThePlaceInIt)
{
    const auto sheets = workbench::sheetsOf({.values = {8, 9},
                                             .groups = {{{.first = {}, .second = {{1, 2, 3}}},
                                                         {.first = {}, .second = {}},
                                                         {.first = {}, .second = {{4, 5, 6}, {7, 8, 9}}}}}});
    ASSERT_EQ(sheets.size(), 3U); // empty lists have none
    EXPECT_EQ(sheets[0].name, "Vector 1");
    EXPECT_THAT(sheets[0].curves.at(0).points, ElementsAre(QPointF(1, 8), QPointF(2, 9)));
    EXPECT_EQ(sheets[1].name, "Vector 3");
    EXPECT_EQ(sheets[2].name, "Vector 7");
    ASSERT_EQ(sheets[2].curves.size(), 3U);
    EXPECT_THAT(sheets[2].curves[1].points, ElementsAre(QPointF(1, 5), QPointF(2, 8)));
}

TEST(CalibrationSheets, ShowEachValueOfPowerPointsAgainstTheFirst)
{
    const auto sheets = workbench::sheetsOf(
        {.time = {}, .parameter = 0.0, .points = {{10, 2, 3, 4, 5, 6, 7, 8, 9}, {20, 12, 13, 14, 15, 16, 17, 18, 19}}});
    ASSERT_EQ(sheets.size(), 8U);
    EXPECT_EQ(sheets[0].name, "Value 2");
    EXPECT_THAT(sheets[0].curves.at(0).points, ElementsAre(QPointF(10, 2), QPointF(20, 12)));
    EXPECT_EQ(sheets[7].name, "Value 9");
    EXPECT_THAT(sheets[7].curves.at(0).points, ElementsAre(QPointF(10, 9), QPointF(20, 19)));
}

TEST_F(Calibration, ShowsThePlanAsATableAndAsBands)
{
    openPage(QStringLiteral("calibration"), "ifsw-page");
    EXPECT_EQ(onPage<QTableView>("plan").model()->rowCount(), 3);
    EXPECT_EQ(shown("plan", 0, 0), "10000000");
    int bands = 0;
    for (const auto* const plot : find<workbench::Page>("ifsw-page").findChildren<workbench::Plot*>())
        for (auto* const series : plot->chart()->series())
            bands += qobject_cast<QAreaSeries*>(series) != nullptr ? 1 : 0;
    EXPECT_EQ(bands, 3);
}

TEST_F(Calibration, SavesIfswDataAfterTheyWereLookedAt)
{
    openPage(QStringLiteral("calibration"), "ifsw-page");
    EXPECT_FALSE(onPage<QPushButton>("save-calibration").isEnabled());
    openFile("ifsw-page", ifswFile);
    EXPECT_EQ(textOf("calibration-file"), "data.csv: 5 records");
    EXPECT_EQ(onPage<QComboBox>("sheets").count(), 3);
    press("save-calibration");
    answer("cancel");
    EXPECT_FALSE(simulated->simulated().storedIfswCalibration().has_value());
    press("save-calibration");
    agree();
    ASSERT_TRUE(simulated->simulated().storedIfswCalibration().has_value());
    waitUntil([this] { return textOf("calibration-told").contains("second-event"); });
    EXPECT_EQ(fault(), "");
}

TEST_F(Calibration, SavesTheFileThatTheUserAgreedTo)
{
    openPage(QStringLiteral("calibration"), "ifsw-page");
    openFile("ifsw-page", ifswFile);
    press("save-calibration");
    openFile("ifsw-page", "vector,value1,value2,value3\n1,3e9,,\n", "other.csv");
    EXPECT_EQ(onPage<workbench::NoticeBar>("question").sentence(),
              "Replace the calibration data of the instrument by those of data.csv?");
    agree();
    ASSERT_TRUE(simulated->simulated().storedIfswCalibration().has_value());
    EXPECT_THAT(simulated->simulated().storedIfswCalibration()->data.values, ElementsAre(1e9, 2e9));
    EXPECT_EQ(textOf("calibration-file"), "other.csv: 1 records") << "it was not saved";
}

TEST_F(Calibration, IsNotSavedByAnAdapterWithoutItsControl)
{
    openPage(QStringLiteral("calibration"), "ifsw-page");
    openFile("ifsw-page", ifswFile);
    CallUnderWay underWay(instrument);
    press("save-calibration");
    answer("confirm");
    settle(); // the control was there when that was asked for
    loseControls();
    underWay.end();
    waitUntilIdle();
    EXPECT_EQ(fault(), "Could not save the calibration data: the instrument has no ifsw-calibration control.");
    EXPECT_EQ(textOf("calibration-file"), "data.csv: 5 records");
}

TEST_F(Calibration, SavesFactoryPowerData)
{
    openPage(QStringLiteral("calibration"), "factory-power-page");
    openFile("factory-power-page", powerFile);
    EXPECT_TRUE(textOf("calibration-file").startsWith("data.csv: 2 points, measured "));
    press("save-calibration");
    agree();
    ASSERT_TRUE(simulated->simulated().storedFactoryPowerCalibration().has_value());
    EXPECT_EQ(simulated->simulated().storedFactoryPowerCalibration()->points.size(), 2U);
}

TEST_F(Calibration, SaysInASentenceWhatFailed)
{
    openPage(QStringLiteral("calibration"), "factory-power-page");
    openFile("factory-power-page", "time,yesterday\n");
    EXPECT_TRUE(fault().startsWith("Could not read the file: ")) << fault().toStdString();

    misbehave(controls::factoryPowerCalibration, "saveCalibrationData", Answer::Throwing);
    openFile("factory-power-page", powerFile);
    waitUntil([this] { return onPage<QPushButton>("save-calibration").isEnabled(); });
    press("save-calibration");
    agree();
    waitUntil([this] { return fault().startsWith("Could not save the calibration data: "); });
    EXPECT_TRUE(onPage<QPushButton>("save-calibration").isEnabled());

    misbehave(controls::factoryPowerCalibration, "frequencyPlan", Answer::Throwing);
    readAnew();
    waitUntil([this] { return fault().startsWith("Could not read the frequency plan: "); });
}

TEST_F(Calibration, IsReadAgainWhenTheControlsCameBack)
{
    openPage(QStringLiteral("calibration"), "ifsw-page");
    releaseControls();
    EXPECT_TRUE(isAbsent(controls::ifswCalibration));
    offerControls();
    EXPECT_FALSE(isAbsent(controls::ifswCalibration));
    EXPECT_EQ(onPage<QTableView>("plan").model()->rowCount(), 3);
    bringUp(QStringLiteral("calibration"), "factory-power-page");
    EXPECT_EQ(onPage<QTableView>("plan").model()->rowCount(), 3);
}

TEST_F(Calibration, FollowsTheSavesOfBothControllers)
{
    openPage(QStringLiteral("calibration"), "controllers-page");
    const auto in = [this](const host::ControlName& kind) { return &onPage<QWidget>(kind.name.data()); };
    auto* const first = in(controls::calibrationController1)->findChild<QProgressBar*>("save");
    auto* const second = in(controls::calibrationController2)->findChild<QProgressBar*>("save");
    simulated->simulated().calibrationUnit(controls::calibrationController2.keys.sdk).beginSave(1000);
    waitUntil([&] { return second->value() == 100; });
    EXPECT_EQ(first->value(), 0);

    auto* const unit = in(controls::calibrationController1)->findChild<QLabel*>("unit");
    QTest::mouseClick(in(controls::calibrationController1)->findChild<QPushButton*>("try"), Qt::LeftButton);
    waitUntil([&] { return first->value() == 100; });
    EXPECT_TRUE(unit->text().startsWith("changed at ")) << unit->text().toStdString();

    releaseControls();
    EXPECT_TRUE(isAbsent(controls::calibrationController1));
    offerControls();
    simulated->simulated().calibrationUnit(controls::calibrationController2.keys.sdk).beginSave(0);
    waitUntil([&] { return second->value() == 0; });
}

} // namespace tov::testing
