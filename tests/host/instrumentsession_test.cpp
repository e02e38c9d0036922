#include "host/instrumentsession.h"

#include "devices/icontrollifecycleobserver.h"
#include "fakes/fakeinstrument.h"
#include "fakes/fakeloleakagecontrol.h"
#include "host/loadedlibrary.h"
#include "simulator/simulatedinstrument.h"

#include <gmock/gmock.h>

#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace tov::testing {

namespace {

namespace controls = host::controls;
using ::testing::ElementsAre;

class InstrumentSession : public ::testing::Test
{
protected:
    std::shared_ptr<simulator::SimulatedInstrument> instrument = std::make_shared<simulator::SimulatedInstrument>();
    host::InstrumentSession session{instrument};
};

/// Tells of its end.
class MortalInstrument final : public sdk::IVna
{
public:
    explicit MortalInstrument(std::vector<std::string>& story)
        : m_story(story)
    {
    }
    ~MortalInstrument() override { m_story.push_back("instrument destroyed"); }

    std::shared_ptr<void> findControl(sdk::Key) override
    {
        return std::shared_ptr<sdk::service::ILoLeakageControl>(m_control);
    }

private:
    std::vector<std::string>& m_story;
    std::shared_ptr<FakeLoLeakageControl> m_control = std::make_shared<FakeLoLeakageControl>();
};

} // namespace

TEST_F(InstrumentSession, NamesEveryRegisteredControl)
{
    ASSERT_EQ(session.registry().entries().size(), controls::all.size());
    for (std::size_t i = 0; i < controls::all.size(); ++i)
        EXPECT_EQ(session.registry().entries()[i].key, controls::all[i].keys.registry) << controls::all[i].name;
}

TEST_F(InstrumentSession, FindsEveryControlOnTheSimulatedInstrument)
{
    for (const auto& control : controls::all)
        EXPECT_TRUE(session.isPresent(control)) << control.name;
}

TEST_F(InstrumentSession, HandsOutTheSameAdapterAtEachDemand)
{
    const auto first = session.control(controls::loLeakage);
    ASSERT_NE(first, nullptr);
    EXPECT_EQ(session.control(controls::loLeakage), first);
    EXPECT_NE(session.control(controls::yqSynthesis), nullptr);
}

TEST_F(InstrumentSession, AsksAgainForAControlThatWasMissing)
{
    instrument->unfitControl(controls::loLeakage.keys.sdk);
    EXPECT_FALSE(session.isPresent(controls::loLeakage));
    EXPECT_EQ(session.control(controls::loLeakage), nullptr);

    instrument->fitControl(controls::loLeakage.keys.sdk);
    EXPECT_TRUE(session.isPresent(controls::loLeakage));
    EXPECT_NE(session.control(controls::loLeakage), nullptr);
}

TEST_F(InstrumentSession, RefusesAKindThatTheLibraryDoesNotHave)
{
    EXPECT_THROW(session.isPresent({"no such control", {1, {1}}}), std::out_of_range);
}

TEST_F(InstrumentSession, GoesOnWorkingAfterTheControlsWereReleasedAndOfferedAgain)
{
    const auto control = session.control(controls::loLeakage);
    control->setEnabled(true);
    session.releaseControls([&] { instrument->releaseControls(); });
    EXPECT_FALSE(control->isEnabled());
    EXPECT_EQ(session.control(controls::loLeakage), control);
    session.offerControls([&] { instrument->offerControls(); });
    EXPECT_TRUE(control->isEnabled());
}

TEST(InstrumentSessionLife, EndsAfterItsAdaptersButBeforeTheInstrument)
{
    std::vector<std::string> story;
    std::shared_ptr<devices::service::SdkLoLeakageControl> adapter;
    {
        host::InstrumentSession session(std::make_shared<MortalInstrument>(story));
        adapter = session.control(controls::loLeakage);
    }
    EXPECT_THAT(story, ElementsAre());
    EXPECT_FALSE(adapter->isEnabled());
    adapter.reset();
    EXPECT_THAT(story, ElementsAre("instrument destroyed"));
}

namespace {

/// An adapter that is told of releases, and one that is not but must be passed over.
class ToldAdapter : public devices::IControlLifecycleObserver
{
public:
    ToldAdapter(std::string name, std::vector<std::string>& story)
        : m_name(std::move(name))
        , m_story(story)
    {
    }
    void onControlsAboutToBeReleased() override { m_story.push_back(m_name + " lets go"); }
    void onControlsAvailable() override { m_story.push_back(m_name + " comes back"); }

private:
    std::string m_name;
    std::vector<std::string>& m_story;
};

class UntoldAdapter
{
public:
    virtual ~UntoldAdapter() = default;
};

} // namespace

TEST(InstrumentSessionLifecycle, TellsTheAdaptersAroundARelease)
{
    std::vector<std::string> story;
    devices::ControlRegistry registry;
    const auto add = [&](std::uint64_t key, auto make) {
        registry.addEntry(
            devices::ControlRegistry::ControlEntry<sdk::IVna>{key, [make](sdk::IVna*) { return std::any(make()); }});
    };
    add(1, [&] { return std::make_shared<ToldAdapter>("first", story); });
    add(2, [&] { return std::make_shared<ToldAdapter>("second", story); });
    add(3, [&] { return std::make_shared<UntoldAdapter>(); });

    host::InstrumentSession session(std::make_shared<FakeInstrument>(), std::move(registry));
    const host::Control<ToldAdapter> first{{"first", {1, {}}}};
    const host::Control<ToldAdapter> second{{"second", {2, {}}}};
    const host::Control<UntoldAdapter> third{{"third", {3, {}}}};

    session.releaseControls([&] { story.push_back("released"); });
    EXPECT_THAT(story, ElementsAre("released")) << "no adapter was made yet";
    story.clear();

    EXPECT_NE(session.control(first), nullptr);
    EXPECT_NE(session.control(third), nullptr);
    EXPECT_NE(session.control(second), nullptr);
    session.releaseControls([&] { story.push_back("released"); });
    session.offerControls([&] { story.push_back("offered"); });

    EXPECT_THAT(story, ElementsAre("second lets go", "first lets go", "released", "offered", "first comes back",
                                   "second comes back"));
}

TEST(LoadedLibrary, IsFoundOnDisk)
{
    EXPECT_TRUE(host::loadedLibraryPath().contains("DevicesService")) << host::loadedLibraryPath().toStdString();
}

} // namespace tov::testing
