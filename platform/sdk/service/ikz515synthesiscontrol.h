#pragma once

#include <vector>

namespace sdk::service {

/// Reference frequency of the Kz515 module.
///
/// Thread: *any thread*.
class IKZ515SynthesisControl
{
public:
    virtual ~IKZ515SynthesisControl() = default;

    virtual void reserved1() {}

    /// In the instrument's unit.
    virtual std::vector<double> availableReferenceFrequencies() = 0;

    /// In the instrument's unit.
    virtual double currentReferenceFrequency() = 0;

    /// In the instrument's unit.
    virtual void setReferenceFrequency(double frequency) = 0;
};

} // namespace sdk::service
