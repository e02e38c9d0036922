#pragma once

#include <QByteArray>

#include <string>

class QFile;

namespace tov::inline tools {

/// More than any file of values has.
constexpr qint64 muchText = 64LL * 1024 * 1024; // bytes

/// More than any instrument's memory has.
constexpr qint64 muchMemory = 1024LL * 1024 * 1024; // bytes

/// The contents of a file of the host; `-` is standard input. Paths are bytes as the system has them. Throws
/// `Failure`, which says why it cannot be read; also if it has more than `most` bytes, of which no more are read.
QByteArray readLocalFile(const std::string& path, qint64 most = muchText);

/// Where a command writes to.
struct LocalTarget
{
    std::string path;   ///< `-` is standard output
    bool force = false; ///< whether a file that is there may be replaced

    bool isStandardOutput() const { return path == "-"; }
};

/// Throws `Failure` when a file is there that may not be replaced. `writeLocalFile()` does that too; this is for what
/// takes long before it.
void requireWritable(const LocalTarget& target);

/// Opens `file`, empty, for what is written to it bit by bit. Throws `Failure`.
void openLocalFile(QFile& file, const LocalTarget& target);

/// Writes a file of the host as a whole, or leaves it as it was and throws `Failure`.
void writeLocalFile(const LocalTarget& target, const QByteArray& contents);

} // namespace tov::inline tools
