#include "workbench/panels/overviewpanel.h"

#include "host/loadedlibrary.h"
#include "service/version.h"
#include "workbench/panels/remembered.h"
#include "workbench/panels/valuelabel.h"

#include <QFormLayout>
#include <QHeaderView>
#include <QPushButton>
#include <QTableView>
#include <QVBoxLayout>

#include <algorithm>

namespace tov::workbench {

using provider::ITestHooks;

OverviewPanel::OverviewPanel(Instrument& instrument, QWidget* parent)
    : Panel(instrument, parent)
{
    addFacts();
    addControls();
    addButtons();

    connect(&instrument, &Instrument::stateChanged, this, &OverviewPanel::takeOver);
    connect(&instrument, &Instrument::presenceChanged, this, [this] {
        m_controls.show([this](const host::ControlName& kind) { return this->instrument().isPresent(kind); });
        enableButtons();
    });
    connect(&instrument, &Instrument::callChanged, this, [this](const Call& call) { m_controls.note(call); });
    takeOver();
}

void OverviewPanel::refresh()
{
    instrument().lookForControls();
}

void OverviewPanel::addFacts()
{
    auto* const facts = new QFormLayout;
    m_model = addFact(*facts, tr("Instrument"), {});
    m_serialNumber = addFact(*facts, tr("Serial number"), {});
    m_description = addFact(*facts, tr("Description"), {});
    m_provider = addFact(*facts, tr("Provider"), {});
    m_providerFile = addFact(*facts, tr("Loaded from"), {});
    const QString version = QString::fromLatin1(devices::service::version);
    addFact(*facts, tr("DevicesService"), tr("%1, with Qt %2").arg(version, QString::fromLatin1(qVersion())));
    addFact(*facts, tr("Loaded from"), host::loadedLibraryPath());
    contents().addLayout(facts);
}

ValueLabel* OverviewPanel::addFact(QFormLayout& facts, const QString& name, const QString& shown)
{
    auto* const label = new ValueLabel(name, this);
    label->showValue(shown);
    label->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred); // a long path does not widen the window
    facts.addRow(name + ':', label);
    return label;
}

void OverviewPanel::addControls()
{
    auto* const table = new QTableView(this);
    table->setObjectName(QStringLiteral("controls"));
    table->setAccessibleName(tr("Controls of the instrument"));
    table->setModel(&m_controls);
    table->setSelectionBehavior(QAbstractItemView::SelectRows);
    table->setTabKeyNavigation(false);
    table->setAlternatingRowColors(true);
    table->setShowGrid(false);
    table->verticalHeader()->hide();
    table->verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 6);
    table->horizontalHeader()->setStretchLastSection(true);
    table->horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    table->horizontalHeader()->setHighlightSections(false);
    table->setColumnWidth(ControlsModel::Name, fontMetrics().averageCharWidth() * 34);
    rememberColumns(*table->horizontalHeader(), QStringLiteral("controls"));
    contents().addWidget(table, 1);
}

void OverviewPanel::addButtons()
{
    m_release = new QPushButton(tr("Take the controls &away"), this);
    m_release->setObjectName(QStringLiteral("release"));
    m_offer = new QPushButton(tr("O&ffer them again"), this);
    m_offer->setObjectName(QStringLiteral("offer"));
    for (QPushButton* const button : {m_release, m_offer})
        button->setToolTip(tr("For instruments that tests may do everything to"));
    connect(m_release, &QPushButton::clicked, this,
            [this] { askHooks(tr("take the controls away"), &ITestHooks::releaseControls); });
    connect(m_offer, &QPushButton::clicked, this,
            [this] { askHooks(tr("offer the controls"), &ITestHooks::offerControls); });

    auto* const buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(m_release);
    buttons->addWidget(m_offer);
    contents().addLayout(buttons);
}

void OverviewPanel::takeOver()
{
    const auto& description = instrument().description();
    const auto& provider = instrument().provider();
    const auto shown = [](const QString& text) { return text.isEmpty() ? QStringLiteral("–") : text; };
    m_model->showValue(shown(description.model.isEmpty() ? description.id : description.model));
    m_serialNumber->showValue(shown(description.serialNumber));
    m_description->showValue(shown(description.description));
    m_provider->showValue(shown(QStringLiteral("%1 %2").arg(provider.name, provider.version).trimmed()));
    m_providerFile->showValue(shown(provider.file));
    enableButtons();
}

void OverviewPanel::enableButtons()
{
    const auto& abilities = instrument().abilities();
    const bool can = instrument().state() == Instrument::State::Open
                     && std::ranges::find(abilities, ITestHooks::Ability::ReleaseAndOffer) != abilities.end();
    const bool has = std::ranges::any_of(
        host::controls::all, [this](const host::ControlName& kind) { return instrument().isPresent(kind); });
    m_release->setEnabled(can && has);
    m_offer->setEnabled(can && !has);
}

void OverviewPanel::askHooks(const QString& what, provider::Result<void> (ITestHooks::*act)())
{
    follow(what, instrument().callTestHooks(what, [act](ITestHooks& hooks) { return (hooks.*act)(); }),
           [](const provider::Result<void>&) {});
}

} // namespace tov::workbench
