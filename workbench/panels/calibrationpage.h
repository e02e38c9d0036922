#pragma once

#include "workbench/models/calibrationdata.h"
#include "workbench/models/rowsmodel.h"
#include "workbench/panels/page.h"

class QLabel;
class QPushButton;

namespace tov::workbench {

class CurvePreview;
class Plot;

/// A calibration with its frequency plan, and with data of a file, which are looked at before they are saved.
class CalibrationPage final : public Page
{
    Q_OBJECT

public:
    CalibrationPage(Panel& panel, CalibrationKind kind);

    void refresh() override;

    /// Reads a file of this computer and shows what is in it.
    void openFile(const QString& path);

private:
    QWidget* makePlan();
    QWidget* makeFile();
    void showPlan(const std::vector<PlanSegment>& plan);
    void showFile(const CalibrationData& read, const QString& path);
    void showTold(const Notification& told);
    void save();

    const CalibrationKind m_kind;
    RowsModel m_plan;
    CalibrationData m_data;
    Plot* m_bands = nullptr;
    QLabel* m_facts = nullptr;
    QLabel* m_told = nullptr;
    CurvePreview* m_preview = nullptr;
    QPushButton* m_save = nullptr;
};

} // namespace tov::workbench
