#include "operations/operations.h"
#include "operations/valuerows.h"
#include "service/tuning/sdkyqsynthesiscontrol.h"
#include "testing/fakeyqsynthesiscontrol.h"

#include <array>
#include <span>

namespace tov::testing {

using namespace devices::service;
using namespace sdk::service;

namespace {

constexpr std::array ifs = {7.5e6, 10.7e6, 2.5e6};

} // namespace

Rows<SdkYqSynthesisControl> yqSynthesisRows()
{
    return {
        reads("manualIfEnabled", &SdkYqSynthesisControl::manualIfEnabled, {false}, {true}),
        writes("enableManualIf", &SdkYqSynthesisControl::enableManualIf, true),
        reads("selectedIf", &SdkYqSynthesisControl::selectedIf, {-1}, {3}),
        writes("setSelectedIf", &SdkYqSynthesisControl::setSelectedIf, -7),
        reads("supportedIfs", &SdkYqSynthesisControl::supportedIfs, {{}}, SdkAnswers{std::span<const double>(ifs)},
              {7.5e6, 10.7e6, 2.5e6}),
    };
}

Operations yqSynthesisOperations()
{
    return operations<SdkYqSynthesisControl, IYqSynthesisControl, FakeYqSynthesisControl>(yqSynthesisRows());
}

} // namespace tov::testing
