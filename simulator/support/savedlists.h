#pragma once

#include <QCborArray>
#include <QCborValue>

#include <cstddef>
#include <vector>

namespace tov::simulator {

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
