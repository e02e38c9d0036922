#pragma once

#include <QByteArray>
#include <QCborArray>
#include <QCborValue>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <vector>

namespace tov::simulator {

/// The whole number that a file holds, 0 where it holds something else. Qt may not be asked for that of a number beyond
/// all of these.
inline qint64 restoreInteger(const QCborValue& value)
{
    return value.isInteger() || std::abs(value.toDouble()) < 0x1p63 ? value.toInteger() : 0;
}

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

/// A list as it is kept in a file, each element converted by `convert`.
template <typename Element, typename Convert>
QCborArray saveList(const std::vector<Element>& elements, Convert convert)
{
    QCborArray array;
    for (const Element& element : elements)
        array.append(convert(element));
    return array;
}

/// The reverse.
template <typename Convert>
auto restoreList(const QCborValue& array, Convert convert)
{
    std::vector<decltype(convert(QCborValue()))> elements;
    const QCborArray values = array.toArray();
    elements.reserve(static_cast<std::size_t>(values.size()));
    for (const auto& value : values)
        elements.push_back(convert(QCborValue(value)));
    return elements;
}

} // namespace tov::simulator
