#pragma once

#include <QJsonArray>
#include <QJsonObject>

#include <string>
#include <vector>

namespace tov::console {

/// Rows of text under headings: aligned columns for people, a list of objects for programs.
class Table
{
public:
    explicit Table(std::vector<std::string> headings);

    /// Appends a row of as many cells as there are headings.
    void addRow(std::vector<std::string> cells);

    std::string toText() const;
    QJsonArray toJson() const;

private:
    std::vector<std::vector<std::string>> m_rows; // the headings first
};

/// Standard output in the form that the user asked for.
class Output
{
public:
    enum class Form { Text, Json };

    explicit Output(Form form);

    bool isText() const noexcept { return m_form == Form::Text; }
    Form form() const noexcept { return m_form; }
    void setForm(Form form) noexcept { m_form = form; }

    /// Keeps one answer, in one of its two forms, until `print()`.
    void answer(const std::string& text, const QJsonObject& json);

    /// Forgets the answer.
    void discard() { m_answer.clear(); }

    /// Prints the answer, if there is one, once: it is true now.
    void print();

    /// Prints a line that goes before the answer, for people only.
    void remark(const std::string& line) const;

private:
    Form m_form;
    std::string m_answer;
};

} // namespace tov::console
