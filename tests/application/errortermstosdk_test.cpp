#include "devices/errortermstosdk.h"

#include <gtest/gtest.h>

#include <bit>
#include <cstdint>
#include <limits>

namespace tov::testing {

namespace {

std::uint64_t bits(double number)
{
    return std::bit_cast<std::uint64_t>(number);
}

const double odd[] = {-0.0, std::numeric_limits<double>::denorm_min(), -std::numeric_limits<double>::infinity(),
                      std::bit_cast<double>(std::uint64_t{0x7FF0'0000'0000'0001}), 1.0 / 3.0};

vna::ErrorTerms::Values values(double offset)
{
    vna::ErrorTerms::Values all;
    for (const double number : odd)
        all.emplace_back(number, offset);
    return all;
}

void expectSame(const std::vector<sdk::corrections::Complex>& converted, const vna::ErrorTerms::Values& original)
{
    ASSERT_EQ(converted.size(), original.size());
    for (std::size_t i = 0; i < original.size(); ++i) {
        EXPECT_EQ(bits(converted[i].real), bits(original[i].real()));
        EXPECT_EQ(bits(converted[i].imaginary), bits(original[i].imag()));
    }
}

} // namespace

TEST(ErrorTermsToSdk, KeepsEveryNumberBitForBitInItsPlace)
{
    vna::ErrorTerms terms;
    terms.frequencies.assign(std::begin(odd), std::end(odd));
    terms.ports = {{1, values(1), values(2), values(3)}, {2, values(4), values(5), values(6)}};
    terms.portPairs = {{1, 2, values(7), values(8), values(9)}, {2, 1, values(10), values(11), values(12)}};

    const sdk::corrections::ErrorTerms converted = devices::errorTermsToSdk(terms);

    ASSERT_EQ(converted.frequencies.size(), terms.frequencies.size());
    for (std::size_t i = 0; i < terms.frequencies.size(); ++i)
        EXPECT_EQ(bits(converted.frequencies[i]), bits(terms.frequencies[i]));
    ASSERT_EQ(converted.ports.size(), 2U);
    ASSERT_EQ(converted.paths.size(), 2U);
    for (std::size_t i = 0; i < 2; ++i) {
        EXPECT_EQ(converted.ports[i].port, terms.ports[i].port);
        expectSame(converted.ports[i].directivity, terms.ports[i].directivity);
        expectSame(converted.ports[i].sourceMatch, terms.ports[i].sourceMatch);
        expectSame(converted.ports[i].reflectionTracking, terms.ports[i].reflectionTracking);
        EXPECT_EQ(converted.paths[i].sourcePort, terms.portPairs[i].sourcePort);
        EXPECT_EQ(converted.paths[i].receiverPort, terms.portPairs[i].receiverPort);
        expectSame(converted.paths[i].loadMatch, terms.portPairs[i].loadMatch);
        expectSame(converted.paths[i].transmissionTracking, terms.portPairs[i].transmissionTracking);
        expectSame(converted.paths[i].isolation, terms.portPairs[i].isolation);
    }
}

TEST(ErrorTermsToSdk, ConvertsNothingIntoNothing)
{
    const auto converted = devices::errorTermsToSdk({});
    EXPECT_TRUE(converted.frequencies.empty());
    EXPECT_TRUE(converted.ports.empty());
    EXPECT_TRUE(converted.paths.empty());
}

} // namespace tov::testing
