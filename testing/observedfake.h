#pragma once

#include "testing/observedcontrol.h"
#include "testing/recordingcontrol.h"

namespace tov::testing {

/// Base of the fakes of controls that are observed: `Recording` is `RecordingControl` or what stands on it.
template <typename SdkIface, typename SdkObserver, typename Recording = RecordingControl>
class ObservedFake : public SdkIface, public Recording, public ObservedControl<SdkObserver>
{
public:
    /// Whether it is recorded, too, when an observer comes or goes.
    bool recordsObservers = true;

    /// Registers `observer`, once more if it is.
    void addObserver(SdkObserver* observer) override
    {
        if (recordsObservers)
            this->called("addObserver");
        this->add(observer);
    }

    /// Ends every registration of `observer`.
    void removeObserver(SdkObserver* observer) override
    {
        if (recordsObservers)
            this->called("removeObserver");
        this->remove(observer);
    }

protected:
    ~ObservedFake() = default;
};

} // namespace tov::testing
