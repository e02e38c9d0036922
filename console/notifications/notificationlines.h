#pragma once

#include "tools/files/csvlog.h"

#include <initializer_list>
#include <memory>
#include <mutex>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace tov::console {

class ConsoleSession;

/// Prints a line on standard output for every notification, as it comes: when it came, whose it is, its name and its
/// numbers. In JSON each line is an object.
///
/// Thread: *any thread*.
class NotificationLines
{
public:
    /// The headings of a file that gets them too.
    static const std::vector<std::string> headings;

    explicit NotificationLines(ConsoleSession& console, std::shared_ptr<CsvLog> log = nullptr);

    void print(std::string_view control, std::string_view notification, std::initializer_list<double> numbers = {});

    /// Whether there was a line of this control.
    bool hasPrinted(std::string_view control) const;

private:
    ConsoleSession& m_console;
    const std::shared_ptr<CsvLog> m_log; // null: none
    const bool m_text;

    mutable std::mutex m_mutex; // guards the order of the lines, which is that of their times, and what is below
    std::set<std::string, std::less<>> m_printed;
};

} // namespace tov::console
