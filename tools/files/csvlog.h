#pragma once

#include "tools/files/localfile.h"

#include <QFile>

#include <mutex>
#include <string>
#include <vector>

namespace tov::inline tools {

/// A file of comma-separated values that grows: each row is in the file when it was added. Fields with commas, quotes
/// or line ends stand in quotes.
///
/// Thread: *any thread*.
class CsvLog
{
public:
    /// Begins the file with the headings. Without a path nothing is written. Throws `Failure`, also when the file may
    /// not be replaced, and `BadUse` for standard output.
    CsvLog(const LocalTarget& target, const std::vector<std::string>& headings);

    /// Does nothing after a row that could not be written.
    void add(const std::vector<std::string>& fields);

    /// Throws `Failure` when a row could not be written.
    void requireWritten();

private:
    const std::string m_path;
    std::mutex m_mutex; // guards all below
    QFile m_file;
    QString m_error;
};

} // namespace tov::inline tools
