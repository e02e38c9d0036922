#pragma once

#include <initializer_list>
#include <mutex>
#include <string_view>

namespace tov::console {

/// Prints a line on standard output for every notification, as it comes: whose it is, its name and its numbers. In
/// JSON each line is an object.
///
/// Thread: *any thread*.
class NotificationLines
{
public:
    explicit NotificationLines(bool text)
        : m_text(text)
    {
    }

    void print(std::string_view control, std::string_view notification, std::initializer_list<double> numbers = {});

private:
    const bool m_text;
    std::mutex m_mutex; // one line at a time
};

} // namespace tov::console
