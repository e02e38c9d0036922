#pragma once

#include <cstdint>
#include <expected>

namespace tov::devices::service {

/// Two numbers of a notification about the serial number, as the instrument gives them: `first` is its
/// second number and `second` its first.
struct SerialNumberEvent
{
    std::uint32_t first = 0;
    std::uint32_t second = 0;
};

/// The serial number in the instrument's memory, neither formatted nor checked.
///
/// Reading and writing block until the instrument has answered, without a time limit. Whatever goes wrong,
/// an absent control included, is `Failed`.
///
/// Thread: *any thread*, but reading and writing not on the *SDK's notification thread*.
class ISerialNumberControl
{
public:
    enum class Error : std::uint32_t { Failed = 0 };

    /// Told of the serial number on the *SDK's notification thread*, while the list of observers is locked:
    /// it must not add or remove observers of the same control.
    class Observer
    {
    public:
        virtual ~Observer() = default;

        virtual void onSerialNumberEvent(const SerialNumberEvent& event) = 0;
    };

    virtual ~ISerialNumberControl() = default;

    virtual std::expected<unsigned int, Error> serialNumber() const = 0;
    virtual std::expected<void, Error> writeSerialNumber(unsigned int serialNumber) = 0;

    /// Appends `observer`, which is not owned and is told once for each time it was added. Works while the
    /// control is absent too.
    virtual void addObserver(Observer* observer) = 0;

    /// Removes every entry of `observer`; waits for a notification that is being delivered.
    virtual void removeObserver(Observer* observer) = 0;
};

} // namespace tov::devices::service
