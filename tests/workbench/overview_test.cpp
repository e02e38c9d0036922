#include "silentinstrument.h"
#include "workbench/models/controlsmodel.h"
#include "workbench/panels/panel.h"

#include <QLabel>
#include <QPushButton>
#include <QTableView>

#include <algorithm>
#include <stdexcept>

namespace tov::testing {

namespace {

namespace controls = host::controls;
using Answer = provider::ITestHooks::Answer;
using workbench::ControlsModel;

class AnyOverview : public OpenWindow
{
protected:
    QString shown(const host::ControlName& kind, ControlsModel::Column column)
    {
        const auto* const model = find<QTableView>("controls").model();
        const auto row = std::ranges::find(controls::all, kind) - controls::all.begin();
        return model->index(static_cast<int>(row), column).data().toString();
    }
    QString state(const host::ControlName& kind) { return shown(kind, ControlsModel::State); }

    QString lastError(const host::ControlName& kind) { return shown(kind, ControlsModel::LastError); }

    void press(const char* button) { QTest::mouseClick(&find<QPushButton>(button), Qt::LeftButton); }
};

class Overview : public AnyOverview
{
protected:
    void SetUp() override
    {
        open(QStringLiteral("overview"));
        waitUntil([this] { return state(controls::loLeakage) == "present"; });
    }
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

TEST_F(AnyOverview, IsOpenThoughAControlCannotBeHeardAndSaysWhy)
{
    auto connection = std::make_unique<simulator::SimulatedConnection>(simulator::Configuration());
    EXPECT_TRUE(connection->setAnswer(controls::temperature.keys.sdk, "temperature", Answer::Throwing));
    EXPECT_TRUE(connection->setAnswer(controls::systemTerms.keys.sdk, "addObserver", Answer::Throwing));
    QStringList failures;
    QObject::connect(&instrument, &workbench::Instrument::callChanged, qApp, [&](const workbench::Call& call) {
        if (call.state == workbench::Call::State::Failed)
            failures.append(call.control + ", " + call.what);
    });
    open(opens(std::move(connection)), QStringLiteral("overview"));
    waitUntil(
        [this] { return state(controls::temperature) == "present" && !lastError(controls::temperature).isEmpty(); });
    waitUntil([&] { return failures.contains("temperature, read the temperatures"); });
    EXPECT_TRUE(failures.contains("temperature, hear what it tells"));
    EXPECT_TRUE(failures.contains("system-terms, hear what it tells"));
    EXPECT_TRUE(lastError(controls::systemTerms).contains("could not hear what it tells: "));
    EXPECT_EQ(lastError(controls::serialNumber), "");
    const auto number = instrument.call(controls::serialNumber, "read the serial number",
                                        [](auto& control) { return control.serialNumber(); });
    waitUntil([&] { return number.isFinished(); });
    EXPECT_TRUE(number.result().has_value());
}

TEST_F(AnyOverview, IsOpenThoughNoControlCanBeLookedFor)
{
    auto connection = std::make_unique<SilentConnection>(std::make_shared<SilentSerialNumber>());
    connection->duringLookup([] { throw std::runtime_error("the line is down"); });
    open(opens(std::move(connection)), QStringLiteral("overview"));
    waitUntil([this] { return lastError(controls::usbId).endsWith("could not look for it: the line is down"); });
    EXPECT_EQ(state(controls::usbId), "absent");
}

TEST_F(Overview, ShowsValuesThatScreenReadersAreToldWithTheirNames)
{
    bool isTold = false;
    for (const auto* const label : find<workbench::Panel>("overview").findChildren<QLabel*>())
        isTold |= label->accessibleName() == "Instrument: " + instrument.description().model;
    EXPECT_TRUE(isTold);
}

} // namespace tov::testing
