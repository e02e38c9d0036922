#include "devices/makecreatefunction.h"

#include "devices/controlregistry.h"
#include "testing/fakeinstrument.h"

#include <gmock/gmock.h>

#include <memory>
#include <stdexcept>
#include <utility>
#include <vector>

namespace tov::testing {

namespace {

using ::testing::ElementsAre;

constexpr sdk::Key key{0xF00D};

class ISdkThing
{
public:
    virtual ~ISdkThing() = default;
};

class IThing
{
public:
    virtual ~IThing() = default;
};

/// An adapter that shows the control it reaches.
class Thing : public IThing
{
public:
    explicit Thing(devices::ReacquiringControl<ISdkThing> handle)
        : control(std::move(handle))
    {
    }
    devices::ReacquiringControl<ISdkThing> control;
};

class ThrowingThing : public IThing
{
public:
    explicit ThrowingThing(const devices::ReacquiringControl<ISdkThing>&)
    {
        throw std::runtime_error("no adapter today");
    }
};

class MakeCreateFunction : public ::testing::Test
{
protected:
    FakeInstrument instrument;
    std::shared_ptr<ISdkThing> control = std::make_shared<ISdkThing>();

    template <typename Exposed = IThing, typename Impl = Thing>
    std::any create()
    {
        return devices::makeCreateFunction<sdk::IVna, ISdkThing, Exposed, Impl, sdk::Key>(key)(&instrument);
    }
};

} // namespace

TEST_F(MakeCreateFunction, CapturesTheKeyAlone)
{
    const auto function = devices::makeCreateFunction<sdk::IVna, ISdkThing, IThing, Thing>(key);
    EXPECT_EQ(sizeof function, sizeof key);
    EXPECT_TRUE(instrument.lookups().empty());
}

TEST_F(MakeCreateFunction, GivesAnOwnerOfTheExposedType)
{
    instrument.offer(key, control);

    EXPECT_NE(std::any_cast<std::shared_ptr<IThing>>(create<IThing>()), nullptr);
    EXPECT_NE(std::any_cast<std::shared_ptr<Thing>>(create<Thing>()), nullptr);
    EXPECT_THROW(std::any_cast<std::shared_ptr<Thing>>(create<IThing>()), std::bad_any_cast);
    EXPECT_THROW(std::any_cast<std::shared_ptr<IThing>>(create<Thing>()), std::bad_any_cast);
}

TEST_F(MakeCreateFunction, LooksTheControlUpTwiceForOneCreation)
{
    instrument.offer(key, control);
    const auto thing = std::any_cast<std::shared_ptr<Thing>>(create<Thing>());
    EXPECT_THAT(instrument.lookups(), ElementsAre(key, key));

    EXPECT_EQ(thing->control.lock().control, control.get());
    EXPECT_EQ(instrument.lookups().size(), 2U) << "the adapter starts with a live handle";
}

TEST_F(MakeCreateFunction, TakesTheFirstHandleFromTheSecondLookup)
{
    instrument.offer(key, control);
    const auto other = std::make_shared<ISdkThing>();
    int lookups = 0;
    instrument.duringLookup = [&] {
        if (++lookups == 2)
            instrument.offer(key, other);
    };

    const auto thing = std::any_cast<std::shared_ptr<Thing>>(create<Thing>());
    EXPECT_EQ(thing->control.lock().control, other.get());
}

TEST_F(MakeCreateFunction, MakesAnAdapterEvenIfTheControlGoesBeforeTheSecondLookup)
{
    instrument.offer(key, control);
    int lookups = 0;
    instrument.duringLookup = [&] {
        if (++lookups == 2)
            instrument.release(key);
    };

    const auto thing = std::any_cast<std::shared_ptr<Thing>>(create<Thing>());
    EXPECT_FALSE(thing->control.lock());
}

TEST_F(MakeCreateFunction, GivesNothingWhenTheInstrumentLacksTheControl)
{
    EXPECT_FALSE(create().has_value());
    EXPECT_THAT(instrument.lookups(), ElementsAre(key));
}

TEST_F(MakeCreateFunction, GivesNothingForAControlThatExpiresAtOnce)
{
    // Keeps no reference of its own, so the answer is the only one.
    class Forgetful final : public sdk::IVna
    {
    public:
        std::shared_ptr<void> findControl(sdk::Key) override
        {
            ++lookups;
            return std::make_shared<ISdkThing>();
        }
        int lookups = 0;
    } forgetful;

    const auto create = devices::makeCreateFunction<sdk::IVna, ISdkThing, IThing, Thing>(key);
    EXPECT_FALSE(create(&forgetful).has_value());
    EXPECT_EQ(forgetful.lookups, 1);
}

TEST_F(MakeCreateFunction, MakesANewAdapterOfTheSameControlAtEachCall)
{
    instrument.offer(key, control);
    const auto first = std::any_cast<std::shared_ptr<Thing>>(create<Thing>());
    const auto second = std::any_cast<std::shared_ptr<Thing>>(create<Thing>());

    EXPECT_NE(first, second);
    EXPECT_EQ(first->control.lock().control, second->control.lock().control);
}

TEST_F(MakeCreateFunction, KeepsNoControlAlive)
{
    instrument.offer(key, control);
    const auto thing = create();
    instrument.release(key);
    EXPECT_EQ(control.use_count(), 1);
}

TEST_F(MakeCreateFunction, GivesTheCallerTheOnlyReferenceToTheAdapter)
{
    instrument.offer(key, control);
    EXPECT_EQ(std::any_cast<std::shared_ptr<Thing>&&>(create<Thing>()).use_count(), 1);
}

TEST_F(MakeCreateFunction, PassesOnWhatTheAdapterOrTheInstrumentThrows)
{
    instrument.offer(key, control);
    EXPECT_THROW((create<IThing, ThrowingThing>()), std::runtime_error);

    instrument.duringLookup = [] { throw std::logic_error("no lookup today"); };
    EXPECT_THROW(create(), std::logic_error);
    int lookups = 0;
    instrument.duringLookup = [&] {
        if (++lookups == 2)
            throw std::logic_error("no second lookup today");
    };
    EXPECT_THROW(create(), std::logic_error);
    instrument.duringLookup = nullptr;
    instrument.release(key);
    EXPECT_EQ(control.use_count(), 1) << "nothing is left behind";
}

} // namespace tov::testing
