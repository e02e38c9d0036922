#include "workbench/panels/tuningpage.h"

#include "workbench/panels/frequencyplot.h"
#include "workbench/panels/settingeditor.h"

#include <QFileDialog>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QScrollArea>
#include <QSplitter>

#include <algorithm>

namespace tov::workbench {

using Plot = TuneSetting::Plot;

TuningPage::TuningPage(const TuneModule& module, QWidget* parent)
    : QWidget(parent)
    , m_module(module)
{
    auto* const settings = new QWidget(this);
    auto* const form = new QGridLayout(settings);
    form->setHorizontalSpacing(fontMetrics().averageCharWidth() * 3);
    for (std::size_t i = 0; i < module.settings.size(); ++i)
        addSetting(*form, i);
    form->setColumnStretch(2, 1);
    form->setRowStretch(form->rowCount(), 1);

    auto* const scroll = new QScrollArea(this);
    scroll->setWidget(settings);
    scroll->setWidgetResizable(true);
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setFocusPolicy(Qt::NoFocus);

    auto* const parts = new QSplitter(Qt::Vertical, this);
    parts->setChildrenCollapsible(false);
    if (std::ranges::any_of(module.settings, [](const TuneSetting& each) { return each.plot != Plot::None; }))
        parts->addWidget(m_plot = new FrequencyPlot(this));
    parts->addWidget(scroll);
    parts->setStretchFactor(parts->count() - 1, 1);

    auto* const buttons = new QHBoxLayout;
    addButtons(*buttons);
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(parts, 1);
    layout->addLayout(buttons);
}

void TuningPage::show(const ReadModule& read)
{
    for (std::size_t i = 0; i < m_editors.size(); ++i)
        if (m_editors[i] != nullptr)
            m_editors[i]->show(read[i]);
    if (m_plot != nullptr)
        m_plot->show(powerCurves(m_module, read), bands(m_module, read));
}

void TuningPage::addSetting(QGridLayout& form, std::size_t index)
{
    const TuneSetting& setting = m_module.settings[index];
    if (setting.plot != Plot::None && !setting.write) {
        m_editors.push_back(nullptr);
        return;
    }
    auto* const editor = m_editors.emplace_back(new SettingEditor(setting, this));
    auto* const name = new QLabel(QString::fromStdString(setting.name), this);
    name->setBuddy(editor);
    auto* const meaning = new QLabel(QString::fromStdString(setting.meaning), this);
    meaning->setForegroundRole(QPalette::PlaceholderText);
    const int row = form.rowCount();
    form.addWidget(name, row, 0);
    form.addWidget(editor, row, 1);
    form.addWidget(meaning, row, 2);
    connect(editor, &SettingEditor::edited, this,
            [this, &setting](const QJsonValue& value) { Q_EMIT edited(setting, value); });
}

void TuningPage::addButtons(QHBoxLayout& buttons)
{
    buttons.addStretch();
    for (const TuneTable& table : m_module.tables) {
        const QString name = QString::fromStdString(table.name);
        auto* const load = new QPushButton(tr("Load %1…").arg(name), this);
        load->setObjectName(QStringLiteral("load-") + name);
        connect(load, &QPushButton::clicked, this, [this, &table] { askForFile(table); });
        buttons.addWidget(load);
    }
    if (!m_module.reset)
        return;
    auto* const reset = new QPushButton(tr("Reset t&he module"), this);
    reset->setObjectName(QStringLiteral("reset"));
    connect(reset, &QPushButton::clicked, this, &TuningPage::resetAsked);
    buttons.addWidget(reset);
}

void TuningPage::askForFile(const TuneTable& table)
{
    auto* const dialog = new QFileDialog(this, tr("Load %1").arg(QString::fromStdString(table.name)));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setFileMode(QFileDialog::ExistingFile);
    connect(dialog, &QFileDialog::fileSelected, this,
            [this, &table](const QString& file) { Q_EMIT loadAsked(table, file); });
    dialog->open();
}

} // namespace tov::workbench
