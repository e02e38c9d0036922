#include "simulator/plugin/simulatedconnection.h"

#include "host/instrumentsession.h"

#include <gmock/gmock.h>

#include <atomic>
#include <chrono>
#include <memory>
#include <vector>

namespace tov::testing {

namespace {

namespace controls = host::controls;
using namespace std::chrono_literals;
using Answer = provider::ITestHooks::Answer;

/// Keeps what it is given to hold until it is let go of.
class HoldingListener final : public provider::IControlsListener
{
public:
    void onControlsAboutToBeReleased(std::shared_ptr<void> newHold) override
    {
        ++releases;
        hold = std::move(newHold);
    }
    void onControlsOffered() override { ++offers; }

    int releases = 0;
    int offers = 0;
    std::shared_ptr<void> hold;
};

class SimulatedConnection : public ::testing::Test
{
protected:
    bool isOffering() { return connection->instrument()->findControl(controls::serialNumber.keys.sdk) != nullptr; }

    std::unique_ptr<simulator::SimulatedConnection> connection =
        std::make_unique<simulator::SimulatedConnection>(simulator::Configuration());
};

class SerialNumberCounter final : public devices::service::ISerialNumberControl::Observer
{
public:
    void onSerialNumberEvent(const devices::service::SerialNumberEvent& /*event*/) override { ++count; }

    std::atomic<int> count = 0;
};

} // namespace

TEST_F(SimulatedConnection, ReleasesTheControlsWhenTheyAreHeldNoMore)
{
    HoldingListener listener;
    connection->setListener(&listener);
    EXPECT_TRUE(connection->releaseControls());
    EXPECT_EQ(listener.releases, 1);
    EXPECT_TRUE(isOffering());
    EXPECT_TRUE(connection->releaseControls()) << "they go already";
    EXPECT_EQ(listener.releases, 1);
    EXPECT_EQ(connection->offerControls().error(), "the controls are still going");

    listener.hold.reset();
    EXPECT_FALSE(isOffering());
    EXPECT_TRUE(connection->releaseControls()) << "they are gone";
    EXPECT_EQ(listener.releases, 1);
}

TEST_F(SimulatedConnection, OffersTheControlsAgainAndTellsOfIt)
{
    HoldingListener listener;
    connection->setListener(&listener);
    EXPECT_TRUE(connection->offerControls()) << "they are there";
    EXPECT_EQ(listener.offers, 0);
    ASSERT_TRUE(connection->releaseControls());
    listener.hold.reset();
    EXPECT_TRUE(connection->offerControls());
    EXPECT_TRUE(isOffering());
    EXPECT_EQ(listener.offers, 1);

    connection->setListener(nullptr);
    EXPECT_TRUE(connection->releaseControls());
    EXPECT_FALSE(isOffering()) << "nobody holds them";
    EXPECT_TRUE(connection->offerControls());
    EXPECT_EQ(listener.offers, 1);
}

TEST_F(SimulatedConnection, HasNoControlsWhenItIsClosed)
{
    const auto instrument = connection->instrument();
    connection.reset();
    EXPECT_EQ(instrument->findControl(controls::serialNumber.keys.sdk), nullptr);
}

TEST_F(SimulatedConnection, NotifiesAndLeavesTheInstrumentAsItWas)
{
    simulator::SimulatedConnection& hooks = *connection;
    host::InstrumentSession session(std::move(connection));
    const auto serialNumber = session.control(controls::serialNumber);
    const auto before = serialNumber->serialNumber();
    SerialNumberCounter told;
    serialNumber->addObserver(&told);
    ASSERT_TRUE(hooks.notify(controls::serialNumber.keys.sdk));
    ASSERT_TRUE(hooks.waitUntilQuiet());
    EXPECT_EQ(told.count, 1);
    EXPECT_EQ(serialNumber->serialNumber(), before);
    serialNumber->removeObserver(&told);

    for (const auto& control :
         {controls::memoryOperations.keys, controls::temperature.keys, controls::factoryCorrections.keys,
          controls::ifswCalibration.keys, controls::factoryPowerCalibration.keys, controls::calibrationController1.keys,
          controls::calibrationController2.keys})
        EXPECT_TRUE(hooks.notify(control.sdk));
    EXPECT_EQ(hooks.notify(controls::loLeakage.keys.sdk).error(), "this control notifies nobody");
    EXPECT_EQ(hooks.notify(controls::systemTerms.keys.sdk).error(),
              "there are no system terms, which could be written again");
    hooks.simulated().unfitControl(controls::temperature.keys.sdk);
    EXPECT_EQ(hooks.notify(controls::temperature.keys.sdk).error(), "the instrument does not offer this control now");
}

TEST_F(SimulatedConnection, AnswersAsItIsTold)
{
    simulator::SimulatedConnection& hooks = *connection;
    host::InstrumentSession session(std::move(connection));
    const auto serialNumber = session.control(controls::serialNumber);
    const sdk::Key key = controls::serialNumber.keys.sdk;

    ASSERT_TRUE(hooks.setAnswer(key, "readSerialNumber", Answer::WithError));
    EXPECT_FALSE(serialNumber->serialNumber());
    ASSERT_TRUE(hooks.setAnswer(key, "readSerialNumber", Answer::Throwing));
    EXPECT_THROW(serialNumber->serialNumber(), std::runtime_error);
    ASSERT_TRUE(hooks.setAnswer(key, "readSerialNumber", Answer::Late));
    EXPECT_TRUE(serialNumber->serialNumber());
    ASSERT_TRUE(hooks.setAnswer(key, "readSerialNumber", Answer::ReleasingTheControls));
    EXPECT_TRUE(serialNumber->serialNumber());
    EXPECT_FALSE(session.isPresent(controls::serialNumber)) << "gone without a word";
    ASSERT_TRUE(hooks.offerControls());
    ASSERT_TRUE(hooks.setAnswer(key, "readSerialNumber", Answer::AsUsual));
    EXPECT_TRUE(serialNumber->serialNumber());
    EXPECT_TRUE(session.isPresent(controls::serialNumber));

    ASSERT_TRUE(hooks.misbehave(key, "readSerialNumber", {.answer = Answer::Late, .delay = 20ms}));
    const auto asked = std::chrono::steady_clock::now();
    EXPECT_TRUE(serialNumber->serialNumber());
    EXPECT_GE(std::chrono::steady_clock::now() - asked, 20ms);
    ASSERT_TRUE(hooks.misbehave(key, "readSerialNumber", {.answer = Answer::WithError, .after = 1}));
    EXPECT_TRUE(serialNumber->serialNumber());
    EXPECT_FALSE(serialNumber->serialNumber());
    ASSERT_TRUE(hooks.setAnswer(key, "readSerialNumber", Answer::AsUsual));

    EXPECT_EQ(hooks.setAnswer(key, "nothing", Answer::Late).error(),
              "there is no operation 'nothing' that can be made to misbehave");
    EXPECT_EQ(hooks.setAnswer(controls::usbId.keys.sdk, "usbId", Answer::Late).error(),
              "'usbId' is not answered by a callback; it can only throw");
}

} // namespace tov::testing
