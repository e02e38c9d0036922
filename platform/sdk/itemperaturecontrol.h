#pragma once

#include <string>
#include <unordered_map>

namespace sdk {

/// The temperatures of the instrument and of its modules.
///
/// Thread: *any thread*.
class ITemperatureControl
{
public:
    /// Told of the temperatures on the SDK's notification thread.
    class Observer
    {
    public:
        virtual ~Observer() = default;

        virtual void onTemperatureChanged() = 0;
    };

    virtual ~ITemperatureControl() = default;

    virtual void reserved1() {}

    virtual float temperature() = 0;

    /// The temperature of each module by its name. The reference stays valid while the control lives.
    virtual const std::unordered_map<std::string, float>& modulesTemperature() = 0;

    virtual void addObserver(Observer* observer) = 0;

    /// No notification reaches `observer` once this has returned.
    virtual void removeObserver(Observer* observer) = 0;
};

} // namespace sdk
