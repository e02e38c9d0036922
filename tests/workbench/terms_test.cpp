#include "openpage.h"
#include "workbench/models/curves.h"
#include "workbench/panels/plot.h"
#include "workbench/panels/termspage.h"

#include <QChart>
#include <QComboBox>
#include <QLineSeries>

#include <gmock/gmock.h>

namespace tov::testing {

namespace {

namespace controls = host::controls;
using Answer = provider::ITestHooks::Answer;
using ::testing::ElementsAre;

constexpr auto termsOfOnePort = R"({"time": "2026-01-31T12:00:00Z", "parameter": 1.5,
    "records": [{"key": 1, "value": 0.5, "number": 2}],
    "frequencies": [1e9, 2e9],
    "ports": [{"port": 1, "directivity": [[0.1, 0], [0, 0.01]], "source-match": [[1, 0], [10, 0]],
               "reflection-tracking": [[0, 0], [1, 0]]}]})";

class Terms : public OpenPage
{
protected:
    void SetUp() override { openPage(QStringLiteral("memory"), "terms-page"); }

    void openFile(const QByteArray& contents, const char* name = "terms.json")
    {
        find<workbench::TermsPage>("terms-page").openFile(file(name, contents));
        waitUntil([&] { return !fault().isEmpty() || textOf("terms-file").startsWith(name); });
    }
};

} // namespace

TEST(MagnitudesOfTerms, AreInDecibelsOverGigahertz)
{
    const auto sheets = workbench::magnitudesOf({.frequencies = {1e9, 2e9},
                                                 .ports = {{.port = 3,
                                                            .directivity = {0.1, {0.0, 0.01}},
                                                            .sourceMatch = {1.0, 10.0},
                                                            .reflectionTracking = {0.0, 1.0}}},
                                                 .portPairs = {}});
    ASSERT_EQ(sheets.size(), 1U); // that of the only port would be the same as that of all
    EXPECT_EQ(sheets[0].xTitle, "Frequency (GHz)");
    EXPECT_EQ(sheets[0].yTitle, "Magnitude (dB)");
    ASSERT_EQ(sheets[0].curves.size(), 3U);
    EXPECT_EQ(sheets[0].curves[0].name, "Port 3, directivity");
    EXPECT_THAT(sheets[0].curves[0].points, ElementsAre(QPointF(1, -20), QPointF(2, -40)));
    EXPECT_THAT(sheets[0].curves[1].points, ElementsAre(QPointF(1, 0), QPointF(2, 20)));
    EXPECT_THAT(sheets[0].curves[2].points, ElementsAre(QPointF(2, 0))) << "a zero has no place on the scale";
}

TEST(TableOfCurves, HasARowForEachX)
{
    const auto table = workbench::tableOf({.name = {},
                                           .xTitle = "x",
                                           .yTitle = {},
                                           .curves = {{"a", {{1, -20.00004}, {2, 5}}}, {"b", {{3, 7}, {1, 8}}}}});
    EXPECT_EQ(table.headings, QStringList({"x", "a", "b"}));
    EXPECT_THAT(table.rows,
                ElementsAre(QVariantList{1.0, -20.0, 8.0}, QVariantList{2.0, 5.0, {}}, QVariantList{3.0, {}, 7.0}));
}

TEST(MagnitudesOfTerms, HaveASheetForAllAndOneForEachPortAndPath)
{
    const auto sheets = workbench::magnitudesOf(
        {.frequencies = {1e9},
         .ports = {{.port = 1, .directivity = {1.0}, .sourceMatch = {}, .reflectionTracking = {}}},
         .portPairs = {{.sourcePort = 1,
                        .receiverPort = 2,
                        .loadMatch = {1.0},
                        .transmissionTracking = {1.0, 1.0}, // one more than there are frequencies
                        .isolation = {}}}});
    ASSERT_EQ(sheets.size(), 3U);
    EXPECT_EQ(sheets[0].name, "All terms");
    EXPECT_EQ(sheets[0].curves.size(), 6U);
    EXPECT_EQ(sheets[1].name, "Port 1");
    EXPECT_EQ(sheets[2].name, "Path 1 to 2");
    EXPECT_EQ(sheets[2].curves[1].points.size(), 1);
}

TEST_F(Terms, AreNotThereAtFirst)
{
    EXPECT_EQ(onPage<QTableView>("terms-records").model()->rowCount(), 0);
    EXPECT_EQ(textOf("terms-flag"), "The flag of the terms is off.");
    EXPECT_FALSE(onPage<QPushButton>("write-terms").isEnabled());
}

TEST_F(Terms, ArePlottedBeforeTheyAreWritten)
{
    openFile(termsOfOnePort);
    const auto* const plot = find<workbench::TermsPage>("terms-page").findChild<workbench::Plot*>();
    ASSERT_NE(plot, nullptr);
    EXPECT_TRUE(plot->isVisible());
    ASSERT_EQ(plot->chart()->series().size(), 3);
    EXPECT_EQ(plot->chart()->series().at(1)->name(), "Port 1, source match");
    EXPECT_FALSE(simulated->simulated().storedTerms().has_value());
}

TEST_F(Terms, AreWrittenWhenTheUserAgrees)
{
    openFile(termsOfOnePort);
    press("write-terms");
    answer("cancel");
    EXPECT_FALSE(simulated->simulated().storedTerms().has_value());
    press("write-terms");
    agree();
    ASSERT_TRUE(simulated->simulated().storedTerms().has_value());
    EXPECT_EQ(simulated->simulated().storedTerms()->parameter, 1.5);
    EXPECT_EQ(shown("terms-records", 0, 1), "0.5");
    EXPECT_EQ(textOf("terms-flag"), "The flag of the terms is on.");
}

TEST_F(Terms, AreThoseOfTheFileThatTheUserAgreedTo)
{
    openFile(termsOfOnePort);
    press("write-terms");
    openFile(QByteArray(termsOfOnePort).replace("1.5", "2.5"), "other.json");
    agree();
    ASSERT_TRUE(simulated->simulated().storedTerms().has_value());
    EXPECT_EQ(simulated->simulated().storedTerms()->parameter, 1.5);
}

TEST_F(Terms, AreATableToo)
{
    openFile(termsOfOnePort);
    const auto* const terms = onPage<QTableView>("file-terms").model();
    EXPECT_EQ(terms->headerData(0, Qt::Horizontal).toString(), "Frequency (GHz)");
    EXPECT_EQ(terms->headerData(3, Qt::Horizontal).toString(), "Port 1, reflection tracking");
    EXPECT_EQ(shown("file-terms", 1, 0), "2");
    EXPECT_EQ(shown("file-terms", 1, 1), "-40");
    EXPECT_EQ(shown("file-terms", 0, 3), "") << "a zero has no place on the scale";
    EXPECT_EQ(shown("file-records", 0, 1), "0.5");
    EXPECT_EQ(onPage<QTableView>("terms-records").model()->rowCount(), 0);
}

TEST_F(Terms, AreDatedInTheTimeOfThisPlace)
{
    const QDateTime time = QDateTime::fromString("2026-01-31T12:00:00Z", Qt::ISODate).toLocalTime();
    openFile(QByteArray(termsOfOnePort).replace("12:00:00Z", "15:30:00+03:30"));
    EXPECT_TRUE(textOf("terms-file").contains(QLocale().toString(time, QLocale::ShortFormat)))
        << textOf("terms-file").toStdString();
}

TEST_F(Terms, SayInASentenceWhatFailed)
{
    openFile("{}");
    EXPECT_TRUE(fault().startsWith("Could not read the file: ")) << fault().toStdString();
    EXPECT_FALSE(onPage<QPushButton>("write-terms").isEnabled());

    misbehave(controls::systemTerms, "writeSystemTerms", Answer::Throwing);
    openFile(termsOfOnePort);
    waitUntil([this] { return onPage<QPushButton>("write-terms").isEnabled(); });
    press("write-terms");
    agree();
    waitUntil([this] { return fault().startsWith("Could not write the system terms: "); });
}

TEST_F(Terms, AreReadAgainWhenTheControlsCameBack)
{
    releaseControls();
    EXPECT_TRUE(isAbsent(controls::systemTerms));
    offerControls();
    EXPECT_FALSE(isAbsent(controls::systemTerms));
    EXPECT_EQ(textOf("terms-flag"), "The flag of the terms is off.");
}

} // namespace tov::testing
