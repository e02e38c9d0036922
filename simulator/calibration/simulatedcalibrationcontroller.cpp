#include "simulator/calibration/simulatedcalibrationcontroller.h"

#include "simulator/support/cborvalues.h"

namespace tov::simulator {

using namespace Qt::StringLiterals;

CalibrationUnitState::CalibrationUnitState(const std::shared_ptr<Machine>& machine)
    : observers(machine)
{
}

CalibrationUnit::Status CalibrationUnitState::status() const
{
    const std::lock_guard guard(m_mutex);
    return m_status;
}

void CalibrationUnitState::setStatus(Status status)
{
    {
        const std::lock_guard guard(m_mutex);
        if (m_status == status)
            return;
        m_status = status;
    }
    observers.notify(&Observer::onUnitStatusChanged);
}

QString CalibrationUnitState::configuration() const
{
    const std::lock_guard guard(m_mutex);
    return m_configuration;
}

void CalibrationUnitState::setConfiguration(const QString& configuration)
{
    {
        const std::lock_guard guard(m_mutex);
        if (m_configuration == configuration)
            return;
        m_configuration = configuration;
    }
    observers.notify(&Observer::onConfigurationChanged);
}

void CalibrationUnitState::beginSave(std::uint64_t total, std::chrono::microseconds duration)
{
    constexpr int parts = 10;

    int number = 0;
    {
        const std::lock_guard guard(m_mutex);
        number = ++m_saves;
    }
    for (int part = 0; part <= parts; ++part) {
        const std::uint64_t done = part < parts ? total / parts * static_cast<std::uint64_t>(part) : total;
        observers.notifyAfter(duration * part / parts,
                              [=](Observer& observer) { observer.onSaveProgress(number, {done, total}); });
    }
}

int CalibrationUnitState::saves() const
{
    const std::lock_guard guard(m_mutex);
    return m_saves;
}

QCborMap CalibrationUnitState::save() const
{
    const std::lock_guard guard(m_mutex);
    return {{"status"_L1, static_cast<int>(m_status)}, {"configuration"_L1, m_configuration}};
}

void CalibrationUnitState::restore(const QCborMap& saved)
{
    const std::lock_guard guard(m_mutex);
    m_status = static_cast<Status>(restoreInteger(saved["status"_L1]));
    m_configuration = saved["configuration"_L1].toString();
}

} // namespace tov::simulator
