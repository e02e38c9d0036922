#pragma once

#include "sdk/service/iloleakagecontrol.h"
#include "testing/recordingcontrol.h"

namespace tov::testing {

/// A fake of `sdk::service::ILoLeakageControl`.
class FakeLoLeakageControl final : public sdk::service::ILoLeakageControl, public RecordingControl
{
public:
    bool isEnabled() override { return called<bool>("isEnabled"); }
    void setEnabled(bool enabled) override { called("setEnabled", enabled); }
};

} // namespace tov::testing
