#include "workbench/instrument/call.h"

#include <QThread>

#include <cstdint>

namespace tov::workbench {

QString currentThreadName()
{
    QString name = QThread::currentThread()->objectName();
    if (!name.isEmpty() && !name.startsWith(QLatin1StringView("Thread"))) // which pools call all of theirs
        return name;
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-reinterpret-cast): on some systems it is a pointer
    return QStringLiteral("0x%1").arg(reinterpret_cast<std::uintptr_t>(QThread::currentThreadId()), 0, 16);
}

} // namespace tov::workbench
