#include "simulator/calibration/simulatedyqfactorypowercalibrationcontrol.h"

#include "simulator/support/cborvalues.h"

#include <utility>

namespace tov::simulator {

using namespace Qt::StringLiterals;

namespace {

using PowerCalPoint = sdk::service::IYqFactoryPowerCalibrationControl::PowerCalPoint;

QCborArray savePoint(const PowerCalPoint& point)
{
    const auto number = [](float value) { return static_cast<double>(value); };
    return {point.value1,         number(point.value2), number(point.value3), point.value4,        point.value5,
            number(point.value6), point.value7,         number(point.value8), number(point.value9)};
}

PowerCalPoint restorePoint(const QCborValue& saved)
{
    const QCborArray values = saved.toArray();
    const auto number = [&](qsizetype index) { return static_cast<float>(values.at(index).toDouble()); };
    const auto byte = [&](qsizetype index) { return static_cast<std::uint8_t>(restoreInteger(values.at(index))); };
    return {values.at(0).toDouble(), number(1), number(2), byte(3), byte(4), number(5), byte(6), number(7), number(8)};
}

} // namespace

QCborMap toCbor(const StoredFactoryPowerCalibration& stored)
{
    return {{"seconds"_L1, static_cast<qint64>(stored.time.time_since_epoch().count())},
            {"parameter"_L1, stored.parameter},
            {"points"_L1, saveList(stored.points, savePoint)}};
}

void fromCbor(const QCborMap& saved, StoredFactoryPowerCalibration& stored)
{
    stored = {std::chrono::sys_seconds(std::chrono::seconds(restoreInteger(saved["seconds"_L1]))),
              saved["parameter"_L1].toDouble(), restoreList(saved["points"_L1], restorePoint)};
}

SimulatedYqFactoryPowerCalibrationControl::SimulatedYqFactoryPowerCalibrationControl(
    std::shared_ptr<Machine> machine, std::shared_ptr<FactoryPowerCalibrationState> state)
    : SimulatedYqCalibration(std::move(machine), Operation::FactoryPowerPlan, Operation::FactoryPowerObserve)
    , m_state(std::move(state))
{
}

void SimulatedYqFactoryPowerCalibrationControl::saveCalibrationData(std::chrono::sys_seconds time, double parameter,
                                                                    std::vector<PowerCalPoint> points)
{
    save(Operation::FactoryPowerSave, points.empty(), [&] { m_state->store({time, parameter, std::move(points)}); });
}

} // namespace tov::simulator
