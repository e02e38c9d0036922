#include "workbench/panels/termspage.h"

#include "workbench/instrument/background.h"
#include "workbench/panels/controlsection.h"
#include "workbench/panels/curvepreview.h"
#include "workbench/panels/filechoice.h"
#include "workbench/panels/tables.h"

#include <QFileInfo>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLocale>
#include <QPushButton>
#include <QSplitter>
#include <QTableView>
#include <QVBoxLayout>

#include <utility>
#include <vector>

namespace tov::workbench {

using devices::service::ISystemTermsControl;
namespace controls = host::controls;

namespace {

struct Stored
{
    std::vector<ISystemTermsControl::TermsRecord> records;
    bool flag;
};

RowsModel::Rows rowsOf(const std::vector<ISystemTermsControl::TermsRecord>& records)
{
    RowsModel::Rows rows;
    rows.reserve(records.size());
    for (const auto& record : records)
        rows.push_back({static_cast<qlonglong>(record.key), record.value, static_cast<qlonglong>(record.number)});
    return rows;
}

} // namespace

TermsPage::TermsPage(Panel& panel)
    : Page(panel)
    , m_records({tr("Key"), tr("Value"), tr("Number")})
    , m_fileRecords({tr("Key"), tr("Value"), tr("Number")})
    , m_fileTerms({gigahertzTitle()})
{
    auto* const section = new ControlSection(instrument(), controls::systemTerms, {}, this);
    auto* const both = new QSplitter(section);
    both->setChildrenCollapsible(false);
    both->addWidget(makeStored());
    both->addWidget(makeFile());
    both->setStretchFactor(0, 2);
    both->setStretchFactor(1, 5);
    section->contents().addWidget(both);
    contents().addWidget(section);
}

void TermsPage::refresh()
{
    if (!instrument().isPresent(controls::systemTerms))
        return;
    panel().ask(
        controls::systemTerms, tr("read the records of the system terms"),
        [](ISystemTermsControl& control) { return Stored{control.termsRecords(), control.systemTermsFlag()}; },
        [this](const Stored& stored) {
            m_records.setRows(rowsOf(stored.records));
            m_flag->setText(stored.flag ? tr("The flag of the terms is on.") : tr("The flag of the terms is off."));
        });
}

void TermsPage::openFile(const QString& path)
{
    panel().clearFault();
    panel().follow(tr("read the file"), inBackground([path = localPath(path)] { return read(path); }),
                   [this, path](const ReadFile& file) { showFile(file, path); });
}

TermsPage::ReadFile TermsPage::read(const std::string& path)
{
    ReadFile read{.file = readTermsFile(path), .sheets = {}, .table = {}};
    read.sheets = magnitudesOf(read.file.terms);
    read.table = tableOf(read.sheets.front()); // all of them
    return read;
}

QWidget* TermsPage::makeStored()
{
    auto* const stored = new QWidget(this);
    auto* const layout = new QVBoxLayout(stored);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(new QLabel(tr("Records in the instrument"), stored));
    layout->addWidget(makeTable(m_records, QStringLiteral("terms-records"), tr("Records of the system terms"), stored));
    m_flag = new QLabel(stored);
    m_flag->setObjectName(QStringLiteral("terms-flag"));
    layout->addWidget(m_flag);
    return stored;
}

QWidget* TermsPage::makeFile()
{
    auto* const file = new QWidget(this);
    auto* const layout = new QVBoxLayout(file);
    layout->setContentsMargins(0, 0, 0, 0);
    m_fileFacts = new QLabel(tr("No file is open."), file);
    m_fileFacts->setObjectName(QStringLiteral("terms-file"));
    m_fileFacts->setWordWrap(true);
    layout->addWidget(m_fileFacts);
    m_preview =
        new CurvePreview(tr("Magnitudes of the system terms"),
                         tr("The terms of a file are plotted here. The instrument does not give back its own."), file);
    auto* const tables = new QSplitter(file);
    tables->setChildrenCollapsible(false);
    m_table = makeChangingTable(m_fileTerms, QStringLiteral("file-terms"), tr("Magnitudes of the file's terms in dB"),
                                tables);
    m_table->horizontalHeader()->setResizeContentsPrecision(0); // by what is seen: there may be many rows
    tables->addWidget(m_table);
    tables->addWidget(
        makeTable(m_fileRecords, QStringLiteral("file-records"), tr("Records of the file"), tables, {8, 10}));
    tables->setStretchFactor(0, 4);
    tables->setStretchFactor(1, 1);
    auto* const views = new QSplitter(Qt::Vertical, file);
    views->setChildrenCollapsible(false);
    views->addWidget(m_preview);
    views->addWidget(tables);
    views->setStretchFactor(0, 3);
    views->setStretchFactor(1, 1);
    layout->addWidget(views, 1);

    auto* const buttons = new QHBoxLayout;
    buttons->addStretch();
    auto* const open = new QPushButton(tr("O&pen a file…"), file);
    open->setObjectName(QStringLiteral("open-terms"));
    m_write = new QPushButton(tr("Wr&ite into the instrument…"), file);
    m_write->setObjectName(QStringLiteral("write-terms"));
    m_write->setEnabled(false);
    buttons->addWidget(open);
    buttons->addWidget(m_write);
    layout->addLayout(buttons);
    connect(open, &QPushButton::clicked, this, [this] {
        chooseFile(*this, tr("System terms"), tr("System terms (*.json);;All files (*)"),
                   [this](const QString& path) { openFile(path); });
    });
    connect(m_write, &QPushButton::clicked, this, &TermsPage::askToWrite);
    return file;
}

void TermsPage::showFile(const ReadFile& read, const QString& path)
{
    const TermsFile& file = read.file;
    m_file = file;
    m_fileName = QFileInfo(path).fileName();
    m_fileFacts->setText(tr("%1: measured %2, parameter %3, %n records", nullptr, static_cast<int>(file.records.size()))
                             .arg(m_fileName, QLocale().toString(file.time.toLocalTime(), QLocale::ShortFormat))
                             .arg(file.parameter));
    m_preview->setSheets(read.sheets);
    m_fileTerms.setTable(read.table.headings, read.table.rows);
    m_table->resizeColumnsToContents();
    m_fileRecords.setRows(rowsOf(file.records));
    m_write->setEnabled(true);
}

void TermsPage::askToWrite()
{
    confirm(tr("Replace the system terms of the instrument by those of %1?").arg(m_fileName), tr("&Yes, replace"),
            [this, file = m_file] { write(file); }); // another one may be opened before the user answers
}

void TermsPage::write(const TermsFile& file)
{
    panel().clearFault();
    panel().ask(
        controls::systemTerms, tr("write the system terms"),
        [file](ISystemTermsControl& control) {
            if (file.records.empty())
                control.writeSystemTerms(file.time, file.parameter, file.terms);
            else
                control.writeSystemTerms(file.time, file.parameter, file.records, file.terms);
        },
        [this] { refresh(); });
}

} // namespace tov::workbench
