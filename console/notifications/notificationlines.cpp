#include "console/notifications/notificationlines.h"

#include "console/session/consolesession.h"
#include "tools/text/values.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <utility>

namespace tov::console {

const std::vector<std::string> NotificationLines::headings = {"time", "control", "notification", "numbers"};

NotificationLines::NotificationLines(ConsoleSession& console, std::shared_ptr<CsvLog> log)
    : m_console(console)
    , m_log(std::move(log))
    , m_text(console.output().isText())
{
}

void NotificationLines::print(std::string_view control, std::string_view notification,
                              std::initializer_list<double> numbers)
{
    QJsonArray list;
    for (const double number : numbers)
        list.append(number);

    const std::lock_guard guard(m_mutex);
    const std::string time = m_console.timestamp();
    m_printed.emplace(control);
    if (m_log != nullptr)
        m_log->add({time, std::string(control), std::string(notification), toText(list)});
    if (m_text) {
        std::string line = time;
        line.append(" ").append(control).append(" ").append(notification);
        if (!list.isEmpty())
            line.append(" ").append(toText(list));
        m_console.following().print(line + "\n");
        return;
    }
    const QJsonObject line{{"time", QString::fromStdString(time)},
                           {"control", QString::fromUtf8(control)},
                           {"notification", QString::fromUtf8(notification)},
                           {"numbers", list}};
    m_console.following().print(QJsonDocument(line).toJson(QJsonDocument::Compact).toStdString() + "\n");
}

bool NotificationLines::hasPrinted(std::string_view control) const
{
    const std::lock_guard guard(m_mutex);
    return m_printed.contains(control);
}

} // namespace tov::console
