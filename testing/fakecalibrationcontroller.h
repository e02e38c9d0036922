#pragma once

#include "sdk/service/calibrations/icalibrationcontroller.h"
#include "testing/observedcontrol.h"
#include "testing/recordingcontrol.h"

#include <functional>

namespace tov::testing {

/// A fake of `sdk::service::calibrations::ICalibrationController`.
class FakeCalibrationController final
    : public sdk::service::calibrations::ICalibrationController,
      public RecordingControl,
      public ObservedControl<sdk::service::calibrations::ICalibrationController::Observer>
{
public:
    /// Runs when an observer was registered; may throw.
    std::function<void()> afterAdding;

    void addObserver(Observer* observer) override
    {
        called("addObserver");
        add(observer);
        if (const auto after = afterAdding)
            after();
    }
    void removeObserver(Observer* observer) override
    {
        called("removeObserver");
        remove(observer);
    }
};

} // namespace tov::testing
