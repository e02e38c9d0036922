#pragma once

#include <QDateTime>
#include <QString>

#include <optional>

namespace tov::inline tools {

/// How a time is written in a file, for messages.
inline constexpr const char* timestampForm = "a time with its zone as 2026-01-31T12:00:00Z";

/// The time that `text` writes; nothing when it is none or has no zone.
inline std::optional<QDateTime> parseTimestamp(const QString& text)
{
    QDateTime time = QDateTime::fromString(text, Qt::ISODate);
    if (!time.isValid() || time.timeSpec() == Qt::LocalTime)
        return {};
    return time;
}

} // namespace tov::inline tools
