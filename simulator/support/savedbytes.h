#pragma once

#include <QByteArray>

#include <algorithm>
#include <cstddef>
#include <vector>

namespace tov::simulator {

/// Bytes of any kind as they are kept in a file.
template <typename Byte>
QByteArray saveBytes(const std::vector<Byte>& bytes)
{
    QByteArray saved(static_cast<qsizetype>(bytes.size()), Qt::Uninitialized);
    std::ranges::transform(bytes, saved.begin(), [](Byte byte) { return static_cast<char>(byte); });
    return saved;
}

/// The reverse.
template <typename Byte>
std::vector<Byte> restoreBytes(const QByteArray& saved)
{
    std::vector<Byte> bytes(static_cast<std::size_t>(saved.size()));
    std::ranges::transform(saved, bytes.begin(), [](char byte) { return static_cast<Byte>(byte); });
    return bytes;
}

} // namespace tov::simulator
