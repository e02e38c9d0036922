#pragma once

#include "sdk/service/iyqsynthesiscontrol.h"
#include "testing/recordingcontrol.h"

namespace tov::testing {

/// A fake of `sdk::service::IYqSynthesisControl`.
class FakeYqSynthesisControl : public sdk::service::IYqSynthesisControl, public RecordingControl
{
public:
    void enableManualIf(bool enabled) override { called("enableManualIf", enabled); }
    bool manualIfEnabled() override { return called<bool>("manualIfEnabled"); }
    void setSelectedIf(int index) override { called("setSelectedIf", index); }
    int selectedIf() override { return called<int>("selectedIf"); }
    std::span<const double> supportedIfs() override { return called<std::span<const double>>("supportedIfs"); }
};

} // namespace tov::testing
