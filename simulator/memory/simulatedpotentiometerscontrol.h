#pragma once

#include "sdk/service/ipotentiometerscontrol.h"
#include "simulator/support/controlstate.h"
#include "simulator/support/machine.h"

#include <cstddef>
#include <cstdint>
#include <expected>
#include <memory>
#include <mutex>
#include <string>
#include <system_error>
#include <vector>

namespace tov::simulator {

/// The potentiometers of the simulated instrument, each with a value in RAM and one in EEPROM.
class PotentiometersState final : public ControlState
{
public:
    using PotentiometerInfo = sdk::service::IPotentiometersControl::PotentiometerInfo;

    PotentiometersState();

    /// Each with its smallest and its largest value as the two words.
    std::vector<PotentiometerInfo> list() const;

    std::expected<int, std::error_code> readRam(std::size_t index) const;
    std::expected<int, std::error_code> readEeprom(std::size_t index) const;

    /// Fail with `NoSuchPotentiometer` or `OutOfRange`.
    std::error_code writeRam(std::size_t index, int value);
    std::error_code writeEeprom(std::size_t index, int value);

    QCborMap save() const override;
    void restore(const QCborMap& saved) override;

private:
    struct Potentiometer
    {
        std::string name;
        std::int32_t smallest;
        std::int32_t largest;
        int ram;
        int eeprom;
    };

    std::expected<int, std::error_code> read(std::size_t index, int Potentiometer::* memory) const;
    std::error_code write(std::size_t index, int Potentiometer::* memory, int value);

    mutable std::mutex m_mutex; // guards all below
    std::vector<Potentiometer> m_potentiometers;
};

/// The potentiometers as the simulated instrument offers them.
class SimulatedPotentiometersControl final : public sdk::service::IPotentiometersControl
{
public:
    SimulatedPotentiometersControl(std::shared_ptr<Machine> machine, std::shared_ptr<PotentiometersState> state);

    std::vector<PotentiometerInfo> potentiometers() override;
    void readFromEeprom(std::size_t index, std::function<void(int, std::error_code)> answer) override;
    void writeToRam(std::size_t index, int value, std::function<void(std::error_code)> answer) override;
    void writeToEeprom(std::size_t index, int value, std::function<void(std::error_code)> answer) override;

private:
    const std::shared_ptr<Machine> m_machine;
    const std::shared_ptr<PotentiometersState> m_state;
};

} // namespace tov::simulator
