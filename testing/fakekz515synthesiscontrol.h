#pragma once

#include "sdk/service/ikz515synthesiscontrol.h"
#include "testing/recordingcontrol.h"

namespace tov::testing {

/// A fake of `sdk::service::IKZ515SynthesisControl`.
class FakeKz515SynthesisControl final : public sdk::service::IKZ515SynthesisControl, public RecordingControl
{
public:
    std::vector<double> availableReferenceFrequencies() override
    {
        return called<std::vector<double>>("availableReferenceFrequencies");
    }
    double currentReferenceFrequency() override { return called<double>("currentReferenceFrequency"); }
    void setReferenceFrequency(double frequency) override { called("setReferenceFrequency", frequency); }
};

} // namespace tov::testing
