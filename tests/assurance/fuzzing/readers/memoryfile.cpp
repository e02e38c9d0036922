#include "readers/memoryfile.h"

#include "tools/files/localfile.h"

namespace tov::inline tools {

QByteArray readLocalFile(const std::string& /*path*/, qint64 /*most*/)
{
    return testing::memoryFile;
}

void writeLocalFile(const LocalTarget& /*target*/, const QByteArray& contents)
{
    testing::memoryFile = contents;
}

} // namespace tov::inline tools
