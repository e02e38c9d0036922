#pragma once

#include "tools/text/number.h"

#include <QByteArray>
#include <QJsonObject>

#include <cmath>
#include <cstdint>
#include <string>
#include <utility>

namespace tov::console {

/// Contents as a row holds them: their size and digest, and themselves in base64 unless that is left out.
QJsonObject contentsToJson(const QByteArray& contents);

/// `value` without the contents in it, of which the size and the digest stay.
QJsonValue withoutContents(const QJsonValue& value);

/// A row of a backup, which knows where it stands. What is not as it must be throws `Failure`, which says where.
class SavedRow
{
public:
    SavedRow(QJsonObject row, std::string place)
        : m_row(std::move(row))
        , m_place(std::move(place))
    {
    }

    const QJsonObject& row() const noexcept { return m_row; }
    QJsonValue operator[](const char* column) const { return m_row[QLatin1StringView(column)]; }

    [[noreturn]] void fail(const char* column, const std::string& expected) const;

    QString text(const char* column) const;
    bool flag(const char* column) const;
    QByteArray contents(const char* column) const;

    /// A whole number, or a text of one.
    template <std::integral Number>
    Number number(const char* column) const
    {
        const QJsonValue value = (*this)[column];
        const std::string text =
            value.isDouble() ? QString::number(value.toDouble(), 'f', 0).toStdString() : value.toString().toStdString();
        const auto number = parseNumber<Number>(text);
        if (!number || (value.isDouble() && std::trunc(value.toDouble()) != value.toDouble()))
            fail(column, "a whole number that fits");
        return *number;
    }

private:
    QJsonObject m_row;
    std::string m_place;
};

} // namespace tov::console
