#pragma once

#include "workbench/panels/page.h"

class QLabel;
class QProgressBar;
class QPushButton;

namespace tov::workbench {

/// What happens at a calibration controller: when its unit and its configuration have changed, and how far a save is.
class ControllerView final : public QWidget
{
    Q_OBJECT

public:
    /// `panel` must outlive it.
    ControllerView(Panel& panel, const host::ControlName& kind, QWidget* parent);

private:
    void hear(const Notification& told);
    void enableTrial();

    Panel& m_panel;
    const host::ControlName m_kind;
    QLabel* m_unit;
    QLabel* m_configuration;
    QProgressBar* m_save;
    QPushButton* m_try;
};

/// The two calibration controllers, which tell by themselves what happens.
class ControllersPage final : public Page
{
    Q_OBJECT

public:
    explicit ControllersPage(Panel& panel);

    /// There is nothing to read: the controllers only tell.
    void refresh() override {}
};

} // namespace tov::workbench
