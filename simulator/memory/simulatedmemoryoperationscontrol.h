#pragma once

#include "sdk/service/imemoryoperationscontrol.h"
#include "simulator/support/controlstate.h"
#include "simulator/support/observers.h"

#include <cstddef>
#include <memory>
#include <mutex>
#include <system_error>
#include <vector>

namespace tov::simulator {

/// The memory of the simulated instrument. Erased bytes are 0xFF; a shorter content leaves the rest erased.
class MemoryState final : public ControlState
{
public:
    explicit MemoryState(std::size_t size);

    std::vector<std::byte> read() const;

    /// Fails with `OutOfRange` for more bytes than the memory has.
    std::error_code write(const std::vector<std::byte>& data);

    void erase();

    /// Fails with `MemoryDamaged` when a byte is not what was written.
    std::error_code check() const;

    /// Makes the byte at `offset` the opposite of what was written, as a broken cell does. Throws `std::out_of_range`.
    void damage(std::size_t offset);

    std::size_t size() const;

    QCborMap save() const override;
    void restore(const QCborMap& saved) override;

private:
    mutable std::mutex m_mutex; // guards all below
    std::vector<std::byte> m_contents;
    std::vector<std::byte> m_intended; // what the contents were written as
};

/// The whole-memory operations as the simulated instrument offers them.
///
/// It tells of its progress, in bytes done and bytes in all, four times an operation: reading by notification
/// 1, writing by 2, erasing by 3, checking by 4.
class SimulatedMemoryOperationsControl final
    : public ObservedControl<sdk::service::IMemoryOperationsControl, sdk::service::IMemoryOperationsControl::IObserver>
{
public:
    SimulatedMemoryOperationsControl(std::shared_ptr<Machine> machine, std::shared_ptr<MemoryState> state);

    void read(std::function<void(std::vector<std::byte>, std::error_code)> answer) override;
    void write(std::vector<std::byte> data, std::function<void(std::error_code)> answer) override;
    void erase(std::function<void(std::error_code)> answer) override;
    void integrityCheck(std::function<void(std::error_code)> answer) override;

private:
    using Notification = void (IObserver::*)(unsigned int, unsigned int);

    std::function<void()> progress(Notification notification) const;

    const std::shared_ptr<Machine> m_machine;
    const std::shared_ptr<MemoryState> m_state;
};

} // namespace tov::simulator
