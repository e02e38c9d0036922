#include "console/terminal/output.h"

#include <QJsonDocument>

#include <iostream>
#include <utility>

namespace tov::console {

Output::Output(Form form, TableForm tableForm)
    : m_form(form)
    , m_tableForm(std::move(tableForm))
{
}

void Output::answer(const std::string& text, const QJsonObject& json)
{
    m_answer = isText() ? text : QJsonDocument(json).toJson().toStdString();
}

void Output::answer(const Table& table, const QString& name)
{
    m_answer = isText() ? shown(table) : QJsonDocument(QJsonObject{{name, rows(table)}}).toJson().toStdString();
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
