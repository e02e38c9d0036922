#pragma once

#include "sdk/service/imemoryserialnumbercontrol.h"
#include "simulator/support/controlstate.h"
#include "simulator/support/observers.h"

#include <atomic>
#include <memory>
#include <mutex>

namespace tov::simulator {

class SerialNumberState final : public ControlState
{
public:
    std::atomic<unsigned int> number = 100'001;

    /// Held while the number is replaced and the notification of it is put in line: they come in one order.
    std::recursive_mutex replacing;

    QCborMap save() const override;
    void restore(const QCborMap& saved) override;
};

/// The serial number as the simulated instrument offers it. A write is told with the old and the new number.
class SimulatedSerialNumberControl final : public ObservedControl<sdk::service::IMemorySerialNumberControl>
{
public:
    SimulatedSerialNumberControl(std::shared_ptr<Machine> machine, std::shared_ptr<SerialNumberState> state);

    void readSerialNumber(std::function<void(unsigned int, std::error_code)> answer) override;
    void writeSerialNumber(unsigned int serialNumber, std::function<void(std::error_code)> answer) override;

private:
    const std::shared_ptr<Machine> m_machine;
    const std::shared_ptr<SerialNumberState> m_state;
};

} // namespace tov::simulator
