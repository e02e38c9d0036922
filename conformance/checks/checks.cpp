#include "conformance/checks/checks.h"

#include "conformance/checks/rulechecks.h"

namespace tov::conformance {

const std::vector<Check>& checks()
{
    static const std::vector<Check> all{
        {"LOOKUP-1", &lookup::givesExactlyTheInterface},
        {"LOOKUP-2", &lookup::givesNothingForWhatIsNotThere},
        {"LOOKUP-3", &lookup::doesNotThrow},
        {"LOOKUP-4", &lookup::isCheapWhenThereIsNothing},
        {"LIFE-1", &life::instrumentOutlivesItsConnection},
        {"LIFE-2", &life::lastOwnerDestroys},
        {"LIFE-3", &life::oldControlsGoAndNewOnesCome},
        {"OPS-1", &operations::bearManyThreads},
        {"OPS-2", nullptr,
         "what an operation does to the instrument does not tell by which slot it was called; ./check abi compares the "
         "slots"},
        {"OPS-3", &operations::giveViewsThatStay},
        {"OPS-4", &operations::bearQuestionsForAvailability},
        {"OPS-5", nullptr, "whatever an SDK does with an argument keeps it"},
        {"OPS-6", nullptr, "it allows and demands nothing; CALLBACK-5 looks at what follows from it"},
        {"CALLBACK-1", &callbacks::areCalledOnce},
        {"CALLBACK-2", &callbacks::areCalledOnceMoreAtMostWhenTheyThrow},
        {"CALLBACK-3", &callbacks::areCalledInTime},
        {"CALLBACK-4", &callbacks::areCalledWhileTheCallerWaits},
        {"CALLBACK-5", &callbacks::areNotCalledByWhatThrows},
        {"CALLBACK-6", &callbacks::tellFailuresByTheirNumber},
        {"CALLBACK-7", &callbacks::tellReadableTextsOfFiles},
        {"OBSERVER-1", &observers::hearNothingOnceRemoved},
        {"OBSERVER-2", &observers::areIgnoredWhenUnknown},
        {"OBSERVER-3", &observers::hearNothingOfControlsThatAreGone},
        {"OBSERVER-4", &observers::mayRegisterTwice},
        {"OBSERVER-5", &observers::areNotRegisteredByWhatThrows},
        {"OBSERVER-6", &observers::areRemovedWithEveryRegistration},
        {"OBSERVER-7", &observers::mayBeRemovedInsideTheirRegistration},
        {"OBSERVER-8", &observers::hearOnThreadsOfTheirOwn},
        {"OBSERVER-9", &observers::mayUseTheControlWhenTold},
        {"OBSERVER-10", &observers::registerAgainWithoutExceptions},
        {"OBSERVER-11", &observers::changeObserversWhenTold},
    };
    return all;
}

} // namespace tov::conformance
