#pragma once

#include <cstddef>
#include <cstdint>
#include <expected>
#include <vector>

namespace tov::devices::service {

/// Two numbers of a notification about the instrument's memory, as the instrument gives them: `first` is
/// its second number and `second` its first.
struct MemoryOperationEvent
{
    std::uint32_t first = 0;
    std::uint32_t second = 0;
};

/// Operations on the instrument's memory as a whole.
///
/// The four operations block until the instrument has answered, without a time limit. Whatever goes wrong,
/// an absent control included, is `Failed`.
///
/// Thread: *any thread*, but the four operations not on the *SDK's notification thread*.
class IMemoryOperationsControl
{
public:
    enum class Error : std::uint32_t { Failed = 0 };

    /// Told of the operations on the *SDK's notification thread*, while the list of observers is locked: it
    /// must not add or remove observers of the same control.
    class IObserver
    {
    public:
        virtual ~IObserver() = default;

        virtual void onNotification1(const MemoryOperationEvent& event) = 0;
        virtual void onNotification2(const MemoryOperationEvent& event) = 0;
        virtual void onNotification3(const MemoryOperationEvent& event) = 0;
        virtual void onNotification4(const MemoryOperationEvent& event) = 0;
    };

    virtual ~IMemoryOperationsControl() = default;

    /// The whole contents.
    virtual std::expected<std::vector<std::byte>, Error> read() = 0;

    /// Replaces the contents; the length goes to the instrument unchecked.
    virtual std::expected<void, Error> write(const std::vector<std::byte>& data) = 0;

    virtual std::expected<void, Error> erase() = 0;

    /// Succeeds when the instrument finds its memory intact.
    virtual std::expected<void, Error> integrityCheck() = 0;

    /// Appends `observer`, which is not owned and is told once for each time it was added. Works while the
    /// control is absent too.
    virtual void addObserver(IObserver* observer) = 0;

    /// Removes every entry of `observer`; waits for a notification that is being delivered.
    virtual void removeObserver(IObserver* observer) = 0;
};

} // namespace tov::devices::service
