#include "workbench/panels/controllerspage.h"

#include "workbench/panels/controlsection.h"

#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>

namespace tov::workbench {

using provider::ITestHooks;
namespace controls = host::controls;

ControllerView::ControllerView(Panel& panel, const host::ControlName& kind, QWidget* parent)
    : QWidget(parent)
    , m_panel(panel)
    , m_kind(kind)
    , m_unit(new QLabel(tr("nothing told yet"), this))
    , m_configuration(new QLabel(tr("nothing told yet"), this))
    , m_save(new QProgressBar(this))
    , m_try(new QPushButton(tr("Have it tell something"), this))
{
    m_unit->setObjectName(QStringLiteral("unit"));
    m_configuration->setObjectName(QStringLiteral("configuration"));
    m_save->setObjectName(QStringLiteral("save"));
    m_save->setAccessibleName(tr("How far the save is"));
    m_save->setRange(0, 100);
    m_save->setValue(0);
    m_try->setObjectName(QStringLiteral("try"));
    m_try->setToolTip(tr("For instruments that tests may do everything to"));
    auto* const form = new QFormLayout(this);
    form->setContentsMargins(0, 0, 0, 0);
    form->addRow(tr("Status of the unit:"), m_unit);
    form->addRow(tr("Configuration:"), m_configuration);
    form->addRow(tr("Save:"), m_save);
    auto* const row = new QHBoxLayout;
    row->addStretch();
    row->addWidget(m_try);
    form->addRow(row);

    connect(&panel.instrument(), &Instrument::notified, this, &ControllerView::hear);
    connect(&panel.instrument(), &Instrument::stateChanged, this, &ControllerView::enableTrial);
    connect(m_try, &QPushButton::clicked, this, [this] {
        const QString what = tr("have %1 tell something").arg(QString::fromUtf8(m_kind.name));
        m_panel.clearFault();
        m_panel.follow(what,
                       m_panel.instrument().callTestHooks(
                           what, [key = m_kind.keys.sdk](provider::ITestHooks& hooks) { return hooks.notify(key); }),
                       [](const provider::Result<void>&) {});
    });
    enableTrial();
}

void ControllerView::hear(const Notification& told)
{
    if (told.control != QString::fromUtf8(m_kind.name))
        return;
    const QString changed = tr("changed at %1").arg(told.time.time().toString());
    if (told.name == QStringLiteral("unit-status-changed"))
        m_unit->setText(changed);
    else if (told.name == QStringLiteral("configuration-changed"))
        m_configuration->setText(changed);
    else if (!told.numbers.isEmpty())
        m_save->setValue(static_cast<int>(std::clamp(told.numbers.first(), 0.0, 100.0)));
}

void ControllerView::enableTrial()
{
    const auto& abilities = m_panel.instrument().abilities();
    m_try->setVisible(std::ranges::find(abilities, ITestHooks::Ability::Notify) != abilities.end());
}

ControllersPage::ControllersPage(Panel& panel)
    : Page(panel)
{
    const auto add = [&](const host::ControlName& kind, const QString& title) {
        auto* const section = new ControlSection(instrument(), kind, title, this);
        section->contents().addWidget(new ControllerView(panel, kind, section));
        contents().addWidget(section);
    };
    add(controls::calibrationController1, tr("First calibration controller"));
    add(controls::calibrationController2, tr("Second calibration controller"));
    contents().addStretch();
}

} // namespace tov::workbench
