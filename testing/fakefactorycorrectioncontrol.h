#pragma once

#include "sdk/ifactorycorrectioncontrol.h"
#include "testing/observedfake.h"

#include <cstdint>

namespace tov::testing {

/// A fake of `sdk::IFactoryCorrectionControl`.
class FakeFactoryCorrectionControl final
    : public ObservedFake<sdk::IFactoryCorrectionControl, sdk::IFactoryCorrectionControl::IObserver>
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
};

} // namespace tov::testing
