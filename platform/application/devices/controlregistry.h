#pragma once

#include "devices/devices_export.h"

#include <any>
#include <cstdint>
#include <functional>
#include <vector>

namespace tov::devices {

/// The application's list of control kinds, each with a function that creates a control for an owner.
///
/// Thread: *owner's thread* for `addEntry()`; afterwards any number of threads may read and create.
class DEVICES_EXPORT ControlRegistry
{
public:
    /// One kind of control for an owner of any type.
    struct ControlEntryBase
    {
        /// Registry key of the control kind.
        std::uint64_t key = 0;

        /// Takes the owner's pointer and gives the created control, or an empty value when the owner
        /// does not have it or is not of the expected type.
        std::function<std::any(std::any)> create;
    };

    /// One kind of control for owners of the type `Owner`; converts to what `addEntry()` takes.
    template <typename Owner>
    struct ControlEntry
    {
        /// Registry key of the control kind.
        std::uint64_t key = 0;

        /// Takes the owner and gives the created control, or an empty value.
        std::function<std::any(Owner*)> create;

        /// The same entry with the owner's type erased. Its function gives an empty value when it is
        /// called with anything but an `Owner*`; a null owner is not checked for. An empty `create`
        /// makes it throw `std::bad_function_call`.
        operator ControlEntryBase() &&; // NOLINT(google-explicit-constructor)
    };

    /// Appends a copy of `entry`.
    ///
    /// Throws `std::invalid_argument`, which names the key, when the key is already registered; the
    /// registry is unchanged then.
    void addEntry(const ControlEntryBase& entry);

    /// All entries, in the order in which they were added.
    const std::vector<ControlEntryBase>& entries() const noexcept { return m_entries; }

    /// Creates a control of the kind `key` for `owner`, which holds the owner's pointer exactly as the
    /// entry expects it (`sdk::IVna*`, never null). Empty when the owner does not have the control or
    /// is of another type.
    ///
    /// Throws `std::out_of_range`, which names the key, when no entry has it. What the create function
    /// throws passes through.
    std::any create(std::uint64_t key, std::any owner) const;

private:
    std::vector<ControlEntryBase> m_entries;
};

template <typename Owner>
ControlRegistry::ControlEntry<Owner>::operator ControlEntryBase() &&
{
    return {key, [create = create](std::any owner) -> std::any {
                try {
                    return create(std::any_cast<Owner*>(owner));
                } catch (const std::bad_any_cast&) {
                    return {};
                }
            }};
}

} // namespace tov::devices
