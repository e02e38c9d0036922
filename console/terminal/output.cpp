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
    if (isText()) {
        m_answer = text;
    } else if (m_command > 0) {
        QJsonObject line = json;
        line["command"] = m_command;
        m_answer = QJsonDocument(line).toJson(QJsonDocument::Compact).toStdString() + "\n";
    } else {
        m_answer = QJsonDocument(json).toJson().toStdString();
    }
}

void Output::answer(const Table& table, const QString& name)
{
    answer(isText() ? shown(table) : std::string(), isText() ? QJsonObject() : QJsonObject{{name, rows(table)}});
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
