#include "openwindow.h"
#include "workbench/models/controlsmodel.h"
#include "workbench/panels/panel.h"

#include <QPushButton>
#include <QTableView>

#include <algorithm>

namespace tov::testing {

namespace {

namespace controls = host::controls;
using workbench::ControlsModel;

class Overview : public OpenWindow
{
protected:
    void SetUp() override
    {
        open(QStringLiteral("overview"));
        waitUntil([this] { return state(controls::loLeakage) == "present"; });
    }

    QString shown(const host::ControlName& kind, ControlsModel::Column column)
    {
        const auto* const model = find<QTableView>("controls").model();
        const auto row = std::ranges::find(controls::all, kind) - controls::all.begin();
        return model->index(static_cast<int>(row), column).data().toString();
    }
    QString state(const host::ControlName& kind) { return shown(kind, ControlsModel::State); }

    void press(const char* button) { QTest::mouseClick(&find<QPushButton>(button), Qt::LeftButton); }
};

} // namespace

TEST_F(Overview, NamesEveryControlInTheOrderOfRegistration)
{
    const auto* const model = find<QTableView>("controls").model();
    ASSERT_EQ(model->rowCount(), static_cast<int>(controls::all.size()));
    for (int row = 0; row < model->rowCount(); ++row)
        EXPECT_EQ(model->index(row, ControlsModel::Name).data().toString().toStdString(),
                  controls::all.at(static_cast<std::size_t>(row)).name);
}

TEST_F(Overview, TakesTheControlsAwayAndOffersThemAgain)
{
    press("release");
    waitUntil([this] { return state(controls::loLeakage) == "absent"; });
    EXPECT_FALSE(find<QPushButton>("release").isEnabled());
    press("offer");
    waitUntil([this] { return state(controls::loLeakage) == "came back"; });
    EXPECT_FALSE(find<QPushButton>("offer").isEnabled());
    EXPECT_EQ(find<workbench::Panel>("overview").fault(), "");
}

TEST_F(Overview, ShowsTheLastErrorOfAControl)
{
    simulated->simulated().unfitControl(controls::usbId.keys.sdk);
    const auto call =
        instrument.call(controls::usbId, "read the USB identifier", [](auto& usbId) { return usbId.usbIds(); });
    waitUntil([&] { return call.isFinished(); });
    waitUntil([this] { return !shown(controls::usbId, ControlsModel::LastError).isEmpty(); });
    EXPECT_TRUE(shown(controls::usbId, ControlsModel::LastError)
                    .endsWith("could not read the USB identifier: the instrument has no usb-id control"));
    EXPECT_EQ(shown(controls::loLeakage, ControlsModel::LastError), "");
}

} // namespace tov::testing
