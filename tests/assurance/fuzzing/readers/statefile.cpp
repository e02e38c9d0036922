// The state of a simulated instrument: what is read and written again reads back the same, and an instrument that
// refuses a state stays as it is.

#include "simulator/support/statefile.h"
#include "fuzzer.h"
#include "readers/check.h"
#include "simulator/simulatedinstrument.h"

#include <QCborValue>
#include <QFile>
#include <QTemporaryDir>

#include <cstdint>
#include <optional>
#include <stdexcept>

namespace tov::testing {

namespace {

/// Where files are for as long as the program runs; in memory where that can be.
class Files
{
public:
    QString path(const char* name) const { return m_folder.filePath(name); }

private:
    QTemporaryDir m_folder{QFile::exists("/dev/shm") ? "/dev/shm/fuzz-statefile-XXXXXX" : "fuzz-statefile-XXXXXX"};
};

void write(const QString& path, const QByteArray& contents)
{
    QFile file(path);
    require(file.open(QIODevice::WriteOnly) && file.write(contents) == contents.size(), "the file can be written");
}

std::optional<QCborMap> readState(const QString& path)
{
    try {
        return simulator::readStateFile(path);
    } catch (const std::runtime_error&) {
        return std::nullopt;
    }
}

bool takes(simulator::SimulatedInstrument& instrument, const QString& path)
{
    try {
        instrument.load(path);
        return true;
    } catch (const std::runtime_error&) {
        return false;
    }
}

QByteArray stateOf(const simulator::SimulatedInstrument& instrument, const QString& path)
{
    QFile::remove(path);
    instrument.save(path);
    return QCborValue(simulator::readStateFile(path)).toCbor();
}

void tryFile(const QString& path, const QString& other)
{
    if (const auto state = readState(path)) {
        QCborMap copy = *state;
        if (isWritingDamaged() && copy.size() > 2)
            copy.remove(copy.begin().key());
        simulator::writeStateFile(other, copy);
        const auto again = readState(other);
        require(again && QCborValue(*again).toCbor() == QCborValue(*state).toCbor(),
                "a state that is written again reads back the same");
    }

    static const simulator::Configuration small{.timing = {}, .fileCapacity = 1024, .memorySize = 64};
    static simulator::SimulatedInstrument instrument(small);
    static simulator::SimulatedInstrument second(small);
    static QByteArray last = stateOf(instrument, other);
    const bool isTaken = takes(instrument, path);
    const QByteArray now = stateOf(instrument, other);
    if (isTaken) {
        require(takes(second, other), "an instrument takes what another one kept");
        require(stateOf(second, other) == now, "an instrument that took a state keeps the same");
    } else {
        require(now == last, "an instrument that refuses a state stays as it is");
    }
    last = now;
}

} // namespace

} // namespace tov::testing

// The first byte says whether the others are the whole file, or the state to be wrapped as files are.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace tov;
    static const testing::Files files;
    if (size == 0)
        return 0;
    const QByteArray bytes(reinterpret_cast<const char*>(data) + 1, static_cast<qsizetype>(size) - 1);
    const QString path = files.path("state");
    if (data[0] % 4 == 0) {
        testing::write(path, bytes);
    } else {
        QCborParserError error;
        const QCborValue state = QCborValue::fromCbor(bytes, &error);
        if (error.error != QCborError::NoError || !state.isMap())
            return -1;
        simulator::writeStateFile(path, state.toMap());
    }
    testing::tryFile(path, files.path("other"));
    return 0;
}
