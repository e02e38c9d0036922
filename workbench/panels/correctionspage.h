#pragma once

#include "workbench/models/correctionsmodel.h"
#include "workbench/panels/page.h"

namespace tov::workbench {

/// The factory corrections, which are switched by their boxes and follow what the instrument tells.
class CorrectionsPage final : public Page
{
    Q_OBJECT

public:
    explicit CorrectionsPage(Panel& panel);

    void refresh() override;

private:
    void hear(const Notification& told);
    void switchTo(devices::FactoryCorrection correction, bool enable);

    CorrectionsModel m_model;
    bool m_reads = false;
    bool m_readsAgain = false; // after that
};

} // namespace tov::workbench
