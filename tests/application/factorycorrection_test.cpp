#include "devices/factorycorrection.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <set>

namespace tov::testing {

using devices::FactoryCorrection;
using devices::fromSdkCorrection;
using devices::toSdkCorrection;

TEST(FactoryCorrections, HaveOneFlagEachThatLeadsBack)
{
    std::set<sdk::CorrectionFlag> flags;
    for (int i = 0; i <= static_cast<int>(FactoryCorrection::Correction10); ++i) {
        const auto flag = toSdkCorrection(static_cast<FactoryCorrection>(i));
        const auto bits = static_cast<unsigned int>(flag);
        EXPECT_EQ(bits & (bits - 1), 0U) << "a single bit";
        EXPECT_EQ(fromSdkCorrection(flag), static_cast<FactoryCorrection>(i));
        flags.insert(flag);
    }
    EXPECT_EQ(flags.size(), 10U);
}

TEST(FactoryCorrections, AreKnownForTenOfAllFlags)
{
    int known = 0;
    for (unsigned int flag = 0; flag <= 0xFFFF; ++flag)
        known += fromSdkCorrection(static_cast<sdk::CorrectionFlag>(flag)) ? 1 : 0;
    EXPECT_EQ(known, 10);
}

TEST(FactoryCorrections, OfNoFlagForAValueThatIsNone)
{
    EXPECT_EQ(toSdkCorrection(static_cast<FactoryCorrection>(10)), sdk::CorrectionFlag{0});
    EXPECT_EQ(toSdkCorrection(static_cast<FactoryCorrection>(255)), sdk::CorrectionFlag{0});
}

} // namespace tov::testing
