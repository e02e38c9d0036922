#pragma once

#include <QByteArray>

#include <string>

namespace tov::console {

/// More than any file of values has.
constexpr qint64 muchText = 64LL * 1024 * 1024; // bytes

/// More than any instrument's memory has.
constexpr qint64 muchMemory = 1024LL * 1024 * 1024; // bytes

/// The contents of a file of the host. Throws `Failure`, which says why it cannot be read; also if it has more than
/// `most` bytes, of which no more are read.
QByteArray readLocalFile(const std::string& path, qint64 most = muchText);

/// Replaces a file of the host as a whole, or leaves it as it was and throws `Failure`.
void writeLocalFile(const std::string& path, const QByteArray& contents);

} // namespace tov::console
