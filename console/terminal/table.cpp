#include "console/terminal/table.h"

#include "tools/text/display.h"
#include "tools/text/named.h"

#include <QJsonObject>
#include <QString>

#include <algorithm>
#include <iterator>
#include <numeric>
#include <utility>

namespace tov::console {

namespace {

constexpr std::size_t gap = 2; // between columns
constexpr std::size_t narrowest = 8;

using Lines = std::vector<std::string>;

// What of `text`, which `displayed()` gave, fits into `width`: up to its last blank that does, or as much as does.
std::size_t lengthThatFits(const std::string& text, std::size_t width)
{
    std::size_t fits = 0;
    std::size_t atBlank = 0;
    for (std::size_t length = 1; length <= text.size(); ++length) {
        const bool isInside = length < text.size() && (static_cast<unsigned char>(text[length]) & 0xC0) == 0x80;
        if (isInside)
            continue;
        if (displayWidth(text.substr(0, length)) > width)
            return atBlank > 0 ? atBlank : std::max<std::size_t>(fits, 1);
        fits = length;
        if (length < text.size() && text[length] == ' ')
            atBlank = length;
    }
    return text.size();
}

// `text` in lines none of which is wider than `width`.
Lines wrapped(std::string text, std::size_t width)
{
    Lines lines;
    while (displayWidth(text) > width) {
        const std::size_t length = lengthThatFits(text, width);
        lines.push_back(text.substr(0, length));
        text.erase(0, text[length] == ' ' ? length + 1 : length);
    }
    lines.push_back(std::move(text));
    return lines;
}

std::string inTone(const std::string& text, Cell::Tone tone)
{
    if (tone == Cell::Tone::Plain)
        return text;
    return (tone == Cell::Tone::Good ? "\x1b[32m" : "\x1b[31m") + text + "\x1b[0m";
}

// Takes from the widest of `columns` what a terminal of `width` has no room for, as far as that goes.
void narrow(std::vector<std::size_t>& widths, const std::vector<std::size_t>& columns, std::size_t width)
{
    const auto total = [&] { return std::reduce(widths.begin(), widths.end()) + gap * (widths.size() - 1); };
    while (total() > width && !columns.empty()) {
        std::size_t& widest = widths[std::ranges::max(columns, {}, [&](std::size_t column) { return widths[column]; })];
        if (widest <= narrowest)
            return;
        --widest;
    }
}

// A row as the lines it takes.
void append(std::string& text, const std::vector<Cell>& row, const std::vector<std::size_t>& widths, bool coloured)
{
    std::vector<Lines> cells;
    std::size_t height = 1;
    for (std::size_t column = 0; column < row.size(); ++column) {
        height = std::max(height, cells.emplace_back(wrapped(displayed(row[column].text), widths[column])).size());
    }
    for (std::size_t line = 0; line < height; ++line) {
        std::string shown;
        std::size_t blanks = 0; // before the next cell that has something in this line
        for (std::size_t column = 0; column < row.size(); ++column) {
            const std::string part = line < cells[column].size() ? cells[column][line] : "";
            if (!part.empty())
                shown.append(std::exchange(blanks, 0), ' ').append(coloured ? inTone(part, row[column].tone) : part);
            blanks += widths[column] - std::min(widths[column], displayWidth(part)) + gap;
        }
        text.append(shown).append("\n");
    }
}

std::vector<std::size_t> firstNumbers(std::size_t count)
{
    std::vector<std::size_t> numbers;
    while (numbers.size() < count)
        numbers.push_back(numbers.size());
    return numbers;
}

bool contains(const std::string& text, const std::string& sought)
{
    return QString::fromStdString(text).contains(QString::fromStdString(sought), Qt::CaseInsensitive);
}

} // namespace

Table::Table(std::vector<Column> columns)
    : m_columns(std::move(columns))
{
}

void Table::addRow(std::vector<Cell> cells)
{
    m_rows.push_back(std::move(cells));
}

std::string Table::toText(const TableForm& form) const
{
    const Table table = chosen(form);
    std::vector<Cell> headings;
    std::ranges::transform(table.m_columns, std::back_inserter(headings), &Column::heading);
    std::vector<std::size_t> widths;
    for (std::size_t column = 0; column < headings.size(); ++column) {
        std::size_t width = displayWidth(displayed(headings[column].text));
        for (const auto& row : table.m_rows)
            width = std::max(width, displayWidth(displayed(row[column].text)));
        widths.push_back(width);
    }
    if (form.width > 0) {
        const std::vector<std::size_t> all = firstNumbers(widths.size());
        std::vector<std::size_t> prose;
        std::ranges::copy_if(all, std::back_inserter(prose), [&](std::size_t column) {
            return std::ranges::any_of(table.m_rows, [&](const auto& row) { return row[column].text.contains(' '); });
        });
        narrow(widths, prose, form.width); // first what is divided at blanks
        narrow(widths, all, form.width);
    }

    std::string text;
    append(text, headings, widths, false);
    for (const auto& row : table.m_rows)
        append(text, row, widths, form.coloured);
    return text;
}

QJsonArray Table::toJson(const TableForm& form) const
{
    const Table table = chosen(form);
    QJsonArray list;
    for (const auto& row : table.m_rows) {
        QJsonObject object;
        for (std::size_t column = 0; column < row.size(); ++column)
            object.insert(QString::fromStdString(table.m_columns[column].key), row[column].value);
        list.append(object);
    }
    return list;
}

// The rows and columns that are wanted.
Table Table::chosen(const TableForm& form) const
{
    std::vector<std::size_t> wanted;
    for (const std::string& name : form.columns) {
        const Column& column = named(m_columns, name, "column", [](const Column& each) { return each.heading; });
        wanted.push_back(static_cast<std::size_t>(&column - m_columns.data()));
    }
    if (wanted.empty())
        wanted = firstNumbers(m_columns.size());

    const auto inWanted = [&]<typename Element>(const std::vector<Element>& elements) {
        std::vector<Element> chosen;
        std::ranges::transform(wanted, std::back_inserter(chosen),
                               [&](std::size_t column) { return elements[column]; });
        return chosen;
    };
    Table table(inWanted(m_columns));
    for (const auto& row : m_rows)
        if (std::ranges::any_of(row, [&](const Cell& cell) { return contains(cell.text, form.filter); }))
            table.addRow(inWanted(row));
    return table;
}

} // namespace tov::console
