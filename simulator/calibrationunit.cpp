#include "simulator/calibrationunit.h"

namespace tov::simulator {

using namespace Qt::StringLiterals;

CalibrationUnit::CalibrationUnit(const std::shared_ptr<Machine>& machine)
    : m_audience(machine)
{
}

CalibrationUnit::Status CalibrationUnit::status() const
{
    const std::lock_guard guard(m_mutex);
    return m_status;
}

void CalibrationUnit::setStatus(Status status)
{
    {
        const std::lock_guard guard(m_mutex);
        if (m_status == status)
            return;
        m_status = status;
    }
    m_audience.notify({}, &Observer::onUnitStatusChanged);
}

QString CalibrationUnit::configuration() const
{
    const std::lock_guard guard(m_mutex);
    return m_configuration;
}

void CalibrationUnit::setConfiguration(const QString& configuration)
{
    {
        const std::lock_guard guard(m_mutex);
        if (m_configuration == configuration)
            return;
        m_configuration = configuration;
    }
    m_audience.notify({}, &Observer::onConfigurationChanged);
}

void CalibrationUnit::beginSave(std::uint64_t total, std::chrono::microseconds duration)
{
    using SaveProgress = sdk::service::calibrations::ICalibrationController::SaveProgress;
    constexpr int parts = 10;

    int number = 0;
    {
        const std::lock_guard guard(m_mutex);
        number = ++m_saves;
    }
    for (int part = 0; part <= parts; ++part) {
        const std::uint64_t done = part < parts ? total / parts * static_cast<std::uint64_t>(part) : total;
        m_audience.notify(duration * part / parts, &Observer::onSaveProgress, number, SaveProgress{done, total});
    }
}

int CalibrationUnit::saves() const
{
    const std::lock_guard guard(m_mutex);
    return m_saves;
}

QCborMap CalibrationUnit::save() const
{
    const std::lock_guard guard(m_mutex);
    return {{"status"_L1, static_cast<int>(m_status)}, {"configuration"_L1, m_configuration}};
}

void CalibrationUnit::restore(const QCborMap& saved)
{
    const std::lock_guard guard(m_mutex);
    m_status = static_cast<Status>(saved["status"_L1].toInteger());
    m_configuration = saved["configuration"_L1].toString();
}

} // namespace tov::simulator
