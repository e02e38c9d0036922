#include "simulator/calibration/simulatedyqifswcalibrationcontrol.h"

#include "simulator/support/cborvalues.h"

#include <algorithm>
#include <utility>

namespace tov::simulator {

using namespace Qt::StringLiterals;

namespace {

using ISdkControl = sdk::service::IYqIfswCalibrationControl;

QCborArray saveRecords(const std::vector<ISdkControl::CalibrationRecord>& records)
{
    return saveList(records, [](const ISdkControl::CalibrationRecord& record) {
        return QCborArray{record.value1, record.value2, record.value3};
    });
}

std::vector<ISdkControl::CalibrationRecord> restoreRecords(const QCborValue& saved)
{
    return restoreList(saved, [](const QCborValue& record) {
        return ISdkControl::CalibrationRecord{record.toArray().at(0).toDouble(), record.toArray().at(1).toDouble(),
                                              record.toArray().at(2).toDouble()};
    });
}

bool isEmpty(const ISdkControl::CalibrationData& data)
{
    return data.values.empty() && std::ranges::all_of(data.groups, [](const auto& group) {
               return group.first.empty() && group.second.empty();
           });
}

} // namespace

QCborMap toCbor(const StoredIfswCalibration& stored)
{
    QCborArray groups;
    for (const auto& group : stored.data.groups)
        groups.append(QCborArray{saveRecords(group.first), saveRecords(group.second)});
    return {{"seconds"_L1, static_cast<qint64>(stored.time.time_since_epoch().count())},
            {"values"_L1, saveList(stored.data.values, [](double value) { return value; })},
            {"groups"_L1, groups}};
}

void fromCbor(const QCborMap& saved, StoredIfswCalibration& stored)
{
    stored.time = std::chrono::sys_seconds(std::chrono::seconds(restoreInteger(saved["seconds"_L1])));
    stored.data.values = restoreList(saved["values"_L1], [](const QCborValue& value) { return value.toDouble(); });
    const QCborArray groups = saved["groups"_L1].toArray();
    for (std::size_t i = 0; i < stored.data.groups.size(); ++i) {
        const QCborArray group = groups.at(static_cast<qsizetype>(i)).toArray();
        stored.data.groups.at(i) = {restoreRecords(group.at(0)), restoreRecords(group.at(1))};
    }
}

SimulatedYqIfswCalibrationControl::SimulatedYqIfswCalibrationControl(std::shared_ptr<Machine> machine,
                                                                     std::shared_ptr<IfswCalibrationState> state)
    : SimulatedYqCalibration(std::move(machine), Operation::IfswPlan, Operation::IfswObserve)
    , m_state(std::move(state))
{
}

void SimulatedYqIfswCalibrationControl::saveCalibrationData(CalibrationData data)
{
    save(Operation::IfswSave, isEmpty(data), [&] {
        m_state->store({std::chrono::floor<std::chrono::seconds>(std::chrono::system_clock::now()), std::move(data)});
    });
}

} // namespace tov::simulator
