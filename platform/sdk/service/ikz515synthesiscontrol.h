#pragma once

#include <vector>

namespace sdk::service {

/// Reference frequency of the Kz515 module, in the instrument's unit.
///
/// Thread: *any thread*.
class IKZ515SynthesisControl
{
public:
    virtual ~IKZ515SynthesisControl() = default;

    /// Not used by this library; keeps its slot.
    virtual void reserved1() {}

    /// The reference frequencies that the module can use.
    virtual std::vector<double> availableReferenceFrequencies() = 0;

    /// The reference frequency that is in force.
    virtual double currentReferenceFrequency() = 0;

    /// Sets the reference frequency, which may be one that is not available.
    virtual void setReferenceFrequency(double frequency) = 0;
};

} // namespace sdk::service
