#include "workbench/models/controlsmodel.h"
#include "workbench/models/tuning.h"

#include <QJsonArray>

#include <gmock/gmock.h>

#include <string>

namespace tov::testing {

namespace {

using ::testing::IsEmpty;
using workbench::ControlsModel;

/// A module of which nothing is known but what the test says.
class TuningModel : public ::testing::Test
{
protected:
    void set(const std::string& name, const QJsonValue& value)
    {
        const auto& setting = tuneSettingNamed(module, name);
        read.at(static_cast<std::size_t>(&setting - module.settings.data())).value = value;
    }

    const TuneModule& module = tuneModuleNamed("wn0807-synthesis");
    workbench::ReadModule read = workbench::ReadModule(module.settings.size());
};

QString stateAt(const ControlsModel& model, int row)
{
    return model.index(row, ControlsModel::State).data().toString();
}

} // namespace

TEST_F(TuningModel, EndsABandWhereTheNextOneBegins)
{
    set("rf-filter0-from", 3e9);
    set("rf-filter1-from", 1e9);
    set("rf-filter3-from", 2e9);
    const auto bands = workbench::bands(module, read);
    ASSERT_EQ(bands.size(), 3U);
    EXPECT_EQ(bands[0].name, "rf-filter1-from");
    EXPECT_EQ(bands[0].from, 1e9);
    EXPECT_EQ(bands[0].to, 2e9);
    EXPECT_EQ(bands[1].name, "rf-filter3-from");
    EXPECT_EQ(bands[1].to, 3e9);
    EXPECT_EQ(bands[2].to, std::nullopt);
}

TEST_F(TuningModel, PlotsWhatHasRows)
{
    EXPECT_THAT(workbench::powerCurves(module, read), IsEmpty());
    set("rf-power-table", QJsonArray{QJsonArray{1e9, 20}, QJsonArray{2e9, 30}});
    const auto curves = workbench::powerCurves(module, read);
    ASSERT_EQ(curves.size(), 1U);
    EXPECT_EQ(curves[0].name, "rf-power-table");
    ASSERT_EQ(curves[0].points.size(), 2U);
    EXPECT_EQ(curves[0].points[1].frequency, 2e9);
    EXPECT_EQ(curves[0].points[1].code, 30);
}

TEST(ControlsModel, TellsWhatCameBackFromWhatWasAlwaysThere)
{
    ControlsModel model;
    bool firstIsThere = true;
    const auto look = [&] {
        model.show([&](const host::ControlName& kind) {
            return firstIsThere || kind.keys != host::controls::all.front().keys;
        });
    };
    EXPECT_EQ(stateAt(model, 0), "");
    look();
    EXPECT_EQ(stateAt(model, 0), "present");
    firstIsThere = false;
    look();
    EXPECT_EQ(stateAt(model, 0), "absent");
    firstIsThere = true;
    look();
    EXPECT_EQ(stateAt(model, 0), "came back");
    EXPECT_EQ(stateAt(model, 1), "present");
}

} // namespace tov::testing
