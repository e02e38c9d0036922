#pragma once

#include <cstddef>
#include <functional>
#include <system_error>
#include <vector>

namespace sdk::service {

/// Operations on the instrument's memory as a whole. Each answers through its callback, exactly once, on
/// any thread, before or after it returns.
///
/// Thread: *any thread*.
class IMemoryOperationsControl
{
public:
    /// Told of the operations' progress on the SDK's notification thread.
    class IObserver
    {
    public:
        virtual ~IObserver() = default;

        virtual void onNotification1(unsigned int a, unsigned int b) = 0;
        virtual void onNotification2(unsigned int a, unsigned int b) = 0;
        virtual void onNotification3(unsigned int a, unsigned int b) = 0;
        virtual void onNotification4(unsigned int a, unsigned int b) = 0;
    };

    virtual ~IMemoryOperationsControl() = default;

    virtual void reserved1() {}

    virtual void read(std::function<void(std::vector<std::byte>, std::error_code)> answer) = 0;
    virtual void write(std::vector<std::byte> data, std::function<void(std::error_code)> answer) = 0;
    virtual void erase(std::function<void(std::error_code)> answer) = 0;
    virtual void integrityCheck(std::function<void(std::error_code)> answer) = 0;

    virtual void addObserver(IObserver* observer) = 0;

    /// No notification reaches `observer` once this has returned.
    virtual void removeObserver(IObserver* observer) = 0;
};

} // namespace sdk::service
