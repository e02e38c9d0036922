#pragma once

#include <functional>
#include <system_error>

namespace sdk::service {

/// The serial number in the instrument's memory. Reading and writing answer through their callback,
/// exactly once, on any thread, before or after they return.
///
/// Thread: *any thread*.
class IMemorySerialNumberControl
{
public:
    /// Told of the serial number on the SDK's notification thread.
    class Observer
    {
    public:
        virtual ~Observer() = default;

        virtual void onSerialNumberEvent(unsigned int a, unsigned int b) = 0;
    };

    virtual ~IMemorySerialNumberControl() = default;

    virtual void reserved1() {}

    virtual void readSerialNumber(std::function<void(unsigned int, std::error_code)> answer) = 0;
    virtual void writeSerialNumber(unsigned int serialNumber, std::function<void(std::error_code)> answer) = 0;

    virtual void addObserver(Observer* observer) = 0;

    /// No notification reaches `observer` once this has returned.
    virtual void removeObserver(Observer* observer) = 0;
};

} // namespace sdk::service
