#pragma once

#include <QCborMap>
#include <QString>

namespace tov::simulator {

/// Replaces the file at `path` by one that holds `state`. Whatever happens meanwhile, the file is the old one or
/// the new one, whole. Throws `std::runtime_error`, which says what went wrong.
void writeStateFile(const QString& path, const QCborMap& state);

/// What `writeStateFile()` wrote. Throws `std::runtime_error` for a file that cannot be read, is of another
/// kind or version, or is damaged; the file is not touched.
QCborMap readStateFile(const QString& path);

} // namespace tov::simulator
