#pragma once

// The contract that every operation of every value adapter keeps, as one parameterized suite
// (valueadaptercontract_test.cpp). An adapter joins it with its operations (operations/operations.h):
//
//   INSTANTIATE_TEST_SUITE_P(SdkThingControl, ValueAdapter, ::testing::ValuesIn(thingOperations()), operationName);

#include "operations/operation.h"

#include <gtest/gtest.h>

#include <memory>
#include <ostream>
#include <string>

namespace tov::testing {

inline std::string operationName(const ::testing::TestParamInfo<Operation>& info)
{
    return info.param.name;
}

inline void PrintTo(const Operation& operation, std::ostream* stream)
{
    *stream << operation.name;
}

class ValueAdapter : public ::testing::TestWithParam<Operation>
{
protected:
    const Operation& operation = GetParam();
    std::unique_ptr<Stage> stage = operation.makeStage();
};

} // namespace tov::testing
