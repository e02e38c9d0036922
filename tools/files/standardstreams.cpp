#include "tools/files/standardstreams.h"

#include <QFile>

#include <iostream>

#ifdef Q_OS_WIN
#include <fcntl.h>
#include <io.h>
#endif

namespace tov::inline tools {

namespace {

// What a platform that knows of lines makes of bytes otherwise.
void passBytesAsTheyAre([[maybe_unused]] int descriptor)
{
#ifdef Q_OS_WIN
    _setmode(descriptor, _O_BINARY);
#endif
}

} // namespace

bool openStandardInput(QFile& file)
{
    passBytesAsTheyAre(0);
    return file.open(0, QIODevice::ReadOnly, QFileDevice::DontCloseHandle);
}

void writeStandardOutput(const QByteArray& bytes)
{
    std::cout << std::flush;
    passBytesAsTheyAre(1);
    std::cout.write(bytes.constData(), bytes.size()) << std::flush;
}

} // namespace tov::inline tools
