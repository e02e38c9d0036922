#pragma once

#include "simulator/plugin/simulatedconnection.h"
#include "workbench/mainwindow.h"

#include <QSettings>
#include <QTest>

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <semaphore>
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

/// A call that the instrument has until the test ends it: what is asked for meanwhile waits.
class CallUnderWay
{
public:
    explicit CallUnderWay(workbench::Instrument& instrument)
    {
        instrument.call(host::controls::loLeakage, QStringLiteral("hold the others up"),
                        [end = m_end](auto& /*control*/) { end->acquire(); });
        waitUntil([&] { return instrument.underWay().has_value(); });
    }
    CallUnderWay(const CallUnderWay&) = delete;
    CallUnderWay& operator=(const CallUnderWay&) = delete;
    ~CallUnderWay() { end(); }

    void end()
    {
        if (!std::exchange(m_hasEnded, true))
            m_end->release();
    }

private:
    const std::shared_ptr<std::binary_semaphore> m_end = std::make_shared<std::binary_semaphore>(0);
    bool m_hasEnded = false;
};

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

    // Until the instrument's thread has passed on what it was told before.
    void settle()
    {
        const auto passed = instrument.callSession({}, QStringLiteral("pass"), [](auto& /*session*/) {});
        waitUntil([&] { return passed.isFinished(); });
    }

    // Until the controls have gone, also while a call is under way.
    void loseControls()
    {
        EXPECT_TRUE(simulated->releaseControls());
        waitUntil([this] { return !instrument.isPresent(host::controls::loLeakage); });
        settle();
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
