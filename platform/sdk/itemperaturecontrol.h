#pragma once

#include <string>
#include <unordered_map>

namespace sdk {

/// The temperatures of the instrument and of its modules, in the instrument's unit.
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

        /// The temperatures must be read again. The library does so during this call; what fails then is thrown out of
        /// it.
        virtual void onTemperatureChanged() = 0;
    };

    virtual ~ITemperatureControl() = default;

    /// Not used by this library; keeps its slot.
    virtual void reserved1() {}

    /// The overall temperature.
    virtual float temperature() = 0;

    /// The temperature of each module by its name in UTF-8. The reference stays valid while the control lives. The
    /// library copies at once; until then the map must not change, also when other threads call.
    virtual const std::unordered_map<std::string, float>& modulesTemperature() = 0;

    /// Tells `observer`, which is not owned, from now on; it may be told before this returns. It may come again for one
    /// that is registered: what that does is the SDK's.
    virtual void addObserver(Observer* observer) = 0;

    /// No notification reaches `observer` once this has returned. One that is not registered is ignored.
    virtual void removeObserver(Observer* observer) = 0;
};

} // namespace sdk
