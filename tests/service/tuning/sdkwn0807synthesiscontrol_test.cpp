#include "operations/operations.h"
#include "service/enumerationwalk.h"
#include "service/tuning/sdkwn0807synthesiscontrol.h"
#include "service/valueadaptercontract.h"
#include "testing/fakewn0807synthesiscontrol.h"

#include <gmock/gmock.h>

#include <bit>
#include <cmath>
#include <cstdint>
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

class SdkWn0807Synthesis : public ::testing::Test
{
protected:
    std::shared_ptr<FakeWn0807SynthesisControl> fake = std::make_shared<FakeWn0807SynthesisControl>();
    SdkWn0807SynthesisControl adapter{devices::ReacquiringControl<IWn0807SynthesisControl>(
        [this] { return sdk::ControlHandle<IWn0807SynthesisControl>(fake); })};
};

} // namespace

INSTANTIATE_TEST_SUITE_P(SdkWn0807SynthesisControl, ValueAdapter, ::testing::ValuesIn(wn0807SynthesisOperations()),
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
