#include "host/sessiononaconnection.h"

#include <QCoreApplication>

#include <gmock/gmock.h>

namespace tov::testing {

using SessionWithAnEventLoop = SessionOnAConnection;
using ::testing::ElementsAre;

TEST_F(SessionWithAnEventLoop, HasItPassOnWhatIsTold)
{
    onAnotherThread([this] {
        connection->release();
        connection->offer();
    });
    EXPECT_THAT(story, ElementsAre("offered")) << "the provider did not wait for the hold";
    QCoreApplication::processEvents();
    EXPECT_THAT(story, ElementsAre("offered", "second lets go", "first lets go", "released", "second lets go",
                                   "first lets go", "first comes back", "second comes back"));
}

TEST_F(SessionWithAnEventLoop, HearsNothingAfterItsEnd)
{
    onAnotherThread([this] { connection->release(); });
    session.reset();
    story.clear();
    QCoreApplication::processEvents();
    EXPECT_THAT(story, ElementsAre());
}

} // namespace tov::testing
