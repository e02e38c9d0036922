#include "simulator/support/statefile.h"

#include <QByteArray>
#include <QCborValue>
#include <QCryptographicHash>
#include <QFile>
#include <QSaveFile>

#include <stdexcept>

namespace tov::simulator {

using namespace Qt::StringLiterals;

namespace {

constexpr auto format = "state of a simulated instrument"_L1;
constexpr qint64 version = 1;

QByteArray checksum(const QByteArray& contents)
{
    return QCryptographicHash::hash(contents, QCryptographicHash::Sha256);
}

std::runtime_error failure(const QString& path, const QString& what)
{
    return std::runtime_error((path + ": " + what).toStdString());
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
}

QCborMap readStateFile(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw failure(path, "the state cannot be read: " + file.errorString());

    QCborParserError error;
    const QCborMap whole = QCborValue::fromCbor(file.readAll(), &error).toMap();
    if (error.error != QCborError::NoError || whole["format"_L1].toString() != format)
        throw failure(path, "this is no state of a simulated instrument, or it is damaged");
    if (whole["version"_L1].toInteger() != version)
        throw failure(path, "this state was saved by another version of the simulator");
    const QByteArray contents = whole["contents"_L1].toByteArray();
    if (whole["checksum"_L1].toByteArray() != checksum(contents))
        throw failure(path, "this state is damaged");
    return QCborValue::fromCbor(contents).toMap();
}

} // namespace tov::simulator
