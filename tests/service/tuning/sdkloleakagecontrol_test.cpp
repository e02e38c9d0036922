#include "operations/operations.h"
#include "service/valueadaptercontract.h"

namespace tov::testing {

INSTANTIATE_TEST_SUITE_P(SdkLoLeakageControl, ValueAdapter, ::testing::ValuesIn(loLeakageOperations()), operationName);

} // namespace tov::testing
