#include "tools/files/csvlog.h"

#include "tools/errors.h"

namespace tov::inline tools {

namespace {

QByteArray quoted(const std::string& field)
{
    QByteArray text = QByteArray::fromStdString(field);
    if (field.find_first_of(",\"\r\n") == std::string::npos)
        return text;
    return '"' + text.replace("\"", "\"\"") + '"';
}

} // namespace

CsvLog::CsvLog(const LocalTarget& target, const std::vector<std::string>& headings)
    : m_path(target.path)
{
    if (target.path.empty())
        return;
    if (target.isStandardOutput())
        throw BadUse("--csv needs a file: standard output gets everything anyway");
    openLocalFile(m_file, target);
    add(headings);
    requireWritten();
}

void CsvLog::add(const std::vector<std::string>& fields)
{
    const std::lock_guard guard(m_mutex);
    if (!m_file.isOpen())
        return;
    QByteArray row;
    for (const std::string& field : fields)
        row.append(row.isEmpty() ? "" : ",").append(quoted(field));
    row.append('\n');
    if (m_error.isEmpty() && m_file.write(row) != row.size())
        m_error = m_file.errorString();
}

void CsvLog::requireWritten()
{
    const std::lock_guard guard(m_mutex);
    if (!m_error.isEmpty())
        throw Failure(m_path + " cannot be written: " + m_error.toStdString());
}

} // namespace tov::inline tools
