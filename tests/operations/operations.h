#pragma once

#include "operations/operation.h"

namespace tov::testing {

// The public operations of each adapter.
Operations fileMemoryOperations();
Operations potentiometersOperations();
Operations usbIdOperations();
Operations serialNumberOperations();
Operations memoryOperationsOperations();
Operations ulkSynthesisOperations();
Operations ulkPowerOperations();
Operations wn0807SynthesisOperations();
Operations wn0807PowerOperations();
Operations loLeakageOperations();
Operations kz515PowerOperations();
Operations kz515SynthesisOperations();
Operations yqSynthesisOperations();
Operations systemTermsOperations();
Operations ifswCalibrationOperations();
Operations factoryPowerCalibrationOperations();
Operations factoryCorrectionsOperations();
Operations temperatureOperations();
Operations calibrationControllerOperations();

/// All of them.
Operations allOperations();

} // namespace tov::testing
