#pragma once

#include <QString>

class QAbstractItemModel;
class QTableView;
class QWidget;

namespace tov::workbench {

/// A view of `model` whose rows are chosen whole. The widths that the user gives its columns are remembered under
/// `name`, the object name of the view.
QTableView* makeTable(QAbstractItemModel& model, const QString& name, const QString& accessibleName, QWidget* parent);

} // namespace tov::workbench
