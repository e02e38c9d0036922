#pragma once

#include "devices/cxx23.h"

#include <QByteArray>
#include <QList>
#include <QString>

#include <cstdint>
#include <expected>

namespace tov::devices::service {

/// The small file store in the instrument's memory.
///
/// Every operation blocks until the instrument has answered, without a time limit. A failure is the text
/// that the instrument gives for it; an absent or unavailable store is "File memory control is unavailable".
/// Arguments go to the instrument unchecked; what it throws passes through.
///
/// Thread: *any thread*, but not the *SDK's notification thread*.
class IFileMemoryControl
{
public:
    /// A file as the instrument lists it; what the two words mean is the instrument's.
    struct FileInfo
    {
        QString name;           ///< as the instrument lists it
        std::int32_t word1 = 0; ///< the instrument's first word
        std::int32_t word2 = 0; ///< the instrument's second word
    };

    /// Three figures as the instrument gives them; their meaning and unit are the instrument's.
    struct SpaceInfo
    {
        std::uint64_t value1 = 0; ///< first figure
        std::uint64_t value2 = 0; ///< second figure
        std::uint64_t value3 = 0; ///< third figure
    };

    virtual ~IFileMemoryControl() = default;

    /// The files in the instrument's order.
    virtual std::expected<QList<FileInfo>, QString> fileList() = 0;

    /// How much room there is.
    virtual std::expected<SpaceInfo, QString> spaceInfo() = 0;

    /// The contents of a file; empty for an empty one.
    virtual std::expected<QByteArray, QString> readFile(const FileInfo& file) = 0;

    /// Stores `data` under `name`.
    virtual std::expected<void, QString> writeFile(const QString& name, const QByteArray& data) = 0;

    /// Removes a file.
    virtual std::expected<void, QString> deleteFile(const FileInfo& file) = 0;
};

} // namespace tov::devices::service
