#pragma once

#include <QByteArray>

#include <algorithm>
#include <cstddef>
#include <vector>

namespace tov::inline tools {

// The library's bytes as those of files, and back.

inline QByteArray toByteArray(const std::vector<std::byte>& bytes)
{
    QByteArray converted(static_cast<qsizetype>(bytes.size()), Qt::Uninitialized);
    std::ranges::transform(bytes, converted.begin(), [](std::byte byte) { return static_cast<char>(byte); });
    return converted;
}

inline std::vector<std::byte> toBytes(const QByteArray& bytes)
{
    std::vector<std::byte> converted(static_cast<std::size_t>(bytes.size()));
    std::ranges::transform(bytes, converted.begin(), [](char byte) { return static_cast<std::byte>(byte); });
    return converted;
}

} // namespace tov::inline tools
