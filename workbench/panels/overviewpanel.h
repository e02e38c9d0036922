#pragma once

#include "workbench/models/controlsmodel.h"
#include "workbench/panels/panel.h"

class QFormLayout;
class QPushButton;

namespace tov::workbench {

class ValueLabel;

/// Which instrument it is, opened by what, and each of its controls with its state and its last error. Where the
/// provider can do that, the controls are taken away and offered again.
class OverviewPanel final : public Panel
{
    Q_OBJECT

public:
    explicit OverviewPanel(Instrument& instrument, QWidget* parent = nullptr);

    void refresh() override;

private:
    void addFacts();
    ValueLabel* addFact(QFormLayout& facts, const QString& name, const QString& shown);
    void addControls();
    void addButtons();
    void takeOver();
    void enableButtons();
    void askHooks(const QString& what, provider::Result<void> (provider::ITestHooks::*act)());

    ControlsModel m_controls;
    ValueLabel* m_model = nullptr;
    ValueLabel* m_serialNumber = nullptr;
    ValueLabel* m_description = nullptr;
    ValueLabel* m_provider = nullptr;
    ValueLabel* m_providerFile = nullptr;
    QPushButton* m_release = nullptr;
    QPushButton* m_offer = nullptr;
};

} // namespace tov::workbench
