// Tests of an application's own code: against an instrument that behaves, one that does not, and a fake that records.

#include "host/controls.h"
#include "host/instrumentsession.h"
#include "simulator/simulatedinstrument.h"
#include "testing/fakeinstrument.h"
#include "testing/fakememoryserialnumbercontrol.h"

#include <gmock/gmock.h>

#include <memory>
#include <string>
#include <system_error>
#include <vector>

namespace controls = tov::host::controls;
using tov::devices::service::ISerialNumberControl;
using tov::devices::service::SerialNumberEvent;
using tov::simulator::Operation;
using tov::simulator::SimulatedInstrument;

using testing::ElementsAre;

// What is tested: how an application names an instrument.
static std::string nameOf(tov::host::InstrumentSession& session)
{
    const auto control = session.control(controls::serialNumber);
    if (!control)
        return "an instrument that has no number";
    const auto number = control->serialNumber();
    return number ? "No. " + std::to_string(*number) : "an instrument that does not tell its number";
}

struct NameOfAnInstrument : testing::Test
{
    std::shared_ptr<SimulatedInstrument> instrument = std::make_shared<SimulatedInstrument>();
    tov::host::InstrumentSession session{instrument};
};

TEST_F(NameOfAnInstrument, IsItsNumber)
{
    EXPECT_EQ(nameOf(session), "No. 100001");
}

TEST_F(NameOfAnInstrument, SaysSoWhenTheInstrumentFails)
{
    instrument->faults().answerWith(Operation::SerialNumberRead, std::make_error_code(std::errc::io_error));
    EXPECT_EQ(nameOf(session), "an instrument that does not tell its number");
}

TEST_F(NameOfAnInstrument, SaysSoWhenTheModelHasNone)
{
    instrument->unfitControl(controls::serialNumber.keys.sdk);
    EXPECT_EQ(nameOf(session), "an instrument that has no number");
}

// The call that waits while the connection is lost still completes; the one after it finds nothing.
TEST_F(NameOfAnInstrument, IsThereAgainAfterTheConnectionWasLostInTheMiddleOfACall)
{
    instrument->faults().releaseControlsDuring(Operation::SerialNumberRead);
    EXPECT_EQ(nameOf(session), "No. 100001");
    EXPECT_EQ(nameOf(session), "an instrument that does not tell its number");

    instrument->faults().heal(Operation::SerialNumberRead);
    session.offerControls([this] { instrument->offerControls(); });
    EXPECT_EQ(nameOf(session), "No. 100001");
}

struct Numbers final : ISerialNumberControl::Observer
{
    std::vector<std::uint32_t> told;

    void onSerialNumberEvent(const SerialNumberEvent& event) override { told.push_back(event.first); }
};

// The instrument tells on a thread of its own: wait until it has.
TEST_F(NameOfAnInstrument, IsToldWhenItChanges)
{
    Numbers numbers;
    const auto control = session.control(controls::serialNumber);
    control->addObserver(&numbers);
    ASSERT_TRUE(control->writeSerialNumber(4711));
    instrument->waitUntilQuiet();
    EXPECT_THAT(numbers.told, ElementsAre(4711));
    control->removeObserver(&numbers);
}

// A fake answers what it is told to, and knows what it was asked.
TEST(NameOfAnInstrumentByAFake, AsksOnce)
{
    const auto fake = std::make_shared<tov::testing::FakeMemorySerialNumberControl>();
    const auto instrument = std::make_shared<tov::testing::FakeInstrument>();
    instrument->offer<sdk::service::IMemorySerialNumberControl>(controls::serialNumber.keys.sdk, fake);
    fake->answer("readSerialNumber", 7U);

    tov::host::InstrumentSession session(instrument);
    EXPECT_EQ(nameOf(session), "No. 7");
    EXPECT_THAT(fake->calls(), ElementsAre("readSerialNumber()"));
}
