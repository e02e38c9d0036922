#include "host/instrumentsession.h"

#include "devices/icontrollifecycleobserver.h"
#include "host/loadedlibrary.h"
#include "host/toldadapter.h"
#include "simulator/simulatedinstrument.h"
#include "testing/fakeinstrument.h"

#include <QFileInfo>

#include <gmock/gmock.h>

#include <any>
#include <functional>
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
template <typename Base>
class Mortal : public Base
{
public:
    Mortal(std::string name, std::vector<std::string>& story)
        : m_name(std::move(name))
        , m_story(story)
    {
    }
    Mortal(const Mortal&) = delete;
    Mortal& operator=(const Mortal&) = delete;
    ~Mortal() { m_story.push_back(m_name + " destroyed"); }

private:
    std::string m_name;
    std::vector<std::string>& m_story;
};

struct Nothing
{
};

} // namespace

TEST_F(InstrumentSession, NamesEveryRegisteredControl)
{
    ASSERT_EQ(session.registry().entries().size(), controls::all.size());
    for (std::size_t i = 0; i < controls::all.size(); ++i) {
        EXPECT_EQ(session.registry().entries()[i].key, controls::all[i].keys.registry) << controls::all[i].name;
        EXPECT_EQ(controls::find(controls::all[i].name), &controls::all[i]);
    }
    EXPECT_EQ(controls::find("toaster"), nullptr);
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

TEST_F(InstrumentSession, RefusesAKindThatIsNotRegistered)
{
    const host::Control<int> unregistered{{"unregistered", {1, {1}}}};
    EXPECT_THROW(session.control(unregistered), std::out_of_range);
    EXPECT_FALSE(session.isPresent(unregistered));
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

TEST(InstrumentSessionLife, KeepsTheInstrumentUntilTheLastAdapterIsGone)
{
    using MortalAdapter = Mortal<Nothing>;
    std::vector<std::string> story;
    std::shared_ptr<MortalAdapter> adapter;
    {
        devices::ControlRegistry registry;
        add(registry, 1, [&] { return std::make_shared<MortalAdapter>("adapter", story); });
        host::InstrumentSession session(std::make_shared<Mortal<FakeInstrument>>("instrument", story),
                                        std::move(registry));
        adapter = session.control(host::Control<MortalAdapter>{{"mortal", {1, {}}}});
    }
    EXPECT_THAT(story, ElementsAre()) << "the session is gone, the adapter is not";
    adapter.reset();
    EXPECT_THAT(story, ElementsAre("adapter destroyed", "instrument destroyed"));
}

namespace {

/// An adapter that is not told of releases.
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
    add(registry, 1, [&] { return std::make_shared<ToldAdapter>("first", story); });
    add(registry, 2, [&] { return std::make_shared<ToldAdapter>("second", story); });
    add(registry, 3, [&] { return std::make_shared<UntoldAdapter>(); });

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

TEST(InstrumentSessionLifecycle, LetsAnAdapterAskForAnotherOneWhenItIsTold)
{
    class Asking final : public devices::IControlLifecycleObserver
    {
    public:
        explicit Asking(std::function<void()>& ask)
            : m_ask(ask)
        {
        }
        void onControlsAboutToBeReleased() override {}
        void onControlsAvailable() override { m_ask(); }

    private:
        std::function<void()>& m_ask;
    };

    std::function<void()> ask;
    devices::ControlRegistry registry;
    for (std::uint64_t key = 1; key <= 20; ++key)
        add(registry, key, [&] { return std::make_shared<Asking>(ask); });
    host::InstrumentSession session(std::make_shared<FakeInstrument>(), std::move(registry));
    std::uint64_t told = 0;
    ask = [&] {
        ++told;
        for (std::uint64_t key = 2; key <= 20; ++key)
            session.control(host::Control<Asking>{{"asking", {key, {}}}});
    };

    session.control(host::Control<Asking>{{"asking", {1, {}}}});
    session.offerControls([] {});
    EXPECT_EQ(told, 1U) << "only those that were there before";
    session.offerControls([] {});
    EXPECT_EQ(told, 21U);
}

TEST(LoadedLibrary, IsFoundOnDisk)
{
    const QFileInfo library(host::loadedLibraryPath());
    EXPECT_TRUE(library.exists());
    EXPECT_TRUE(library.fileName().contains("DevicesService")) << library.fileName().toStdString();
}

} // namespace tov::testing
