#pragma once

#include <QByteArray>

#include <string>

namespace tov::console {

/// The contents of a file of the host. Throws `Failure`, which says why it cannot be read.
QByteArray readLocalFile(const std::string& path);

/// Replaces a file of the host as a whole, or leaves it as it was and throws `Failure`.
void writeLocalFile(const std::string& path, const QByteArray& contents);

} // namespace tov::console
