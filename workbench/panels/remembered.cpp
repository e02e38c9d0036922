#include "workbench/panels/remembered.h"

#include <QHeaderView>
#include <QSettings>

namespace tov::workbench {

void rememberColumns(QHeaderView& columns, const QString& name)
{
    const QString key = QStringLiteral("columns/") + name;
    columns.restoreState(QSettings().value(key).toByteArray());
    const auto remember = [&columns, key] { QSettings().setValue(key, columns.saveState()); };
    QObject::connect(&columns, &QHeaderView::sectionResized, &columns, remember);
    QObject::connect(&columns, &QHeaderView::sectionMoved, &columns, remember);
}

} // namespace tov::workbench
