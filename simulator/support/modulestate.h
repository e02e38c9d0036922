#pragma once

#include "simulator/support/controlstate.h"

#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace tov::simulator {

/// One setting of a hardware module, which takes numbers from `least` to `most`.
struct ModuleSetting
{
    enum class Beyond {
        Clamp,  ///< takes the nearest number that it can
        Refuse, ///< stays as it is
    };

    std::string name;
    std::optional<double> initial; // nothing: it has no value until it is set
    double least = 0.0;
    double most = 1.0;
    Beyond beyond = Beyond::Refuse;
};

/// The settings of a hardware module of the simulated instrument, as numbers by their names, and the tables that were
/// loaded into it.
class ModuleState final : public ControlState
{
public:
    using Table = std::vector<unsigned char>;

    explicit ModuleState(std::vector<ModuleSetting> settings);

    /// The value of a setting, which must have one.
    double number(const std::string& setting) const;

    /// The value of a setting, if it has one.
    std::optional<double> value(const std::string& setting) const;

    void set(const std::string& setting, double value);

    /// Takes every setting back to what it was at first; tables stay.
    void reset();

    /// What was loaded last under this name.
    Table table(const std::string& name) const;
    void loadTable(const std::string& name, Table table);

    QCborMap save() const override;
    void restore(const QCborMap& saved) override;

private:
    const std::vector<ModuleSetting> m_settings;

    mutable std::mutex m_mutex; // guards all below
    std::map<std::string, double> m_values;
    std::map<std::string, Table> m_tables;
};

} // namespace tov::simulator
