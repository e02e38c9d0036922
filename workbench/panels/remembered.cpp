#include "workbench/panels/remembered.h"

#include <QCoreApplication>
#include <QHeaderView>
#include <QSettings>
#include <QTimer>

namespace tov::workbench {

void rememberColumns(QHeaderView& columns, const QString& name)
{
    const QString key = QStringLiteral("columns/") + name;
    columns.restoreState(QSettings().value(key).toByteArray());
    auto* const soon = new QTimer(&columns); // not for each step of the mouse: the settings are a file
    soon->setSingleShot(true);
    soon->setInterval(500);
    QObject::connect(&columns, &QHeaderView::sectionResized, soon, qOverload<>(&QTimer::start));
    QObject::connect(&columns, &QHeaderView::sectionMoved, soon, qOverload<>(&QTimer::start));
    const auto remember = [&columns, key] { QSettings().setValue(key, columns.saveState()); };
    QObject::connect(soon, &QTimer::timeout, &columns, remember);
    QObject::connect(qApp, &QCoreApplication::aboutToQuit, soon, [soon, remember] {
        if (soon->isActive())
            remember();
    });
}

} // namespace tov::workbench
