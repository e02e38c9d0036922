#pragma once

#include <QString>

class QHeaderView;

namespace tov::workbench {

/// Gives the columns of a table the widths and the order that the user gave them in the run before, and remembers what
/// he does with them under `name`.
void rememberColumns(QHeaderView& columns, const QString& name);

} // namespace tov::workbench
