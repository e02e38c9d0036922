#include "tools/files/calibrationfiles.h"

#include <QFile>
#include <QTemporaryDir>

#include <gmock/gmock.h>

#include <chrono>

namespace tov::testing {

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

class CalibrationFiles : public ::testing::Test
{
protected:
    QTemporaryDir folder;

    std::string write(const QByteArray& contents)
    {
        QFile file(folder.filePath("data.csv"));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(contents);
        return file.fileName().toStdString();
    }
};

} // namespace

TEST_F(CalibrationFiles, HoldSevenVectorsOfIfswData)
{
    const auto data =
        tools::readIfswFile(write("# measured by hand\nvector, value1,value2,value3\r\n\n1,1e9,,\n1,2e9,,\n"
                                  "2,0.5,-0.25,1\n3,30,31,32\n4,40,0,0\n5,50,0,0\n6,60,0,0\n"
                                  "7,1,2,3e-300\n2,0.75,-4,0\n"));
    EXPECT_THAT(data.values, ElementsAre(1e9, 2e9));
    ASSERT_THAT(data.groups[0].first, SizeIs(2));
    EXPECT_EQ(data.groups[0].first[0].value1, 0.5);
    EXPECT_EQ(data.groups[0].first[0].value2, -0.25);
    EXPECT_EQ(data.groups[0].first[0].value3, 1.0);
    EXPECT_EQ(data.groups[0].first[1].value2, -4.0);
    ASSERT_THAT(data.groups[0].second, SizeIs(1));
    EXPECT_EQ(data.groups[0].second[0].value3, 32.0);
    ASSERT_THAT(data.groups[1].first, SizeIs(1));
    EXPECT_EQ(data.groups[1].first[0].value1, 40.0);
    ASSERT_THAT(data.groups[1].second, SizeIs(1));
    EXPECT_EQ(data.groups[1].second[0].value1, 50.0);
    ASSERT_THAT(data.groups[2].first, SizeIs(1));
    EXPECT_EQ(data.groups[2].first[0].value1, 60.0);
    ASSERT_THAT(data.groups[2].second, SizeIs(1));
    EXPECT_EQ(data.groups[2].second[0].value3, 3e-300);
}

TEST_F(CalibrationFiles, MayBeginAsSpreadsheetProgramsWriteThem)
{
    EXPECT_THAT(tools::readIfswFile(write("\xEF\xBB\xBFvector,value1,value2,value3\r\n1,5,,\r\n")).values,
                ElementsAre(5.0));
}

TEST_F(CalibrationFiles, MayHoldOneValueOnly)
{
    const auto data = tools::readIfswFile(write("vector,value1,value2,value3\n1,5,,"));
    EXPECT_THAT(data.values, ElementsAre(5));
    EXPECT_THAT(data.groups[0].first, IsEmpty());
}

TEST_F(CalibrationFiles, HoldPowerPointsWithTheirTime)
{
    const auto file = tools::readPowerFile(write("time,2026-01-31T13:00:00+01:00\nparameter,1.5\n"
                                                 "value1,value2,value3,value4,value5,value6,value7,value8,value9\n"
                                                 "1e9,-10.5,0.25,1,0,20,0xFF,0.5,0.125\n2e9,0,0,0,0,0,0,0,0\n"));
    EXPECT_EQ(file.time.time_since_epoch(), std::chrono::seconds(1'769'860'800));
    EXPECT_EQ(file.parameter, 1.5);
    ASSERT_THAT(file.points, SizeIs(2));
    const auto& point = file.points[0];
    EXPECT_EQ(point.value1, 1e9);
    EXPECT_EQ(point.value2, -10.5F);
    EXPECT_EQ(point.value3, 0.25F);
    EXPECT_EQ(point.value4, 1);
    EXPECT_EQ(point.value5, 0);
    EXPECT_EQ(point.value6, 20.0F);
    EXPECT_EQ(point.value7, 255);
    EXPECT_EQ(point.value8, 0.5F);
    EXPECT_EQ(point.value9, 0.125F);
    EXPECT_EQ(file.points[1].value1, 2e9);
}

} // namespace tov::testing
