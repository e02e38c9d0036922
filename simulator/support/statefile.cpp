#include "simulator/support/statefile.h"

#include "simulator/support/cborvalues.h"

#include <QByteArray>
#include <QCborStreamReader>
#include <QCborValue>
#include <QCryptographicHash>
#include <QFile>
#include <QFileInfo>
#include <QMap>
#include <QSaveFile>

#include <optional>
#include <stdexcept>

#ifdef Q_OS_UNIX
#include <fcntl.h>
#include <unistd.h>
#endif

namespace tov::simulator {

using namespace Qt::StringLiterals;

namespace {

constexpr auto format = "state of a simulated instrument"_L1;
constexpr qint64 version = 2;

QByteArray checksum(const QByteArray& contents)
{
    return QCryptographicHash::hash(contents, QCryptographicHash::Sha256);
}

std::runtime_error failure(const QString& path, const QString& what)
{
    return std::runtime_error((path + ": " + what).toStdString());
}

// The map that `bytes` are, without anything behind it.
std::optional<QCborMap> mapOf(const QByteArray& bytes)
{
    QCborStreamReader reader(bytes);
    const QCborValue value = QCborValue::fromCbor(reader);
    if (reader.lastError() != QCborError::NoError || reader.currentOffset() != bytes.size() || !value.isMap())
        return std::nullopt;
    return value.toMap();
}

// A power failure must not take the new name of a file that has been replaced.
void keepNamesIn([[maybe_unused]] const QString& folder)
{
#ifdef Q_OS_UNIX
    // NOLINTNEXTLINE(*-vararg): which is how a folder is opened
    const int opened = ::open(QFile::encodeName(folder).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (opened < 0)
        return;
    ::fsync(opened);
    ::close(opened);
#endif
}

// Files of version 1 had names of their own for the controls.
QCborMap withTodaysNames(const QCborMap& state)
{
    static const QMap<QString, QString> others = {
        {"USB identifier", "usb-id"},
        {"memory", "memory-operations"},
        {"temperatures", "temperature"},
        {"IF-switch calibration", "ifsw-calibration"},
        {"calibration unit 1", "calibration-controller-1"},
        {"calibration unit 2", "calibration-controller-2"},
    };
    QCborMap renamed;
    for (const auto& [key, value] : state) {
        const QString name = key.toString();
        renamed.insert(others.value(name, name.toLower().replace(' ', '-')), QCborValue(value));
    }
    return renamed;
}

} // namespace

void writeStateFile(const QString& path, const QCborMap& state)
{
    const QByteArray contents = QCborValue(state).toCbor();
    const QCborMap whole = {
        {"format"_L1, format}, {"version"_L1, version}, {"checksum"_L1, checksum(contents)}, {"contents"_L1, contents}};
    const QByteArray bytes = QCborValue(whole).toCbor();

    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.commit())
        throw failure(path, "the state cannot be saved: " + file.errorString());
    keepNamesIn(QFileInfo(path).absolutePath());
}

QCborMap readStateFile(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw failure(path, "the state cannot be read: " + file.errorString());

    const auto whole = mapOf(file.readAll());
    if (!whole || (*whole)["format"_L1].toString() != format)
        throw failure(path, "this is no state of a simulated instrument, or it is damaged");
    const qint64 found = restoreInteger((*whole)["version"_L1]);
    if (found != 1 && found != version)
        throw failure(path, "this state was saved by another version of the simulator");
    const QByteArray contents = (*whole)["contents"_L1].toByteArray();
    const auto state = mapOf(contents);
    if (!state || (*whole)["checksum"_L1].toByteArray() != checksum(contents))
        throw failure(path, "this state is damaged");
    return found == 1 ? withTodaysNames(*state) : *state;
}

} // namespace tov::simulator
