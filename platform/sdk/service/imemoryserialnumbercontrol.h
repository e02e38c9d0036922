#pragma once

#include <functional>
#include <system_error>

namespace sdk::service {

/// The serial number in the instrument's memory. Reading and writing answer through their callback,
/// exactly once, on any thread, before or after they return.
///
/// An error code of the number 0 is a success, whatever its category; any other one is a failure, and what comes with
/// it is not looked at. What an operation throws instead of answering reaches the application.
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

        /// The instrument's notification. The library passes the two numbers on, `b` before `a`, without knowing what
        /// they mean.
        virtual void onSerialNumberEvent(unsigned int a, unsigned int b) = 0;
    };

    virtual ~IMemorySerialNumberControl() = default;

    /// Not used by this library; keeps its slot.
    virtual void reserved1() {}

    /// Answers with the number.
    virtual void readSerialNumber(std::function<void(unsigned int, std::error_code)> answer) = 0;

    /// Replaces the number, which comes unchecked.
    virtual void writeSerialNumber(unsigned int serialNumber, std::function<void(std::error_code)> answer) = 0;

    /// Tells `observer`, which is not owned, from now on; it may be told before this returns. It may come again for one
    /// that is registered: what that does is the SDK's. If this throws, `observer` is not registered.
    virtual void addObserver(Observer* observer) = 0;

    /// No notification reaches `observer` once this has returned. One that is not registered is ignored.
    virtual void removeObserver(Observer* observer) = 0;
};

} // namespace sdk::service
