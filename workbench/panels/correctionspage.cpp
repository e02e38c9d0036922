#include "workbench/panels/correctionspage.h"

#include "tools/text/correctionname.h"
#include "workbench/panels/controlsection.h"
#include "workbench/panels/tables.h"

#include <QLabel>
#include <QTableView>
#include <QVBoxLayout>

#include <utility>
#include <vector>

namespace tov::workbench {

using devices::FactoryCorrection;
using devices::service::SdkFactoryCorrectionControl;
namespace controls = host::controls;

namespace {

std::vector<CorrectionsModel::Correction> read(SdkFactoryCorrectionControl& control)
{
    std::vector<CorrectionsModel::Correction> corrections;
    for (const FactoryCorrection correction : control.supported())
        corrections.push_back({.correction = correction,
                               .isEnabled = control.isEnabled(correction),
                               .isValid = control.isValid(correction),
                               .isModifiable = control.isModifiable(correction)});
    return corrections;
}

// The control refuses without a word, so it is asked afterwards.
std::expected<void, QString> apply(SdkFactoryCorrectionControl& control, FactoryCorrection correction, bool enable)
{
    control.setEnabled(correction, enable);
    if (control.isEnabled(correction) != enable)
        return std::unexpected(QStringLiteral("the instrument did not take it"));
    return {};
}

} // namespace

CorrectionsPage::CorrectionsPage(Panel& panel)
    : Page(panel)
{
    auto* const section = new ControlSection(instrument(), controls::factoryCorrections, {}, this);
    auto* const hint = new QLabel(tr("A box switches a correction whose data are valid and that may be switched."));
    hint->setForegroundRole(QPalette::PlaceholderText);
    section->contents().addWidget(hint);
    section->contents().addWidget(
        makeTable(m_model, QStringLiteral("corrections"), tr("Factory corrections"), section, {30}));
    contents().addWidget(section);
    connect(&m_model, &CorrectionsModel::switched, this, &CorrectionsPage::switchTo);
    connect(&instrument(), &Instrument::notified, this, &CorrectionsPage::hear);
}

void CorrectionsPage::refresh()
{
    if (!instrument().isPresent(controls::factoryCorrections))
        return;
    if (m_reads) {
        m_readsAgain = true;
        return;
    }
    m_reads = true;
    m_readsAgain = false;
    panel().ask(
        controls::factoryCorrections, tr("read the corrections"), read,
        [this](std::vector<CorrectionsModel::Correction> corrections) {
            m_model.setCorrections(std::move(corrections));
        },
        [this] {
            m_reads = false;
            if (m_readsAgain)
                refresh();
        });
}

void CorrectionsPage::hear(const Notification& told)
{
    if (told.control != QString::fromUtf8(controls::factoryCorrections.name))
        return;
    const bool isOn = told.name == QStringLiteral("enabled");
    if (isOn || told.name == QStringLiteral("disabled")) {
        m_model.setEnabled(static_cast<FactoryCorrection>(told.numbers.at(0) - 1), isOn);
        m_readsAgain = m_reads; // what is being read may be older
    } else {
        refresh();
    }
}

void CorrectionsPage::switchTo(FactoryCorrection correction, bool enable)
{
    panel().clearFault();
    const QString name = QString::fromStdString(nameOf(correction));
    panel().ask(
        controls::factoryCorrections, (enable ? tr("switch %1 on") : tr("switch %1 off")).arg(name),
        [correction, enable](SdkFactoryCorrectionControl& control) { return apply(control, correction, enable); },
        [this, correction, enable](const std::expected<void, QString>&) { m_model.setEnabled(correction, enable); });
}

} // namespace tov::workbench
