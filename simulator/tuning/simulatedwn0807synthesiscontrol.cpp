#include "simulator/tuning/simulatedwn0807synthesiscontrol.h"

#include <array>
#include <cstddef>
#include <string>
#include <utility>

namespace tov::simulator {

namespace {

constexpr std::array ifs = {5e6, 10.7e6, 70e6};
constexpr std::array<sdk::service::IWn0807SynthesisControl::PowerSyntEntry, 5> factoryTable = {
    {{10e6, 20}, {1e9, 24}, {4e9, 30}, {8e9, 38}, {20e9, 50}}};

} // namespace

std::shared_ptr<ModuleState> SimulatedWn0807SynthesisControl::makeState()
{
    using Beyond = ModuleSetting::Beyond;
    return std::make_shared<ModuleState>(std::vector<ModuleSetting>{
        {"loPower", 40, 0, 63, Beyond::Clamp},
        {"rfPower", 40, 0, 63, Beyond::Clamp},
        {"rfPowerMode", 0, 0, 2, Beyond::Refuse},
        {"ifMode", 0, 0, 1, Beyond::Refuse},
        {"selectedIf", 0, 0, ifs.size() - 1.0, Beyond::Refuse},
        {"rfFilterMode", 0, 0, 2, Beyond::Refuse},
        {"selectedRfFilter", {}, 0, 3, Beyond::Refuse},
        {"ddsSwitchFreq", 100e6, 1e6, 1e9, Beyond::Clamp},
        {"delayMode", 0, 0, 1, Beyond::Refuse},
        {"measureDelay", 0, 0, 10, Beyond::Clamp},
        {"rowFrequency0", 10e6, 1e6, 20e9, Beyond::Refuse},
        {"rowPower0", 20, 0, 63, Beyond::Clamp},
        {"rowFrequency1", 1e9, 1e6, 20e9, Beyond::Refuse},
        {"rowPower1", 24, 0, 63, Beyond::Clamp},
        {"rowFrequency2", 4e9, 1e6, 20e9, Beyond::Refuse},
        {"rowPower2", 30, 0, 63, Beyond::Clamp},
        {"rowFrequency3", 8e9, 1e6, 20e9, Beyond::Refuse},
        {"rowPower3", 38, 0, 63, Beyond::Clamp},
        {"rowFrequency4", 20e9, 1e6, 20e9, Beyond::Refuse},
        {"rowPower4", 50, 0, 63, Beyond::Clamp},
        {"capacitanceMode0", 0, 0, 3, Beyond::Refuse},
        {"capacitanceFirst0", 1.0, 0, 100, Beyond::Clamp},
        {"capacitanceSecond0", 10.0, 0, 100, Beyond::Clamp},
        {"capacitanceMode1", 0, 0, 3, Beyond::Refuse},
        {"capacitanceFirst1", {}, 0, 100, Beyond::Clamp},
        {"capacitanceSecond1", {}, 0, 100, Beyond::Clamp},
        {"filterFrom0", 10e6, 1e6, 20e9, Beyond::Refuse},
        {"filterFrom1", 1e9, 1e6, 20e9, Beyond::Refuse},
        {"filterFrom2", 4e9, 1e6, 20e9, Beyond::Refuse},
        {"filterFrom3", {}, 1e6, 20e9, Beyond::Refuse},
    });
}

SimulatedWn0807SynthesisControl::SimulatedWn0807SynthesisControl(std::shared_ptr<ModuleState> state)
    : m_state(std::move(state))
{
}

unsigned char SimulatedWn0807SynthesisControl::loPower()
{
    return static_cast<unsigned char>(m_state->number("loPower"));
}

unsigned char SimulatedWn0807SynthesisControl::rfPower()
{
    return static_cast<unsigned char>(m_state->number("rfPower"));
}

void SimulatedWn0807SynthesisControl::setLoPower(unsigned char power)
{
    m_state->set("loPower", power);
}

void SimulatedWn0807SynthesisControl::setRfPower(unsigned char power)
{
    m_state->set("rfPower", power);
}

int SimulatedWn0807SynthesisControl::rfPowerMode()
{
    return static_cast<int>(m_state->number("rfPowerMode"));
}

void SimulatedWn0807SynthesisControl::setRfPowerMode(int mode)
{
    m_state->set("rfPowerMode", mode);
}

std::span<const SimulatedWn0807SynthesisControl::PowerSyntEntry> SimulatedWn0807SynthesisControl::rfPowerRangeTable()
{
    auto& table = m_handedOut.own();
    table.resize(factoryTable.size());
    for (std::size_t row = 0; row < table.size(); ++row)
        table[row] = {m_state->number("rowFrequency" + std::to_string(row)),
                      static_cast<unsigned char>(m_state->number("rowPower" + std::to_string(row)))};
    return table;
}

std::span<const SimulatedWn0807SynthesisControl::PowerSyntEntry>
SimulatedWn0807SynthesisControl::rfPowerDefaultRangeTable()
{
    return factoryTable;
}

void SimulatedWn0807SynthesisControl::setRfPowerRangeFrequency(int row, double frequency)
{
    m_state->set("rowFrequency" + std::to_string(row), frequency);
}

void SimulatedWn0807SynthesisControl::setRfPowerRangePower(int row, unsigned char power)
{
    m_state->set("rowPower" + std::to_string(row), power);
}

int SimulatedWn0807SynthesisControl::ifMode()
{
    return static_cast<int>(m_state->number("ifMode"));
}

void SimulatedWn0807SynthesisControl::setIfMode(int mode)
{
    m_state->set("ifMode", mode);
}

void SimulatedWn0807SynthesisControl::setSelectedIf(int index)
{
    m_state->set("selectedIf", index);
}

int SimulatedWn0807SynthesisControl::selectedIf()
{
    return static_cast<int>(m_state->number("selectedIf"));
}

std::span<const double> SimulatedWn0807SynthesisControl::supportedIfs()
{
    return ifs;
}

void SimulatedWn0807SynthesisControl::setCapacitanceMode(int capacitor, int mode)
{
    m_state->set("capacitanceMode" + std::to_string(capacitor), mode);
}

void SimulatedWn0807SynthesisControl::setCapacitanceRange(int capacitor, const Range& range)
{
    m_state->set("capacitanceFirst" + std::to_string(capacitor), range.first);
    m_state->set("capacitanceSecond" + std::to_string(capacitor), range.second);
}

int SimulatedWn0807SynthesisControl::capacitanceMode(int capacitor)
{
    return static_cast<int>(m_state->value("capacitanceMode" + std::to_string(capacitor)).value_or(0.0));
}

std::optional<SimulatedWn0807SynthesisControl::Range> SimulatedWn0807SynthesisControl::capacitanceRange(int capacitor)
{
    const auto first = m_state->value("capacitanceFirst" + std::to_string(capacitor));
    const auto second = m_state->value("capacitanceSecond" + std::to_string(capacitor));
    return first && second ? std::optional(Range{*first, *second}) : std::nullopt;
}

void SimulatedWn0807SynthesisControl::setRfFilterMode(int mode)
{
    m_state->set("rfFilterMode", mode);
}

void SimulatedWn0807SynthesisControl::setRfFilterFrom(int filter, double frequency)
{
    m_state->set("filterFrom" + std::to_string(filter), frequency);
}

void SimulatedWn0807SynthesisControl::setSelectedRfFilter(int filter)
{
    m_state->set("selectedRfFilter", filter);
}

int SimulatedWn0807SynthesisControl::rfFilterMode()
{
    return static_cast<int>(m_state->number("rfFilterMode"));
}

std::optional<int> SimulatedWn0807SynthesisControl::selectedRfFilter()
{
    const auto filter = m_state->value("selectedRfFilter");
    return filter ? std::optional(static_cast<int>(*filter)) : std::nullopt;
}

std::optional<double> SimulatedWn0807SynthesisControl::rfFilterFrom(int filter)
{
    return m_state->value("filterFrom" + std::to_string(filter));
}

void SimulatedWn0807SynthesisControl::setDdsSwitchFreq(double frequency)
{
    m_state->set("ddsSwitchFreq", frequency);
}

double SimulatedWn0807SynthesisControl::ddsSwitchFreq()
{
    return m_state->number("ddsSwitchFreq");
}

int SimulatedWn0807SynthesisControl::delayMode()
{
    return static_cast<int>(m_state->number("delayMode"));
}

void SimulatedWn0807SynthesisControl::setDelayMode(int mode)
{
    m_state->set("delayMode", mode);
}

SimulatedWn0807SynthesisControl::Duration SimulatedWn0807SynthesisControl::measureDelay()
{
    return Duration(m_state->number("measureDelay"));
}

void SimulatedWn0807SynthesisControl::setMeasureDelay(Duration delay)
{
    m_state->set("measureDelay", delay.count());
}

} // namespace tov::simulator
