#include "simulator/support/simulatorerror.h"

#include <string>

namespace tov::simulator {

namespace {

class SimulatorCategory final : public std::error_category
{
public:
    const char* name() const noexcept override { return "simulated instrument"; }

    std::string message(int value) const override
    {
        switch (static_cast<SimulatorError>(value)) {
        case SimulatorError::NotFound:
            return "not found";
        case SimulatorError::NoSpaceLeft:
            return "no space left";
        case SimulatorError::StoreUnavailable:
            return "store unavailable";
        case SimulatorError::OutOfRange:
            return "value out of range";
        case SimulatorError::NoSuchPotentiometer:
            return "no such potentiometer";
        case SimulatorError::MemoryDamaged:
            return "memory damaged";
        }
        return "error " + std::to_string(value);
    }
};

} // namespace

const std::error_category& simulatorCategory() noexcept
{
    static const SimulatorCategory category;
    return category;
}

std::error_code make_error_code(SimulatorError error) noexcept
{
    return {static_cast<int>(error), simulatorCategory()};
}

} // namespace tov::simulator
