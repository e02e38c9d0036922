#include "console/notifications/watching.h"
#include "console/session/consolesession.h"

#include <gtest/gtest.h>

namespace tov::console {

// In this process, because nothing that a user can type takes a control away during a command.
TEST(LostControls, AreAFailureOfWhoWatchesThem)
{
    ConsoleSession session{Options()};
    const auto& control = host::controls::temperature;
    EXPECT_NO_THROW(requireStillThere(session, control));
    session.releaseControls();
    EXPECT_THROW(requireStillThere(session, control), Failure);
    session.offerControls();
    EXPECT_NO_THROW(requireStillThere(session, control)) << "it may come again";
}

} // namespace tov::console
