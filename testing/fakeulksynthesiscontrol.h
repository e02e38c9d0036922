#pragma once

#include "sdk/service/iulksynthesiscontrol.h"
#include "testing/recordingcontrol.h"

namespace tov::testing {

/// A fake of `sdk::service::IUlkSynthesisControl`.
class FakeUlkSynthesisControl final : public sdk::service::IUlkSynthesisControl, public RecordingControl
{
public:
    void setLoLeakageMode(bool on) override { called("setLoLeakageMode", on); }
    bool loLeakageMode() override { return called<bool>("loLeakageMode"); }
    void enableManualIf(bool enabled) override { called("enableManualIf", enabled); }
    bool manualIfEnabled() override { return called<bool>("manualIfEnabled"); }
    void setSelectedIf(int index) override { called("setSelectedIf", index); }
    int selectedIf() override { return called<int>("selectedIf"); }
    std::span<const double> supportedIfs() override { return called<std::span<const double>>("supportedIfs"); }
    void setFilter1Frequency(double frequency) override { called("setFilter1Frequency", frequency); }
    double filter1Frequency() override { return called<double>("filter1Frequency"); }
    void enableManualRef(bool enabled) override { called("enableManualRef", enabled); }
    bool manualRefEnabled() override { return called<bool>("manualRefEnabled"); }
    void setSelectedRef(int index) override { called("setSelectedRef", index); }
    int selectedRef() override { return called<int>("selectedRef"); }
    std::span<const double> supportedRefs() override { return called<std::span<const double>>("supportedRefs"); }
    void reset() override { called("reset"); }
};

} // namespace tov::testing
