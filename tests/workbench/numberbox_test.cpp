#include "workbench/panels/numberbox.h"

#include <gtest/gtest.h>

namespace tov::testing {

TEST(NumberBox, GivesANumberBackToTheLastDigitUntilItIsEdited)
{
    constexpr double exact = 0.12345678912; // one more than the box shows
    workbench::NumberBox box;
    box.showNumber(exact);
    EXPECT_EQ(box.text(), "0.123456789");
    EXPECT_EQ(box.number(), exact);
    box.setValue(0.25);
    EXPECT_EQ(box.number(), 0.25);
    box.showNumber({});
    EXPECT_EQ(box.number(), std::nullopt);
}

} // namespace tov::testing
