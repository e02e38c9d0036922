#pragma once

#include "simulator/plugin/simulatedconnection.h"
#include "workbench/mainwindow.h"

#include <QSettings>
#include <QTest>

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <utility>

namespace tov::testing {

/// Processes events until `condition` holds, and fails when it does not for minutes.
inline void waitUntil(const std::function<bool()>& condition)
{
    EXPECT_TRUE(QTest::qWaitFor(condition, 5 * 60 * 1000));
}

/// An opener of `connection`.
inline workbench::Instrument::Opener opens(const std::shared_ptr<std::unique_ptr<provider::IConnection>>& connection)
{
    return [connection]() -> provider::Result<workbench::Opened> {
        return workbench::Opened{
            .provider = {.file = "/nowhere/of-tests.so",
                         .name = "of-tests",
                         .version = "1.0",
                         .description = "Made by a test",
                         .options = {}},
            .instrument = {.description = {.id = "one", .model = "Model 1", .serialNumber = "4711", .description = ""},
                           .connection = std::move(*connection)}};
    };
}

inline workbench::Instrument::Opener opens(std::unique_ptr<provider::IConnection> connection)
{
    return opens(std::make_shared<std::unique_ptr<provider::IConnection>>(std::move(connection)));
}

/// The window on a simulated instrument, as the user sees it once that is open.
class OpenWindow : public ::testing::Test
{
protected:
    OpenWindow() { QSettings().clear(); }

    // Shows the window on what is opened so, with this panel in front.
    void open(const workbench::Instrument::Opener& opener, const QString& panel)
    {
        window = std::make_unique<workbench::MainWindow>(instrument, opener);
        EXPECT_TRUE(window->bringUp(panel));
        window->show();
        waitUntil([this] { return instrument.state() == workbench::Instrument::State::Open; });
    }

    void open(const QString& panel)
    {
        auto connection = std::make_unique<simulator::SimulatedConnection>(simulator::Configuration());
        simulated = connection.get();
        open(opens(std::move(connection)), panel);
    }

    // Only then its shortcuts count; where there is no window manager, nobody else does it.
    void activate()
    {
        window->activateWindow();
        waitUntil([this] { return window->isActiveWindow(); });
    }

    // A widget of the window by its class and name.
    template <typename Widget>
    Widget& find(const char* name)
    {
        auto* const found = window->findChild<Widget*>(QString::fromLatin1(name));
        if (found == nullptr)
            throw std::logic_error(std::string("the window has no ") + name);
        return *found;
    }

    simulator::SimulatedConnection* simulated = nullptr; // lives as long as the instrument is open
    workbench::Instrument instrument;
    std::unique_ptr<workbench::MainWindow> window;
};

} // namespace tov::testing
