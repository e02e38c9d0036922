#include "workbench/models/temperaturehistory.h"
#include "workbench/models/temperaturesmodel.h"

#include <QFont>
#include <QSignalSpy>

#include <gmock/gmock.h>

namespace tov::testing {

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using workbench::TemperatureHistory;
using workbench::TemperatureReading;
using workbench::TemperaturesModel;

QDateTime at(qint64 seconds)
{
    return QDateTime::fromMSecsSinceEpoch(seconds * 1000, Qt::UTC);
}

TemperatureReading reading(qint64 seconds, double overall, double front)
{
    return {.time = at(seconds), .overall = overall, .modules = {{.name = "Front", .temperature = front}}};
}

} // namespace

TEST(TemperatureHistory, HasAPlaceForTheOverallTemperatureAndOneForEachModule)
{
    TemperatureHistory history;
    EXPECT_THAT(history.names(), IsEmpty());
    EXPECT_FALSE(history.end().isValid());
    history.add(reading(1, 20, 30));
    history.add({.time = at(2), .overall = 21, .modules = {{.name = "Back", .temperature = 25}}});
    EXPECT_THAT(history.names(), ElementsAre("overall", "Front", "Back"));
    EXPECT_EQ(history.latest(0), 21);
    EXPECT_EQ(history.latest(1), std::nullopt); // the last reading had none
    EXPECT_EQ(history.highest(1), 30);
    EXPECT_EQ(history.latest(2), 25);
    EXPECT_EQ(history.begin(), at(1));
    EXPECT_EQ(history.end(), at(2));
}

TEST(TemperatureHistory, GivesCurvesFromThePointBeforeTheirBegin)
{
    TemperatureHistory history;
    for (int second = 0; second < 5; ++second)
        history.add(reading(second, second, 30));
    EXPECT_THAT(history.curve(0, at(3), 100).points, ElementsAre(QPointF(2000, 2), QPointF(3000, 3), QPointF(4000, 4)));
    EXPECT_EQ(history.curve(0, at(0), 100).points.size(), 5);
}

TEST(TemperatureHistory, KeepsPeaksWhereThereAreMorePointsThanWanted)
{
    TemperatureHistory history;
    for (int second = 0; second < 1000; ++second)
        history.add(reading(second, second == 567 ? 99 : 20, second == 123 ? -5 : 30));
    const auto points = history.curve(0, at(0), 50).points;
    EXPECT_LE(points.size(), 52);
    EXPECT_TRUE(points.contains(QPointF(567'000, 99)));
    EXPECT_TRUE(history.curve(1, at(0), 50).points.contains(QPointF(123'000, -5)));
    EXPECT_TRUE(std::ranges::is_sorted(points, {}, &QPointF::x));
}

TEST(TemperatureHistory, ForgetsTheOldest)
{
    TemperatureHistory history;
    for (std::size_t second = 0; second <= TemperatureHistory::longest; ++second)
        history.add(reading(static_cast<qint64>(second), 20, 30));
    EXPECT_EQ(history.begin(), at(1));
    EXPECT_EQ(history.lines().size(), TemperatureHistory::longest + 1); // with the headings
}

TEST(TemperatureHistory, IsWrittenAsLinesWithTimesInUtc)
{
    TemperatureHistory history;
    history.add(reading(0, 20.5, 30));
    history.add({.time = at(60), .overall = 21, .modules = {{.name = "Back, upper", .temperature = 25}}});
    EXPECT_THAT(history.lines(), ElementsAre(ElementsAre("time", "overall", "Front", "Back, upper"),
                                             ElementsAre("1970-01-01T00:00:00.000Z", "20.5", "30", ""),
                                             ElementsAre("1970-01-01T00:01:00.000Z", "21", "", "25")));
}

TEST(TemperaturesModel, TellsInWordsWhatIsAboveItsLimit)
{
    TemperaturesModel model;
    model.add(reading(0, 20, 30));
    const auto state = [&](int row) { return model.index(row, TemperaturesModel::State).data().toString(); };
    const auto enterLimit = [&](int row, const QString& limit) {
        return model.setData(model.index(row, TemperaturesModel::Limit), limit, Qt::EditRole);
    };
    EXPECT_EQ(state(1), "");
    EXPECT_THAT(model.limits(), IsEmpty());

    model.setLimits(25.0);
    EXPECT_EQ(state(0), "within");
    EXPECT_EQ(state(1), "▲ too warm by 5.0");
    EXPECT_TRUE(model.index(1, TemperaturesModel::State).data(Qt::FontRole).value<QFont>().bold());
    EXPECT_THAT(model.limits(), ElementsAre(25.0));

    EXPECT_FALSE(enterLimit(1, "hot"));
    EXPECT_FALSE(enterLimit(1, "inf"));
    EXPECT_TRUE(enterLimit(1, "40"));
    EXPECT_EQ(state(1), "within");
    EXPECT_THAT(model.limits(), ElementsAre(25.0, 40.0));
    EXPECT_TRUE(enterLimit(1, ""));
    EXPECT_EQ(model.limit(1), std::nullopt);
    EXPECT_EQ(state(1), "");

    model.setLimits(std::nullopt);
    EXPECT_THAT(model.limits(), IsEmpty());
}

TEST(TemperaturesModel, HidesTheCurvesThatTheUserDoesNotWant)
{
    TemperaturesModel model;
    model.setLimits(25.0);
    model.add(reading(0, 20, 30));
    QSignalSpy changed(&model, &TemperaturesModel::choiceChanged);
    const QModelIndex front = model.index(1, TemperaturesModel::Name);
    EXPECT_EQ(front.data(Qt::CheckStateRole), Qt::Checked);
    EXPECT_TRUE(model.setData(front, Qt::Unchecked, Qt::CheckStateRole));
    EXPECT_EQ(changed.size(), 1);
    const auto curves = model.curves(at(0), 100);
    ASSERT_EQ(curves.size(), 2U); // so that the others keep their colours
    EXPECT_THAT(curves[0].points, ElementsAre(QPointF(0, 20)));
    EXPECT_THAT(curves[1].points, IsEmpty());
    EXPECT_EQ(front.siblingAtColumn(TemperaturesModel::Latest).data(), "30.0");
}

} // namespace tov::testing
