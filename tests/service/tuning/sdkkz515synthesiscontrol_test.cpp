#include "fakes/fakekz515synthesiscontrol.h"
#include "service/tuning/sdkkz515synthesiscontrol.h"
#include "service/valueadaptercontract.h"

namespace tov::testing {

using devices::service::SdkKz515SynthesisControl;
using sdk::service::IKZ515SynthesisControl;

INSTANTIATE_TEST_SUITE_P(SdkKz515SynthesisControl, ValueAdapter,
                         (operations<SdkKz515SynthesisControl, IKZ515SynthesisControl, FakeKz515SynthesisControl>({
                             reads("availableReferenceFrequencies",
                                   &SdkKz515SynthesisControl::availableReferenceFrequencies, {{}}, {{1e7, 5e6}}),
                             reads("currentReferenceFrequency", &SdkKz515SynthesisControl::currentReferenceFrequency,
                                   {0.0}, {1e7}),
                             writes("setReferenceFrequency", &SdkKz515SynthesisControl::setReferenceFrequency, 0.1),
                         })),
                         operationName);

} // namespace tov::testing
