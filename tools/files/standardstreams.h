#pragma once

#include <QByteArray>

class QFile;

namespace tov::inline tools {

/// Opens `file` to read the bytes of standard input as they are.
bool openStandardInput(QFile& file);

/// Writes bytes to standard output as they are, behind what was printed there.
void writeStandardOutput(const QByteArray& bytes);

} // namespace tov::inline tools
