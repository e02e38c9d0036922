#include "console/terminal/output.h"

#include <QJsonDocument>
#include <QString>

#include <algorithm>
#include <iostream>
#include <utility>

namespace tov::console {

Table::Table(std::vector<std::string> headings)
{
    m_rows.push_back(std::move(headings));
}

void Table::addRow(std::vector<std::string> cells)
{
    m_rows.push_back(std::move(cells));
}

std::string Table::toText() const
{
    std::vector<std::size_t> widths(m_rows.front().size());
    for (const auto& row : m_rows)
        for (std::size_t column = 0; column < widths.size(); ++column)
            widths[column] = std::max(widths[column], row[column].size());

    std::string text;
    for (const auto& row : m_rows) {
        for (std::size_t column = 0; column + 1 < widths.size(); ++column)
            text.append(row[column]).append(widths[column] - row[column].size() + 2, ' ');
        text.append(row.back()).append("\n");
    }
    return text;
}

QJsonArray Table::toJson() const
{
    const auto& headings = m_rows.front();
    QJsonArray list;
    for (auto row = m_rows.begin() + 1; row != m_rows.end(); ++row) {
        QJsonObject object;
        for (std::size_t column = 0; column < headings.size(); ++column)
            object.insert(QString::fromStdString(headings[column]), QString::fromStdString((*row)[column]));
        list.append(object);
    }
    return list;
}

Output::Output(Form form)
    : m_form(form)
{
}

void Output::answer(const std::string& text, const QJsonObject& json)
{
    m_answer = isText() ? text : QJsonDocument(json).toJson().toStdString();
}

void Output::print()
{
    std::cout << std::exchange(m_answer, {});
}

void Output::remark(const std::string& line) const
{
    if (isText())
        std::cout << line << "\n" << std::flush;
}

} // namespace tov::console
