#pragma once

#include "console/terminal/table.h"

#include <QJsonObject>

#include <string>

namespace tov::console {

/// Standard output in the form that the user asked for.
class Output
{
public:
    enum class Form { Text, Json };

    Output(Form form, TableForm tableForm);

    bool isText() const noexcept { return m_form == Form::Text; }
    Form form() const noexcept { return m_form; }

    /// A table, or its rows for programs, as the user wants it.
    std::string shown(const Table& table) const { return table.toText(m_tableForm); }
    QJsonArray rows(const Table& table) const { return table.toJson(m_tableForm); }

    /// Has each answer in JSON be one line, which says by this number what it answers.
    void setCommand(int number) noexcept { m_command = number; }

    /// Keeps one answer, in one of its two forms, until `print()`.
    void answer(const std::string& text, const QJsonObject& json);

    /// The same for an answer that is a table, whose rows programs find by `name`.
    void answer(const Table& table, const QString& name);

    /// Prints the answer, if there is one, once: it is true now.
    void print();

    /// Prints a line that goes before the answer, for people only.
    void remark(const std::string& line) const;

private:
    Form m_form;
    TableForm m_tableForm;
    int m_command = 0; // none below 1
    std::string m_answer;
};

} // namespace tov::console
