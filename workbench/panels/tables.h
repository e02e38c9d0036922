#pragma once

#include <QList>
#include <QString>

class QAbstractItemModel;
class QTableView;
class QWidget;

namespace tov::workbench {

/// A view of `model` whose rows are chosen whole. The widths that the user gives its columns are remembered under
/// `name`, the object name of the view; before that the first ones have `widths`, in characters.
QTableView* makeTable(QAbstractItemModel& model, const QString& name, const QString& accessibleName, QWidget* parent,
                      const QList<int>& widths = {});

/// The same for columns that come and go, whose widths are not remembered.
QTableView* makeChangingTable(QAbstractItemModel& model, const QString& name, const QString& accessibleName,
                              QWidget* parent);

} // namespace tov::workbench
