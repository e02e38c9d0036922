#include "operations/operations.h"
#include "service/valueadaptercontract.h"

namespace tov::testing {

INSTANTIATE_TEST_SUITE_P(SdkKz515SynthesisControl, ValueAdapter, ::testing::ValuesIn(kz515SynthesisOperations()),
                         operationName);

} // namespace tov::testing
