#include "simulator/calibration/simulatedcalibrationcontroller.h"

namespace tov::simulator {

SimulatedCalibrationController::SimulatedCalibrationController(const std::shared_ptr<CalibrationUnit>& unit)
    : m_observers(unit->audience().open())
{
}

SimulatedCalibrationController::~SimulatedCalibrationController()
{
    m_observers->close();
}

void SimulatedCalibrationController::addObserver(Observer* observer)
{
    m_observers->add(observer);
}

void SimulatedCalibrationController::removeObserver(Observer* observer)
{
    m_observers->remove(observer);
}

} // namespace tov::simulator
