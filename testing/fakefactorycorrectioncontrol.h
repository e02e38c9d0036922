#pragma once

#include "sdk/ifactorycorrectioncontrol.h"
#include "testing/observedcontrol.h"
#include "testing/recordingcontrol.h"

#include <cstdint>

namespace tov::testing {

/// A fake of `sdk::IFactoryCorrectionControl`.
class FakeFactoryCorrectionControl final : public sdk::IFactoryCorrectionControl,
                                           public RecordingControl,
                                           public ObservedControl<sdk::IFactoryCorrectionControl::IObserver>
{
public:
    std::uint16_t supportedCorrections() override { return called<std::uint16_t>("supportedCorrections"); }
    std::uint16_t validCorrections() override { return called<std::uint16_t>("validCorrections"); }
    std::uint16_t enabledCorrections() override { return called<std::uint16_t>("enabledCorrections"); }
    std::uint16_t modifiableCorrections() override { return called<std::uint16_t>("modifiableCorrections"); }
    void setEnabled(sdk::CorrectionFlag flag, bool enabled) override
    {
        called("setEnabled", static_cast<std::uint16_t>(flag), enabled);
    }
    void addObserver(IObserver* observer) override
    {
        called("addObserver");
        add(observer);
    }
    void removeObserver(IObserver* observer) override
    {
        called("removeObserver");
        remove(observer);
    }
};

} // namespace tov::testing
