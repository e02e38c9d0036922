#include "workbench/panels/calibrationpage.h"

#include "workbench/instrument/background.h"
#include "workbench/panels/controlsection.h"
#include "workbench/panels/curvepreview.h"
#include "workbench/panels/filechoice.h"
#include "workbench/panels/plot.h"
#include "workbench/panels/tables.h"

#include <QFileInfo>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QSplitter>
#include <QTableView>
#include <QVBoxLayout>

#include <utility>

namespace tov::workbench {

CalibrationPage::CalibrationPage(Panel& panel, CalibrationKind kind)
    : Page(panel)
    , m_kind(std::move(kind))
    , m_plan({tr("Start (Hz)"), tr("Stop (Hz)"), tr("Points")})
{
    auto* const section = new ControlSection(instrument(), m_kind.control, {}, this);
    auto* const both = new QSplitter(Qt::Vertical, section);
    both->setChildrenCollapsible(false);
    both->addWidget(makePlan());
    both->addWidget(makeFile());
    both->setStretchFactor(0, 2);
    both->setStretchFactor(1, 3);
    section->contents().addWidget(both);
    contents().addWidget(section);
    connect(&instrument(), &Instrument::notified, this, &CalibrationPage::showTold);
}

void CalibrationPage::refresh()
{
    if (!instrument().isPresent(m_kind.control))
        return;
    const QString what = tr("read the frequency plan");
    panel().follow(what, m_kind.readPlan(instrument(), what),
                   [this](const std::vector<PlanSegment>& plan) { showPlan(plan); });
}

void CalibrationPage::openFile(const QString& path)
{
    panel().clearFault();
    panel().follow(tr("read the file"),
                   inBackground([reader = m_kind.readFile, path = localPath(path)] { return reader(path); }),
                   [this, path](const CalibrationData& read) { showFile(read, path); });
}

QWidget* CalibrationPage::makePlan()
{
    auto* const plan = new QWidget(this);
    auto* const layout = new QHBoxLayout(plan);
    layout->setContentsMargins(0, 0, 0, 0);
    auto* const listed = new QVBoxLayout;
    listed->addWidget(new QLabel(tr("Frequency plan"), plan));
    listed->addWidget(makeTable(m_plan, QStringLiteral("plan"), tr("Segments of the frequency plan"), plan));
    m_bands = new Plot(tr("The segments as bands over frequency"), plan);
    m_bands->setTitles(gigahertzTitle(), tr("Points"));
    layout->addLayout(listed, 2);
    layout->addWidget(m_bands, 3);
    return plan;
}

QWidget* CalibrationPage::makeFile()
{
    auto* const file = new QWidget(this);
    auto* const layout = new QVBoxLayout(file);
    layout->setContentsMargins(0, 0, 0, 0);
    m_facts = new QLabel(tr("No file is open."), file);
    m_facts->setObjectName(QStringLiteral("calibration-file"));
    m_facts->setWordWrap(true);
    layout->addWidget(m_facts);
    m_preview = new CurvePreview(tr("The data of the file"),
                                 tr("The data of a file are plotted here before they are saved."), file);
    layout->addWidget(m_preview, 1);

    auto* const foot = new QHBoxLayout;
    m_told = new QLabel(file);
    m_told->setObjectName(QStringLiteral("calibration-told"));
    foot->addWidget(m_told, 1);
    auto* const open = new QPushButton(tr("O&pen a file…"), file);
    open->setObjectName(QStringLiteral("open-calibration"));
    m_save = new QPushButton(tr("&Save in the instrument…"), file);
    m_save->setObjectName(QStringLiteral("save-calibration"));
    m_save->setEnabled(false);
    foot->addWidget(open);
    foot->addWidget(m_save);
    layout->addLayout(foot);
    connect(open, &QPushButton::clicked, this, [this] {
        chooseFile(*this, m_kind.fileTitle, tr("Comma-separated values (*.csv);;All files (*)"),
                   [this](const QString& path) { openFile(path); });
    });
    connect(m_save, &QPushButton::clicked, this, &CalibrationPage::askToSave);
    return file;
}

void CalibrationPage::showPlan(const std::vector<PlanSegment>& plan)
{
    m_plan.setRows(rowsOf(plan));
    m_bands->setBands(bandsOf(plan));
    m_bands->fit();
}

void CalibrationPage::showFile(const CalibrationData& read, const QString& path)
{
    m_file = std::make_shared<const OpenFile>(QFileInfo(path).fileName(), read);
    m_facts->setText(m_file->facts());
    m_preview->setSheets(read.sheets);
    m_save->setEnabled(true);
}

// States and events have no meaning that is known, so they stand as the instrument tells them.
void CalibrationPage::showTold(const Notification& told)
{
    if (told.control != QString::fromUtf8(m_kind.control.name))
        return;
    const QString number = told.numbers.isEmpty() ? QString() : QStringLiteral(" %1").arg(told.numbers.first());
    m_told->setText(tr("The instrument told at %1: %2%3").arg(told.time.time().toString(), told.name, number));
}

// Another file may be opened before the user answers, and before the instrument does.
void CalibrationPage::askToSave()
{
    confirm(tr("Replace the calibration data of the instrument by those of %1?").arg(m_file->name), tr("&Yes, replace"),
            [this, file = m_file] { save(file); });
}

void CalibrationPage::save(const std::shared_ptr<const OpenFile>& file)
{
    panel().clearFault();
    const QString what = tr("save the calibration data");
    m_save->setEnabled(false);
    panel().follow(
        what, file->data.save(instrument(), what),
        [this, file] {
            if (m_file == file)
                m_facts->setText(tr("%1. Saved in the instrument.").arg(file->facts()));
        },
        [this] { m_save->setEnabled(true); });
}

} // namespace tov::workbench
