#include "workbench/panels/tables.h"

#include "workbench/panels/remembered.h"

#include <QHeaderView>
#include <QTableView>

namespace tov::workbench {

QTableView* makeTable(QAbstractItemModel& model, const QString& name, const QString& accessibleName, QWidget* parent,
                      const QList<int>& widths)
{
    auto* const table = makeChangingTable(model, name, accessibleName, parent);
    for (int column = 0; column < widths.size(); ++column)
        table->setColumnWidth(column, table->fontMetrics().averageCharWidth() * widths.at(column));
    rememberColumns(*table->horizontalHeader(), name);
    return table;
}

QTableView* makeChangingTable(QAbstractItemModel& model, const QString& name, const QString& accessibleName,
                              QWidget* parent)
{
    auto* const table = new QTableView(parent);
    table->setObjectName(name);
    table->setAccessibleName(accessibleName);
    table->setModel(&model);
    table->setSelectionBehavior(QAbstractItemView::SelectRows);
    table->setTabKeyNavigation(false); // Tab goes on to the next widget
    table->setAlternatingRowColors(true);
    table->setShowGrid(false);
    table->verticalHeader()->hide();
    table->verticalHeader()->setDefaultSectionSize(table->fontMetrics().height() + 6);
    table->horizontalHeader()->setStretchLastSection(true);
    table->horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    table->horizontalHeader()->setHighlightSections(false);
    table->horizontalHeader()->setDefaultSectionSize(table->fontMetrics().averageCharWidth() * 16);
    return table;
}

} // namespace tov::workbench
