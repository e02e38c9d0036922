#include "simulator/plugin/simulatedprovider.h"

#include "simulator/plugin/simulatedconnection.h"

#include <cstdint>
#include <limits>
#include <stdexcept>

namespace tov::simulator {

using namespace Qt::StringLiterals;
using provider::Result;

namespace {

constexpr qulonglong hour = 3'600'000'000; // µs

// A number that is not above `most`, which is what can be done with it.
Result<qulonglong> number(const QVariantMap& options, const QString& name, qulonglong most)
{
    const qulonglong given = options[name].toULongLong();
    if (given > most)
        return std::unexpected(
            u"%1 is too much for the option '%2', which is at most %3"_s.arg(given).arg(name).arg(most));
    return given;
}

Result<Configuration> configurationOf(const QVariantMap& options)
{
    constexpr qulonglong gigabyte = 1024ULL * 1024 * 1024;
    const auto delay = number(options, u"delay"_s, hour);
    const auto seed = number(options, u"seed"_s, std::numeric_limits<std::uint32_t>::max());
    const auto fileCapacity = number(options, u"file-capacity"_s, gigabyte);
    const auto memorySize = number(options, u"memory-size"_s, gigabyte);
    for (const auto* const each : {&delay, &seed, &fileCapacity, &memorySize})
        if (!*each)
            return std::unexpected(each->error());

    Timing timing;
    if (options["answers"_L1] == "later"_L1)
        timing.answers = Timing::Answers::Later;
    if (options["order"_L1] == "shuffled"_L1)
        timing.order = Timing::Order::Shuffled;
    timing.delay = std::chrono::microseconds(*delay);
    timing.seed = static_cast<std::uint32_t>(*seed);
    return Configuration{
        .timing = timing, .fileCapacity = *fileCapacity, .memorySize = static_cast<std::size_t>(*memorySize)};
}

Result<const devices::ControlName*> controlNamed(const QString& name)
{
    if (const auto* const found = devices::controls::find(name.toStdString()))
        return found;
    return std::unexpected(u"the simulated instrument has no control '%1'"_s.arg(name));
}

Result<void> setFault(SimulatedConnection& connection, const QString& fault,
                      SimulatedConnection::Misbehaviour misbehaviour)
{
    using Answer = provider::ITestHooks::Answer;
    static const QMap<QString, Answer> answers{{u"error"_s, Answer::WithError},
                                               {u"late"_s, Answer::Late},
                                               {u"throw"_s, Answer::Throwing},
                                               {u"release"_s, Answer::ReleasingTheControls}};

    const QString where = fault.section(u'=', 0, 0);
    const auto answer = answers.find(fault.section(u'=', 1));
    if (answer == answers.end())
        return std::unexpected(
            u"'%1' is no fault; one is CONTROL.OPERATION=error, =late, =throw or =release"_s.arg(fault));
    const auto control = controlNamed(where.section(u'.', 0, 0));
    if (!control)
        return std::unexpected(control.error());
    misbehaviour.answer = *answer;
    return connection.misbehave((*control)->keys.sdk, where.section(u'.', 1), misbehaviour);
}

Result<void> setFaults(SimulatedConnection& connection, const QVariantMap& options)
{
    const auto after = number(options, u"fault-after"_s, std::numeric_limits<std::uint32_t>::max());
    const auto delay = number(options, u"fault-delay"_s, hour);
    for (const auto* const each : {&after, &delay})
        if (!*each)
            return std::unexpected(each->error());
    for (const QString& fault : options["fault"_L1].toStringList()) {
        const auto set =
            setFault(connection, fault,
                     {.after = static_cast<unsigned int>(*after), .delay = std::chrono::microseconds(*delay)});
        if (!set)
            return set;
    }
    return {};
}

Result<void> damageMemory(SimulatedInstrument& instrument)
try {
    instrument.damageMemory(0);
    return {};
} catch (const std::out_of_range&) {
    return std::unexpected(u"the memory has no byte that could be damaged"_s);
}

} // namespace

Result<std::vector<provider::InstrumentDescription>> SimulatedProvider::instruments()
{
    return std::vector{provider::InstrumentDescription{
        .id = u"simulated"_s, .model = u"simulated"_s, .serialNumber = {}, .description = u"In this process"_s}};
}

Result<std::unique_ptr<provider::IConnection>> SimulatedProvider::open(const QString& id, const QVariantMap& options)
{
    if (id != "simulated"_L1)
        return std::unexpected(u"there is no simulated instrument '%1'; there is 'simulated'"_s.arg(id));
    const auto configuration = configurationOf(options);
    if (!configuration)
        return std::unexpected(configuration.error());
    constexpr qulonglong day = 86'400; // s
    const auto wait = number(options, u"wait"_s, day);
    if (!wait)
        return std::unexpected(wait.error());
    auto connection = std::make_unique<SimulatedConnection>(*configuration);
    for (const QString& name : options["missing"_L1].toStringList()) {
        const auto control = controlNamed(name);
        if (!control)
            return std::unexpected(control.error());
        connection->simulated().unfitControl((*control)->keys.sdk);
    }
    if (const auto set = setFaults(*connection, options); !set)
        return std::unexpected(set.error());
    connection->simulated().setFileStoreAvailable(options["file-store"_L1] != "unavailable"_L1);
    if (const QString file = options["state"_L1].toString(); !file.isEmpty())
        if (const auto kept = connection->keepIn(file, std::chrono::seconds(*wait)); !kept)
            return std::unexpected(kept.error());
    if (options["memory"_L1] == "damaged"_L1) // what is kept, too
        if (const auto damaged = damageMemory(connection->simulated()); !damaged)
            return std::unexpected(damaged.error());
    return connection;
}

} // namespace tov::simulator
