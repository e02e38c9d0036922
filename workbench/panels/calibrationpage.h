#pragma once

#include "workbench/models/calibrationdata.h"
#include "workbench/models/rowsmodel.h"
#include "workbench/panels/page.h"

#include <memory>

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
    struct OpenFile
    {
        QString name;
        CalibrationData data;
        QString facts() const { return QStringLiteral("%1: %2").arg(name, data.facts); }
    };

    void askToSave();
    void save(const std::shared_ptr<const OpenFile>& file);

    const CalibrationKind m_kind;
    RowsModel m_plan;
    std::shared_ptr<const OpenFile> m_file; // that is shown; null: none
    Plot* m_bands = nullptr;
    QLabel* m_facts = nullptr;
    QLabel* m_told = nullptr;
    CurvePreview* m_preview = nullptr;
    QPushButton* m_save = nullptr;
};

} // namespace tov::workbench
