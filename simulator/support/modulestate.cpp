#include "simulator/support/modulestate.h"

#include "simulator/support/cborvalues.h"

#include <algorithm>
#include <cmath>

namespace tov::simulator {

using namespace Qt::StringLiterals;

Acceptance nearest(double least, double most)
{
    return [=](double number) {
        return std::isnan(number) ? std::nullopt : std::optional(std::clamp(number, least, most));
    };
}

Acceptance within(double least, double most)
{
    return [=](double number) { return number >= least && number <= most ? std::optional(number) : std::nullopt; };
}

ModuleState::Number::Number(ModuleState& module, const QString& name, std::optional<double> initial,
                            Acceptance acceptance)
    : m_module(module)
    , m_name(name)
    , m_initial(initial)
    , m_acceptance(std::move(acceptance))
    , m_number(initial)
{
    module.m_numbers.emplace(name, this);
}

std::optional<double> ModuleState::Number::number() const
{
    const std::lock_guard guard(m_module.m_mutex);
    return m_number;
}

void ModuleState::Number::setNumber(double number)
{
    const std::lock_guard guard(m_module.m_mutex);
    if (const auto accepted = m_acceptance(number))
        m_number = accepted;
}

void ModuleState::Table::load(const std::vector<unsigned char>& bytes)
{
    const std::lock_guard guard(m_module.m_mutex);
    m_module.m_tables[m_name] = saveBytes(bytes);
}

void ModuleState::reset()
{
    const std::lock_guard guard(m_mutex);
    for (const auto& [name, setting] : m_numbers)
        setting->m_number = setting->m_initial;
}

QCborMap ModuleState::save() const
{
    const std::lock_guard guard(m_mutex);
    QCborMap values;
    for (const auto& [name, setting] : m_numbers)
        if (setting->m_number)
            values.insert(name, *setting->m_number);
    return {{"values"_L1, values}, {"tables"_L1, m_tables}};
}

void ModuleState::restore(const QCborMap& saved)
{
    reset();
    const QCborMap values = saved["values"_L1].toMap();
    for (const auto& [name, setting] : m_numbers)
        if (const QCborValue value = values[name]; value.isDouble())
            setting->setNumber(value.toDouble());

    const std::lock_guard guard(m_mutex);
    m_tables = saved["tables"_L1].toMap();
}

} // namespace tov::simulator
