#pragma once

#include "devices/cxx23.h"

#include <cstdint>
#include <expected>

namespace tov::devices::service {

/// The two numbers of a notification about the serial number, unchanged but in the other order.
struct SerialNumberEvent
{
    std::uint32_t first = 0;  ///< the instrument's second number
    std::uint32_t second = 0; ///< the instrument's first number
};

/// The serial number in the instrument's memory, neither formatted nor checked.
///
/// Reading and writing block until the instrument has answered, without a time limit. Whatever failure it
/// answers, and an absent control, is `Failed`; what it throws passes through.
///
/// Thread: *any thread*, but reading and writing not on the *SDK's notification thread*.
class ISerialNumberControl
{
public:
    /// How reading or writing fails.
    enum class Error : std::uint32_t {
        Failed = 0 ///< the control is absent, or the instrument answered with an error
    };

    /// Told of the serial number on the *SDK's notification thread*, while the list of observers is locked:
    /// it must not add or remove observers of the same control.
    class Observer
    {
    public:
        virtual ~Observer() = default;

        /// The instrument's notification; what it means is the instrument's.
        virtual void onSerialNumberEvent(const SerialNumberEvent& event) = 0;
    };

    virtual ~ISerialNumberControl() = default;

    /// The number, read from the instrument by each call.
    virtual std::expected<unsigned int, Error> serialNumber() const = 0;

    /// Replaces the number; it is not read back.
    virtual std::expected<void, Error> writeSerialNumber(unsigned int serialNumber) = 0;

    /// Appends `observer`, which must not be null and is not owned. Observers are told in the order in which they were
    /// added, once for each time. Waits for a notification that is being delivered. Works while the control is absent
    /// too.
    virtual void addObserver(Observer* observer) = 0;

    /// Removes every entry of `observer`; waits for a notification that is being delivered.
    virtual void removeObserver(Observer* observer) = 0;
};

} // namespace tov::devices::service
