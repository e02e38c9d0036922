#include "simulator/memory/simulatedsystemtermscontrol.h"

#include "simulator/support/cborvalues.h"

#include <utility>

namespace tov::simulator {

using namespace Qt::StringLiterals;

namespace {

using sdk::corrections::Complex;
using sdk::corrections::ErrorTerms;
using sdk::corrections::PathTerms;
using sdk::corrections::PortTerms;
using TermsRecord = sdk::service::ISystemTermsControl::TermsRecord;

QCborArray save(const std::vector<Complex>& values)
{
    return saveList(values, [](const Complex& value) { return QCborArray{value.real, value.imaginary}; });
}

std::vector<Complex> restoreComplex(const QCborValue& saved)
{
    return restoreList(saved, [](const QCborValue& value) {
        return Complex{value.toArray().at(0).toDouble(), value.toArray().at(1).toDouble()};
    });
}

QCborMap save(const ErrorTerms& terms)
{
    const auto savePort = [](const PortTerms& port) {
        return QCborMap{{"port"_L1, port.port},
                        {"directivity"_L1, save(port.directivity)},
                        {"source match"_L1, save(port.sourceMatch)},
                        {"reflection tracking"_L1, save(port.reflectionTracking)}};
    };
    const auto savePath = [](const PathTerms& path) {
        return QCborMap{{"source port"_L1, path.sourcePort},
                        {"receiver port"_L1, path.receiverPort},
                        {"load match"_L1, save(path.loadMatch)},
                        {"transmission tracking"_L1, save(path.transmissionTracking)},
                        {"isolation"_L1, save(path.isolation)}};
    };
    return {{"frequencies"_L1, saveList(terms.frequencies, [](double frequency) { return frequency; })},
            {"ports"_L1, saveList(terms.ports, savePort)},
            {"paths"_L1, saveList(terms.paths, savePath)}};
}

ErrorTerms restoreTerms(const QCborMap& saved)
{
    const auto restorePort = [](const QCborValue& port) {
        return PortTerms{static_cast<int>(restoreInteger(port["port"_L1])), restoreComplex(port["directivity"_L1]),
                         restoreComplex(port["source match"_L1]), restoreComplex(port["reflection tracking"_L1])};
    };
    const auto restorePath = [](const QCborValue& path) {
        return PathTerms{static_cast<int>(restoreInteger(path["source port"_L1])),
                         static_cast<int>(restoreInteger(path["receiver port"_L1])),
                         restoreComplex(path["load match"_L1]), restoreComplex(path["transmission tracking"_L1]),
                         restoreComplex(path["isolation"_L1])};
    };
    return {restoreList(saved["frequencies"_L1], [](const QCborValue& frequency) { return frequency.toDouble(); }),
            restoreList(saved["ports"_L1], restorePort), restoreList(saved["paths"_L1], restorePath)};
}

QCborMap saveRecord(const TermsRecord& record)
{
    return {{"key"_L1, static_cast<qint64>(record.key)}, {"value"_L1, record.value}, {"number"_L1, record.number}};
}

TermsRecord restoreRecord(const QCborValue& record)
{
    return {restoreInteger(record["key"_L1]), record["value"_L1].toDouble(),
            static_cast<std::int32_t>(restoreInteger(record["number"_L1]))};
}

} // namespace

QCborMap toCbor(const StoredTerms& stored)
{
    return {{"seconds"_L1, static_cast<qint64>(stored.secondsSinceEpoch)},
            {"parameter"_L1, stored.parameter},
            {"records"_L1, saveList(stored.records, saveRecord)},
            {"terms"_L1, save(stored.terms)}};
}

void fromCbor(const QCborMap& saved, StoredTerms& stored)
{
    stored = {restoreInteger(saved["seconds"_L1]), saved["parameter"_L1].toDouble(),
              restoreList(saved["records"_L1], restoreRecord), restoreTerms(saved["terms"_L1].toMap())};
}

SimulatedSystemTermsControl::SimulatedSystemTermsControl(std::shared_ptr<Machine> machine,
                                                         std::shared_ptr<SystemTermsState> state)
    : ObservedControl(Observers<Observer>(machine), Operation::TermsObserve)
    , m_machine(std::move(machine))
    , m_state(std::move(state))
{
}

std::vector<SimulatedSystemTermsControl::TermsRecord> SimulatedSystemTermsControl::termsRecords()
{
    m_machine->begin(Operation::TermsRead);
    const auto stored = m_state->stored();
    return stored ? stored->records : std::vector<TermsRecord>();
}

void SimulatedSystemTermsControl::writeSystemTerms(long long secondsSinceEpoch, double parameter,
                                                   std::vector<TermsRecord> records, ErrorTerms terms)
{
    store({secondsSinceEpoch, parameter, std::move(records), std::move(terms)}, 1);
}

void SimulatedSystemTermsControl::writeSystemTerms(long long secondsSinceEpoch, double parameter, ErrorTerms terms)
{
    store({secondsSinceEpoch, parameter, {}, std::move(terms)}, 2);
}

void SimulatedSystemTermsControl::store(StoredTerms stored, int status)
{
    m_machine->begin(Operation::TermsWrite);
    const auto count = static_cast<unsigned int>(stored.records.size());
    m_state->store(std::move(stored));
    m_observers.notify(
        &Observer::onTermsNotice, [=](Observer& observer) { observer.onTermsValue(count); },
        [=](Observer& observer) { observer.onTermsStatus(status); }, &Observer::onTermsSecondNotice);
}

bool SimulatedSystemTermsControl::systemTermsFlag()
{
    m_machine->begin(Operation::TermsFlag);
    return m_state->stored().has_value();
}

} // namespace tov::simulator
