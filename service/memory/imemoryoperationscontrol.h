#pragma once

#include "devices/cxx23.h"

#include <cstddef>
#include <cstdint>
#include <expected>
#include <vector>

namespace tov::devices::service {

/// The two numbers of a notification about the instrument's memory, unchanged but in the other order.
struct MemoryOperationEvent
{
    std::uint32_t first = 0;  ///< the instrument's second number
    std::uint32_t second = 0; ///< the instrument's first number
};

/// Operations on the instrument's memory as a whole.
///
/// The four operations block until the instrument has answered, without a time limit. Whatever failure it
/// answers, and an absent control, is `Failed`; what it throws passes through.
///
/// Thread: *any thread*, but the four operations not on the *SDK's notification thread*.
class IMemoryOperationsControl
{
public:
    /// How an operation fails.
    enum class Error : std::uint32_t {
        Failed = 0 ///< the control is absent, or the instrument answered with an error
    };

    /// Told of the operations on the *SDK's notification thread*, while the list of observers is locked: it
    /// must not add or remove observers of the same control.
    ///
    /// The four notifications come in another order than the instrument's own; what they mean is the instrument's.
    class IObserver
    {
    public:
        virtual ~IObserver() = default;

        /// The instrument's fourth notification.
        virtual void onNotification1(const MemoryOperationEvent& event) = 0;

        /// The instrument's third notification.
        virtual void onNotification2(const MemoryOperationEvent& event) = 0;

        /// The instrument's first notification.
        virtual void onNotification3(const MemoryOperationEvent& event) = 0;

        /// The instrument's second notification.
        virtual void onNotification4(const MemoryOperationEvent& event) = 0;
    };

    virtual ~IMemoryOperationsControl() = default;

    /// The whole contents.
    virtual std::expected<std::vector<std::byte>, Error> read() = 0;

    /// Replaces the contents; the length goes to the instrument unchecked.
    virtual std::expected<void, Error> write(const std::vector<std::byte>& data) = 0;

    /// Erases the whole contents.
    virtual std::expected<void, Error> erase() = 0;

    /// Succeeds when the instrument finds its memory intact.
    virtual std::expected<void, Error> integrityCheck() = 0;

    /// Appends `observer`, which must not be null and is not owned. Observers are told in the order in which they were
    /// added, once for each time. Waits for a notification that is being delivered. Works while the control is absent
    /// too.
    virtual void addObserver(IObserver* observer) = 0;

    /// Removes every entry of `observer`; waits for a notification that is being delivered.
    virtual void removeObserver(IObserver* observer) = 0;
};

} // namespace tov::devices::service
