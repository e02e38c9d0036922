#include "operations/operations.h"

#include <algorithm>
#include <iterator>

namespace tov::testing {

Operations allOperations()
{
    Operations all;
    for (const auto of :
         {fileMemoryOperations, potentiometersOperations, usbIdOperations, serialNumberOperations,
          memoryOperationsOperations, ulkSynthesisOperations, ulkPowerOperations, wn0807SynthesisOperations,
          wn0807PowerOperations, loLeakageOperations, kz515PowerOperations, kz515SynthesisOperations,
          yqSynthesisOperations, systemTermsOperations, ifswCalibrationOperations, factoryPowerCalibrationOperations,
          factoryCorrectionsOperations, temperatureOperations, calibrationControllerOperations}) {
        Operations some = of();
        std::ranges::move(some, std::back_inserter(all));
    }
    return all;
}

} // namespace tov::testing
