#include "simulator/support/modulestate.h"

#include "simulator/support/savedbytes.h"

#include <algorithm>
#include <utility>

namespace tov::simulator {

using namespace Qt::StringLiterals;

ModuleState::ModuleState(std::vector<ModuleSetting> settings)
    : m_settings(std::move(settings))
{
    ModuleState::reset();
}

double ModuleState::number(const std::string& setting) const
{
    const std::lock_guard guard(m_mutex);
    return m_values.at(setting);
}

std::optional<double> ModuleState::value(const std::string& setting) const
{
    const std::lock_guard guard(m_mutex);
    const auto found = m_values.find(setting);
    return found != m_values.end() ? std::optional(found->second) : std::nullopt;
}

void ModuleState::set(const std::string& setting, double value)
{
    const auto found = std::ranges::find(m_settings, setting, &ModuleSetting::name);
    if (found == m_settings.end())
        return;
    const bool fits = value >= found->least && value <= found->most;
    if (!fits && (found->beyond == ModuleSetting::Beyond::Refuse || value != value))
        return;
    const std::lock_guard guard(m_mutex);
    m_values[setting] = std::clamp(value, found->least, found->most);
}

void ModuleState::reset()
{
    const std::lock_guard guard(m_mutex);
    m_values.clear();
    for (const ModuleSetting& setting : m_settings)
        if (setting.initial)
            m_values[setting.name] = *setting.initial;
}

ModuleState::Table ModuleState::table(const std::string& name) const
{
    const std::lock_guard guard(m_mutex);
    const auto found = m_tables.find(name);
    return found != m_tables.end() ? found->second : Table();
}

void ModuleState::loadTable(const std::string& name, Table table)
{
    const std::lock_guard guard(m_mutex);
    m_tables[name] = std::move(table);
}

QCborMap ModuleState::save() const
{
    const std::lock_guard guard(m_mutex);
    QCborMap values;
    for (const auto& [name, value] : m_values)
        values.insert(QString::fromStdString(name), value);
    QCborMap tables;
    for (const auto& [name, table] : m_tables)
        tables.insert(QString::fromStdString(name), saveBytes(table));
    return {{"values"_L1, values}, {"tables"_L1, tables}};
}

void ModuleState::restore(const QCborMap& saved)
{
    reset();
    const QCborMap values = saved["values"_L1].toMap();
    for (const ModuleSetting& setting : m_settings)
        if (const QCborValue value = values[QString::fromStdString(setting.name)]; value.isDouble())
            set(setting.name, value.toDouble());

    const std::lock_guard guard(m_mutex);
    m_tables.clear();
    const QCborMap tables = saved["tables"_L1].toMap();
    for (auto table = tables.begin(); table != tables.end(); ++table)
        m_tables[table.key().toString().toStdString()] = restoreBytes<unsigned char>(table.value().toByteArray());
}

} // namespace tov::simulator
