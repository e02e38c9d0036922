#include "devices/controlregistry.h"

#include <gmock/gmock.h>

#include <functional>
#include <memory>
#include <stdexcept>
#include <string>

namespace tov::testing {

namespace {

using devices::ControlRegistry;
using ::testing::HasSubstr;

struct Owner
{
    int number = 0;
};

using Entry = ControlRegistry::ControlEntry<Owner>;
using EntryBase = ControlRegistry::ControlEntryBase;

Entry giving(std::uint64_t key, int value)
{
    return {key, [value](Owner*) { return std::any(value); }};
}

EntryBase erased(Entry&& entry)
{
    return std::move(entry);
}

template <typename Exception, typename Action>
std::string messageOf(Action action)
{
    try {
        action();
    } catch (const Exception& error) {
        return error.what();
    }
    return "nothing was thrown";
}

} // namespace

TEST(ControlEntry, KeepsItsKeyAndHandsTheOwnerOn)
{
    Owner owner{.number = 5};
    const EntryBase entry = Entry{42, [](Owner* given) { return std::any(given->number); }};

    EXPECT_EQ(entry.key, 42U);
    EXPECT_EQ(std::any_cast<int>(entry.create(&owner)), 5);
}

TEST(ControlEntry, WrapsACopyOfItsFunction)
{
    Entry entry = giving(1, 5);
    const EntryBase base = std::move(entry);
    EXPECT_TRUE(entry.create); // NOLINT(bugprone-use-after-move): the conversion copies
    EXPECT_TRUE(base.create);
}

TEST(ControlEntry, GivesNothingForAnOwnerOfAnotherType)
{
    const EntryBase entry = erased(giving(1, 5));
    const Owner constOwner;
    int other = 0;

    EXPECT_FALSE(entry.create({}).has_value());
    EXPECT_FALSE(entry.create(&other).has_value());
    EXPECT_FALSE(entry.create(Owner()).has_value());
    EXPECT_FALSE(entry.create(&constOwner).has_value()) << "the type must be exactly the owner's pointer";
}

TEST(ControlEntry, GivesNothingWhenItsFunctionMissesATypeItself)
{
    Owner owner;
    const EntryBase entry = erased({1, [](Owner*) { return std::any(std::any_cast<int>(std::any("text"))); }});
    EXPECT_FALSE(entry.create(&owner).has_value());
}

TEST(ControlEntry, PassesOnEveryOtherException)
{
    Owner owner;
    const EntryBase failing = erased({1, [](Owner*) -> std::any { throw std::runtime_error("failed"); }});
    const EntryBase empty = erased({1, nullptr});

    EXPECT_THROW(failing.create(&owner), std::runtime_error);
    EXPECT_THROW(empty.create(&owner), std::bad_function_call);
    EXPECT_FALSE(empty.create({}).has_value()) << "the owner is looked at first";
}

TEST(ControlRegistry, KeepsEntriesInTheOrderInWhichTheyCame)
{
    ControlRegistry registry;
    for (const std::uint64_t key : {3U, 1U, 2U})
        registry.addEntry(giving(key, 0));

    ASSERT_EQ(registry.entries().size(), 3U);
    EXPECT_EQ(registry.entries()[0].key, 3U);
    EXPECT_EQ(registry.entries()[1].key, 1U);
    EXPECT_EQ(registry.entries()[2].key, 2U);
}

TEST(ControlRegistry, CreatesByKey)
{
    ControlRegistry registry;
    registry.addEntry(giving(1, 10));
    registry.addEntry(giving(2, 20));
    Owner owner;

    EXPECT_EQ(std::any_cast<int>(registry.create(2, &owner)), 20);
    EXPECT_EQ(std::any_cast<int>(registry.create(1, &owner)), 10);
    EXPECT_FALSE(registry.create(1, std::any()).has_value());
}

TEST(ControlRegistry, RefusesAnUnknownKeyByName)
{
    const ControlRegistry registry;
    EXPECT_THAT(messageOf<std::out_of_range>([&] { registry.create(0x2A, std::any()); }),
                HasSubstr("0x000000000000002A"));
}

TEST(ControlRegistry, RefusesADuplicateKeyByNameAndKeepsTheFirstEntry)
{
    ControlRegistry registry;
    registry.addEntry(giving(0xA045AB34EA41DF44, 10));

    EXPECT_THAT(messageOf<std::invalid_argument>([&] { registry.addEntry(giving(0xA045AB34EA41DF44, 20)); }),
                HasSubstr("0xA045AB34EA41DF44"));
    ASSERT_EQ(registry.entries().size(), 1U);
    Owner owner;
    EXPECT_EQ(std::any_cast<int>(registry.create(0xA045AB34EA41DF44, &owner)), 10);
}

} // namespace tov::testing
