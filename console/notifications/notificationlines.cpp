#include "console/notifications/notificationlines.h"

#include "console/text/values.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <iostream>

namespace tov::console {

void NotificationLines::print(std::string_view control, std::string_view notification,
                              std::initializer_list<double> numbers)
{
    const std::lock_guard guard(m_mutex);
    if (m_text) {
        std::cout << control << " " << notification;
        for (const double number : numbers)
            std::cout << " " << toText(number);
        std::cout << "\n" << std::flush;
        return;
    }
    QJsonArray list;
    for (const double number : numbers)
        list.append(number);
    const QJsonObject line{
        {"control", QString::fromUtf8(control)}, {"notification", QString::fromUtf8(notification)}, {"numbers", list}};
    std::cout << QJsonDocument(line).toJson(QJsonDocument::Compact).constData() << "\n" << std::flush;
}

} // namespace tov::console
