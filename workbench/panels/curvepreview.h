#pragma once

#include "workbench/models/curves.h"

#include <QString>
#include <QWidget>

#include <vector>

class QComboBox;
class QLabel;

namespace tov::workbench {

class Plot;

/// A plot of one of several sheets, which the user chooses.
class CurvePreview final : public QWidget
{
    Q_OBJECT

public:
    /// `empty` is what stands there as long as there is no sheet.
    CurvePreview(const QString& name, const QString& empty, QWidget* parent);

    /// Shows these instead of those before, the first in front.
    void setSheets(std::vector<CurveSheet> sheets);

private:
    void showSheet(int index);

    std::vector<CurveSheet> m_sheets;
    QComboBox* m_choice;
    QLabel* m_empty;
    Plot* m_plot;
};

} // namespace tov::workbench
