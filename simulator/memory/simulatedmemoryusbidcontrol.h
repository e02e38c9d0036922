#pragma once

#include "sdk/service/imemoryusbidcontrol.h"
#include "simulator/support/controlstate.h"
#include "simulator/support/machine.h"

#include <memory>
#include <mutex>

namespace tov::simulator {

class UsbIdState final : public ControlState
{
public:
    using UsbId = sdk::service::IMemoryUsbIdControl::UsbId;
    using UsbIdWords = sdk::service::IMemoryUsbIdControl::UsbIdWords;

    UsbId current() const;
    void write(const UsbIdWords& words);

    QCborMap save() const override;
    void restore(const QCborMap& saved) override;

private:
    mutable std::mutex m_mutex; // guards all below
    UsbIdWords m_words{0x2A17, 0x0108, 0x0001};
};

/// The USB identifier as the simulated instrument, a two-port one, offers it.
class SimulatedMemoryUsbIdControl final : public sdk::service::IMemoryUsbIdControl
{
public:
    SimulatedMemoryUsbIdControl(std::shared_ptr<Machine> machine, std::shared_ptr<UsbIdState> state);

    UsbId usbId() override;
    std::vector<UsbId> usbIds() override;
    void writeUsbId(const UsbIdWords& words, std::function<void(std::error_code)> answer) override;

private:
    const std::shared_ptr<Machine> m_machine;
    const std::shared_ptr<UsbIdState> m_state;
};

} // namespace tov::simulator
