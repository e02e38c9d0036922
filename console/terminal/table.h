#pragma once

#include <QJsonArray>

#include <concepts>
#include <cstddef>
#include <string>
#include <utility>
#include <vector>

namespace tov::console {

/// A column: what people read over it, and what programs find its values by.
struct Column
{
    // NOLINTBEGIN(google-explicit-constructor): headings are written as they stand over the table
    Column(const char* name)
        : heading(name)
        , key(name)
    {
    }
    // NOLINTEND(google-explicit-constructor)
    Column(std::string itsHeading, std::string itsKey)
        : heading(std::move(itsHeading))
        , key(std::move(itsKey))
    {
    }

    std::string heading;
    std::string key;
};

/// What stands in a row of a column, for people and for programs.
struct Cell
{
    enum class Tone { Plain, Good, Bad };

    // NOLINTBEGIN(google-explicit-constructor): rows are written as lists of values
    Cell(std::string words)
        : text(std::move(words))
        , value(QString::fromStdString(text))
    {
    }
    Cell(const char* words)
        : Cell(std::string(words))
    {
    }
    Cell(const QString& words)
        : Cell(words.toStdString())
    {
    }
    template <std::integral Number>
        requires(!std::same_as<Number, bool>)
    Cell(Number number)
        : text(std::to_string(number))
        , value(sizeof(Number) < 8 ? QJsonValue(static_cast<qint64>(number)) : QJsonValue(QString::fromStdString(text)))
    {
    }
    // NOLINTEND(google-explicit-constructor)
    Cell(std::string words, QJsonValue forPrograms, Tone itsTone = Tone::Plain)
        : text(std::move(words))
        , value(std::move(forPrograms))
        , tone(itsTone)
    {
    }

    /// "yes" or "no", and true or false for programs.
    static Cell yesNo(bool yes) { return {yes ? "yes" : "no", yes}; }

    std::string text;
    QJsonValue value;
    Tone tone = Tone::Plain;
};

/// How tables are shown.
struct TableForm
{
    std::vector<std::string> columns; ///< headings of those that are wanted; empty: all
    std::string filter;               ///< what a cell of each row that is wanted contains; empty: all rows
    std::size_t width = 0;            ///< columns of the terminal; 0: no limit
    bool coloured = false;
};

/// Rows of cells under headings: aligned columns for people, a list of objects for programs.
class Table
{
public:
    explicit Table(std::vector<Column> columns);

    /// Appends a row of as many cells as there are headings.
    void addRow(std::vector<Cell> cells);

    /// Each throws `BadUse` when `form` names a column that there is none of.
    std::string toText(const TableForm& form = {}) const;
    QJsonArray toJson(const TableForm& form = {}) const;

private:
    Table chosen(const TableForm& form) const;

    std::vector<Column> m_columns;
    std::vector<std::vector<Cell>> m_rows;
};

} // namespace tov::console
