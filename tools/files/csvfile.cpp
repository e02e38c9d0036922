#include "tools/files/csvfile.h"

#include "tools/text/suggestions.h"

#include <QList>

namespace tov::inline tools {

namespace {

CsvRow readRow(const std::string& path, qsizetype lineNumber, const QByteArray& line)
{
    CsvRow row;
    qsizetype column = 1;
    for (const QByteArray& field : line.split(',')) {
        row.push_back({field.trimmed().toStdString(),
                       path + ", line " + std::to_string(lineNumber) + ", column " + std::to_string(column)});
        column += field.size() + 1;
    }
    return row;
}

} // namespace

void failAt(const CsvField& field, const std::string& expected)
{
    throw Failure(field.at + ": expected " + expected + " instead of " + quoted(field.text));
}

void failAtEnd(const std::string& path, const std::string& expected)
{
    throw Failure(path + ", last line: expected " + expected + " instead of the end");
}

std::vector<CsvRow> readCsvFile(const std::string& path)
{
    std::vector<CsvRow> rows;
    QByteArray contents = readLocalFile(path);
    if (contents.startsWith("\xEF\xBB\xBF")) // which spreadsheet programs put in front
        contents.remove(0, 3);
    const QList<QByteArray> lines = contents.split('\n');
    for (qsizetype i = 0; i < lines.size(); ++i)
        if (const QByteArray content = lines[i].trimmed(); !content.isEmpty() && !content.startsWith('#'))
            rows.push_back(readRow(path, i + 1, lines[i]));
    return rows;
}

void takeHeading(std::vector<CsvRow>& rows, const std::string& path, const std::vector<std::string>& headings)
{
    if (rows.empty())
        failAtEnd(path, "'" + headings.front() + "'");
    const CsvRow& row = rows.front();
    for (std::size_t i = 0; i < headings.size() && i < row.size(); ++i)
        if (row[i].text != headings[i])
            failAt(row[i], "'" + headings[i] + "'");
    expectFields(row, headings.size());
    rows.erase(rows.begin());
}

void expectFields(const CsvRow& row, std::size_t count)
{
    if (row.size() > count)
        failAt(row[count], "the end of the line");
    if (row.size() < count)
        throw Failure(row.back().at + ": expected " + std::to_string(count) + " fields instead of "
                      + std::to_string(row.size()));
}

void writeCsvFile(const LocalTarget& target, const std::vector<std::vector<std::string>>& rows)
{
    QByteArray contents;
    for (const auto& row : rows) {
        for (std::size_t i = 0; i < row.size(); ++i)
            contents.append(i > 0 ? "," : "").append(row[i]);
        contents.append('\n');
    }
    writeLocalFile(target, contents);
}

} // namespace tov::inline tools
