#pragma once

#include "conformance/bench/bench.h"

namespace tov::conformance {

/// The checks, each named after what must be.
namespace lookup {
Seen givesExactlyTheInterface(Bench& bench);
Seen givesNothingForWhatIsNotThere(Bench& bench);
Seen doesNotThrow(Bench& bench);
Seen isCheapWhenThereIsNothing(Bench& bench);
} // namespace lookup

namespace life {
Seen instrumentOutlivesItsConnection(Bench& bench);
Seen lastOwnerDestroys(Bench& bench);
Seen oldControlsGoAndNewOnesCome(Bench& bench);
} // namespace life

namespace operations {
Seen bearManyThreads(Bench& bench);
Seen giveViewsThatStay(Bench& bench);
Seen bearQuestionsForAvailability(Bench& bench);
} // namespace operations

namespace callbacks {
Seen areCalledOnce(Bench& bench);
Seen areCalledOnceMoreAtMostWhenTheyThrow(Bench& bench);
Seen areCalledInTime(Bench& bench);
Seen areCalledWhileTheCallerWaits(Bench& bench);
Seen areNotCalledByWhatThrows(Bench& bench);
Seen tellFailuresByTheirNumber(Bench& bench);
Seen tellReadableTextsOfFiles(Bench& bench);
} // namespace callbacks

namespace observers {
Seen hearNothingOnceRemoved(Bench& bench);
Seen areIgnoredWhenUnknown(Bench& bench);
Seen hearNothingOfControlsThatAreGone(Bench& bench);
Seen mayRegisterTwice(Bench& bench);
Seen areNotRegisteredByWhatThrows(Bench& bench);
Seen areRemovedWithEveryRegistration(Bench& bench);
Seen mayBeRemovedInsideTheirRegistration(Bench& bench);
Seen hearOnThreadsOfTheirOwn(Bench& bench);
Seen mayUseTheControlWhenTold(Bench& bench);
Seen registerAgainWithoutExceptions(Bench& bench);
Seen changeObserversWhenTold(Bench& bench);
} // namespace observers

} // namespace tov::conformance
