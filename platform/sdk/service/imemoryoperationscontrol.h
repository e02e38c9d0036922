#pragma once

#include <cstddef>
#include <functional>
#include <system_error>
#include <vector>

namespace sdk::service {

/// Operations on the instrument's memory as a whole. Each answers through its callback, exactly once, on
/// any thread, before or after it returns.
///
/// An error code of the number 0 is a success, whatever its category; any other one is a failure, and what comes with
/// it is not looked at. What an operation throws instead of answering reaches the application.
///
/// Thread: *any thread*.
class IMemoryOperationsControl
{
public:
    /// Told of the operations on the SDK's notification thread. The library does not know what the notifications and
    /// their two numbers mean; the application gets them in another order.
    class IObserver
    {
    public:
        virtual ~IObserver() = default;

        /// The instrument's first notification; the application's third.
        virtual void onNotification1(unsigned int a, unsigned int b) = 0;

        /// The instrument's second notification; the application's fourth.
        virtual void onNotification2(unsigned int a, unsigned int b) = 0;

        /// The instrument's third notification; the application's second.
        virtual void onNotification3(unsigned int a, unsigned int b) = 0;

        /// The instrument's fourth notification; the application's first.
        virtual void onNotification4(unsigned int a, unsigned int b) = 0;
    };

    virtual ~IMemoryOperationsControl() = default;

    /// Not used by this library; keeps its slot.
    virtual void reserved1() {}

    /// Answers with the whole contents.
    virtual void read(std::function<void(std::vector<std::byte>, std::error_code)> answer) = 0;

    /// Replaces the contents by `data`, which may be of any length.
    virtual void write(std::vector<std::byte> data, std::function<void(std::error_code)> answer) = 0;

    /// Erases the whole contents.
    virtual void erase(std::function<void(std::error_code)> answer) = 0;

    /// Answers with a success when the memory is intact.
    virtual void integrityCheck(std::function<void(std::error_code)> answer) = 0;

    /// Tells `observer`, which is not owned, from now on; it may be told before this returns. It may come again for one
    /// that is registered: what that does is the SDK's. If this throws, `observer` is not registered.
    virtual void addObserver(IObserver* observer) = 0;

    /// No notification reaches `observer` once this has returned. One that is not registered is ignored.
    virtual void removeObserver(IObserver* observer) = 0;
};

} // namespace sdk::service
