#include "fakes/fakewn0807synthesiscontrol.h"
#include "service/enumerationwalk.h"
#include "service/tuning/sdkwn0807synthesiscontrol.h"
#include "service/valueadaptercontract.h"

#include <gmock/gmock.h>

#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace tov::testing {

using devices::service::SdkWn0807SynthesisControl;
using sdk::service::IWn0807SynthesisControl;
using Capacitor = SdkWn0807SynthesisControl::Capacitor;
using CapacitorMode = SdkWn0807SynthesisControl::CapacitorMode;
using RfFilter = SdkWn0807SynthesisControl::RfFilter;
using ::testing::ElementsAre;

namespace {

constexpr std::array frequencies = {7.5e6, 10.7e6, 2.5e6};

constexpr std::array<IWn0807SynthesisControl::PowerSyntEntry, 2> entries = {{{1e9, 17}, {2e9, 255}}};

// Frequencies and powers one after the other.
using Table = std::vector<double>;

auto tableOf(std::vector<SdkWn0807SynthesisControl::PowerSyntEntry> (SdkWn0807SynthesisControl::*getter)() const)
{
    return [getter](const SdkWn0807SynthesisControl& adapter) {
        Table table;
        for (const auto& entry : (adapter.*getter)())
            table.insert(table.end(), {entry.frequency, static_cast<double>(entry.power)});
        return table;
    };
}

Table boundsOf(const std::optional<utils::Range<double>>& range)
{
    return range ? Table{range->first, range->second} : Table{};
}

class SdkWn0807Synthesis : public ::testing::Test
{
protected:
    std::shared_ptr<FakeWn0807SynthesisControl> fake = std::make_shared<FakeWn0807SynthesisControl>();
    SdkWn0807SynthesisControl adapter{devices::ReacquiringControl<IWn0807SynthesisControl>(
        [this] { return sdk::ControlHandle<IWn0807SynthesisControl>(fake); })};
};

} // namespace

INSTANTIATE_TEST_SUITE_P(
    SdkWn0807SynthesisControl, ValueAdapter,
    (operations<SdkWn0807SynthesisControl, IWn0807SynthesisControl, FakeWn0807SynthesisControl>({
        reads("loPower", &SdkWn0807SynthesisControl::loPower, {0}, {200}),
        writes("setLoPower", &SdkWn0807SynthesisControl::setLoPower, 255),
        reads("rfPower", &SdkWn0807SynthesisControl::rfPower, {0}, {7}),
        writes("setRfPower", &SdkWn0807SynthesisControl::setRfPower, 8),
        reads("rfPowerMode", &SdkWn0807SynthesisControl::rfPowerMode, {SdkWn0807SynthesisControl::RfPowerMode::Mode0},
              SdkAnswers{2}, SdkWn0807SynthesisControl::RfPowerMode::Mode2),
        writes("setRfPowerMode", &SdkWn0807SynthesisControl::setRfPowerMode,
               SdkWn0807SynthesisControl::RfPowerMode::Mode2)
            .as("setRfPowerMode(2)"),
        readsBy<SdkWn0807SynthesisControl>(
            "rfPowerRangeTable", tableOf(&SdkWn0807SynthesisControl::rfPowerRangeTable), Table{},
            SdkAnswers{std::span<const IWn0807SynthesisControl::PowerSyntEntry>(entries)},
            Table{1e9, 17.0, 2e9, 255.0}),
        readsBy<SdkWn0807SynthesisControl>(
            "rfPowerDefaultRangeTable", tableOf(&SdkWn0807SynthesisControl::rfPowerDefaultRangeTable), Table{},
            SdkAnswers{std::span<const IWn0807SynthesisControl::PowerSyntEntry>(entries)},
            Table{1e9, 17.0, 2e9, 255.0}),
        writes("setRfPowerRangeFrequency", &SdkWn0807SynthesisControl::setRfPowerRangeFrequency, -3, 1.5e9),
        writes("setRfPowerRangePower", &SdkWn0807SynthesisControl::setRfPowerRangePower, 1000000,
               static_cast<unsigned char>(255)),
        reads("ifMode", &SdkWn0807SynthesisControl::ifMode, {SdkWn0807SynthesisControl::IfMode::Mode0}, SdkAnswers{1},
              SdkWn0807SynthesisControl::IfMode::Mode1),
        writes("setIfMode", &SdkWn0807SynthesisControl::setIfMode, SdkWn0807SynthesisControl::IfMode::Mode1)
            .as("setIfMode(1)"),
        reads("selectedIf", &SdkWn0807SynthesisControl::selectedIf, {0}, {3}),
        writes("setSelectedIf", &SdkWn0807SynthesisControl::setSelectedIf, -7),
        reads("supportedIfs", &SdkWn0807SynthesisControl::supportedIfs, {{}},
              SdkAnswers{std::span<const double>(frequencies)}, {7.5e6, 10.7e6, 2.5e6}),
        readsBy<SdkWn0807SynthesisControl>(
            "capacitanceMode",
            [](const SdkWn0807SynthesisControl& adapter) { return adapter.capacitanceMode(Capacitor::Capacitor2); },
            CapacitorMode::Mode0, SdkAnswers{2}, CapacitorMode::Mode2)
            .as("capacitanceMode(1)"),
        writes("setCapacitanceMode", &SdkWn0807SynthesisControl::setCapacitanceMode, Capacitor::Capacitor2,
               CapacitorMode::Mode3)
            .as("setCapacitanceMode(1, 3)"),
        readsBy<SdkWn0807SynthesisControl>(
            "capacitanceRange",
            [](const SdkWn0807SynthesisControl&
                   adapter) { return boundsOf(adapter.capacitanceRange(Capacitor::Capacitor1)); },
            Table{}, SdkAnswers{std::optional(IWn0807SynthesisControl::Range{5.0, -1.5})}, Table{5.0, -1.5})
            .as("capacitanceRange(0)"),
        writes("setCapacitanceRange", &SdkWn0807SynthesisControl::setCapacitanceRange, Capacitor::Capacitor2,
               utils::Range<double>{2.5, 0.1})
            .as("setCapacitanceRange(1, 2.5, 0.1)"),
        reads("rfFilterMode", &SdkWn0807SynthesisControl::rfFilterMode, {SdkWn0807SynthesisControl::FilterMode::Mode0},
              SdkAnswers{1}, SdkWn0807SynthesisControl::FilterMode::Mode1),
        writes("setRfFilterMode", &SdkWn0807SynthesisControl::setRfFilterMode,
               SdkWn0807SynthesisControl::FilterMode::Mode1)
            .as("setRfFilterMode(1)"),
        reads("selectedRfFilter", &SdkWn0807SynthesisControl::selectedRfFilter, {std::nullopt},
              SdkAnswers{std::optional(2)}, RfFilter::Filter3),
        writes("setSelectedRfFilter", &SdkWn0807SynthesisControl::setSelectedRfFilter, RfFilter::Filter2)
            .as("setSelectedRfFilter(1)"),
        readsBy<SdkWn0807SynthesisControl>(
            "rfFilterFrom",
            [](const SdkWn0807SynthesisControl& adapter) { return adapter.rfFilterFrom(RfFilter::Filter4); },
            std::optional<double>(), SdkAnswers{std::optional(1.5e9)}, std::optional(1.5e9))
            .as("rfFilterFrom(3)"),
        writes("setRfFilterFrom", &SdkWn0807SynthesisControl::setRfFilterFrom, RfFilter::Filter3, 0.1)
            .as("setRfFilterFrom(2, 0.1)"),
        reads("ddsSwitchFreq", &SdkWn0807SynthesisControl::ddsSwitchFreq, {0.0}, {1e8}),
        writes("setDdsSwitchFreq", &SdkWn0807SynthesisControl::setDdsSwitchFreq, -1e-9),
        reads("delayMode", &SdkWn0807SynthesisControl::delayMode, {SdkWn0807SynthesisControl::DelayMode::Mode0},
              SdkAnswers{1}, SdkWn0807SynthesisControl::DelayMode::Mode1),
        writes("setDelayMode", &SdkWn0807SynthesisControl::setDelayMode, SdkWn0807SynthesisControl::DelayMode::Mode1)
            .as("setDelayMode(1)"),
        reads("measureDelay", &SdkWn0807SynthesisControl::measureDelay, {0.0},
              SdkAnswers{IWn0807SynthesisControl::Duration(2.5e-6)}, 2.5e-6),
        writes("setMeasureDelay", &SdkWn0807SynthesisControl::setMeasureDelay, 0.1),
    })),
    operationName);

TEST_F(SdkWn0807Synthesis, FoldsUnknownNumbers)
{
    walkEnumeration(adapter, *fake, "rfPowerMode", &SdkWn0807SynthesisControl::rfPowerMode,
                    &SdkWn0807SynthesisControl::setRfPowerMode,
                    {.toSdk = {{0, 0}, {1, 1}, {2, 2}}, .unknownReads = 1, .unknownIsSent = 1});
    walkEnumeration(adapter, *fake, "ifMode", &SdkWn0807SynthesisControl::ifMode, &SdkWn0807SynthesisControl::setIfMode,
                    {.toSdk = {{0, 0}, {1, 1}}, .unknownReads = 1, .unknownIsSent = 1});
    walkEnumeration(adapter, *fake, "rfFilterMode", &SdkWn0807SynthesisControl::rfFilterMode,
                    &SdkWn0807SynthesisControl::setRfFilterMode,
                    {.toSdk = {{0, 0}, {1, 1}, {2, 2}}, .unknownReads = 2, .unknownIsSent = 2});
    walkEnumeration(adapter, *fake, "delayMode", &SdkWn0807SynthesisControl::delayMode,
                    &SdkWn0807SynthesisControl::setDelayMode,
                    {.toSdk = {{0, 0}, {1, 1}}, .unknownReads = 1, .unknownIsSent = 1});
    walkEnumeration<int>(
        *fake, "capacitanceMode", "setCapacitanceMode(0, ",
        {.toSdk = {{0, 0}, {1, 1}, {2, 2}, {3, 3}}, .unknownReads = 3, .unknownIsSent = 3},
        [&] { return static_cast<int>(adapter.capacitanceMode(Capacitor::Capacitor1)); },
        [&](int mode) { adapter.setCapacitanceMode(Capacitor::Capacitor1, static_cast<CapacitorMode>(mode)); });
}

TEST_F(SdkWn0807Synthesis, FoldsUnknownFilters)
{
    for (int filter = -2; filter <= 300; ++filter) {
        const int folded = filter >= 0 && filter <= 3 ? filter : 3;
        fake->answer("selectedRfFilter", std::optional(filter));
        EXPECT_EQ(adapter.selectedRfFilter(), static_cast<RfFilter>(folded));
        adapter.setSelectedRfFilter(static_cast<RfFilter>(filter));
        EXPECT_EQ(fake->calls().back(), "setSelectedRfFilter(" + std::to_string(folded) + ")");
        adapter.rfFilterFrom(static_cast<RfFilter>(filter));
        EXPECT_EQ(fake->calls().back(), "rfFilterFrom(" + std::to_string(folded) + ")");
        adapter.setRfFilterFrom(static_cast<RfFilter>(filter), 2.0);
        EXPECT_EQ(fake->calls().back(), "setRfFilterFrom(" + std::to_string(folded) + ", 2)");
    }
}

TEST_F(SdkWn0807Synthesis, SendsEveryCapacitorButTheFirstAsTheSecond)
{
    for (int capacitor = -2; capacitor <= 300; ++capacitor) {
        const std::string sent = capacitor == 0 ? "0" : "1";
        adapter.capacitanceMode(static_cast<Capacitor>(capacitor));
        EXPECT_EQ(fake->calls().back(), "capacitanceMode(" + sent + ")");
        adapter.capacitanceRange(static_cast<Capacitor>(capacitor));
        EXPECT_EQ(fake->calls().back(), "capacitanceRange(" + sent + ")");
        adapter.setCapacitanceMode(static_cast<Capacitor>(capacitor), CapacitorMode::Mode1);
        EXPECT_EQ(fake->calls().back(), "setCapacitanceMode(" + sent + ", 1)");
        adapter.setCapacitanceRange(static_cast<Capacitor>(capacitor), {1.0, 2.0});
        EXPECT_EQ(fake->calls().back(), "setCapacitanceRange(" + sent + ", 1, 2)");
    }
}

TEST_F(SdkWn0807Synthesis, CopiesRowsBitForBit)
{
    static_assert(sizeof(SdkWn0807SynthesisControl::PowerSyntEntry) == 16);
    static_assert(sizeof(IWn0807SynthesisControl::PowerSyntEntry) == 16);
    constexpr double nan = std::bit_cast<double>(std::uint64_t{0x7FF8DEADBEEF0001});
    const std::vector<IWn0807SynthesisControl::PowerSyntEntry> rows = {{nan, 255}, {-0.0, 0}};
    fake->answer("rfPowerDefaultRangeTable", std::span<const IWn0807SynthesisControl::PowerSyntEntry>(rows));
    const auto table = adapter.rfPowerDefaultRangeTable();
    ASSERT_EQ(table.size(), 2U);
    EXPECT_EQ(table.capacity(), 2U);
    EXPECT_EQ(std::bit_cast<std::uint64_t>(table[0].frequency), 0x7FF8DEADBEEF0001U);
    EXPECT_EQ(table[0].power, 255);
    EXPECT_TRUE(std::signbit(table[1].frequency));
}

TEST_F(SdkWn0807Synthesis, KeepsEmptyWhatIsEmptyInTheSdk)
{
    EXPECT_FALSE(adapter.selectedRfFilter());
    EXPECT_FALSE(adapter.rfFilterFrom(RfFilter::Filter1));
    EXPECT_FALSE(adapter.capacitanceRange(Capacitor::Capacitor1));
}

TEST_F(SdkWn0807Synthesis, GivesCopiesThatDoNotFollowTheInstrument)
{
    std::vector<IWn0807SynthesisControl::PowerSyntEntry> rows = {{1.0, 1}, {2.0, 2}};
    std::vector<double> ifs = {1.0};
    fake->answer("rfPowerRangeTable", std::span<const IWn0807SynthesisControl::PowerSyntEntry>(rows));
    fake->answer("supportedIfs", std::span<const double>(ifs));
    const auto table = adapter.rfPowerRangeTable();
    const auto supported = adapter.supportedIfs();
    rows[0].frequency = 9.0;
    ifs[0] = 9.0;

    EXPECT_EQ(table.capacity(), 2U);
    EXPECT_EQ(table[0].frequency, 1.0);
    EXPECT_THAT(supported, ElementsAre(1.0));
    EXPECT_EQ(supported.capacity(), 1U);
}

} // namespace tov::testing
