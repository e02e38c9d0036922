#include "workbench/panels/logpanel.h"

#include "tools/files/localfile.h"
#include "workbench/instrument/background.h"
#include "workbench/panels/remembered.h"

#include <QAction>
#include <QClipboard>
#include <QFile>
#include <QFileDialog>
#include <QGuiApplication>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QSortFilterProxyModel>
#include <QTableView>
#include <QVBoxLayout>

#include <algorithm>

namespace tov::workbench {

LogPanel::LogPanel(Instrument& instrument, QWidget* parent)
    : Panel(instrument, parent)
    , m_shown(new QSortFilterProxyModel(this))
    , m_filter(new QLineEdit(this))
    , m_table(new QTableView(this))
{
    m_shown->setSourceModel(&m_log);
    m_shown->setFilterKeyColumn(-1); // all
    m_shown->setFilterCaseSensitivity(Qt::CaseInsensitive);
    addFilter();
    addTable();
    addButtons();
    connect(&instrument, &Instrument::callChanged, this, [this](const Call& call) { m_log.note(call); });
    connect(&instrument, &Instrument::notified, this,
            [this](const Notification& notification) { m_log.note(notification); });
    keepLastInSight();
}

void LogPanel::addFilter()
{
    auto* const label = new QLabel(tr("&Show lines with"), this);
    label->setBuddy(m_filter);
    m_filter->setObjectName(QStringLiteral("filter"));
    m_filter->setClearButtonEnabled(true);
    m_filter->setPlaceholderText(tr("a control, a word, \"failed\" …"));
    connect(m_filter, &QLineEdit::textChanged, m_shown, &QSortFilterProxyModel::setFilterFixedString);
    auto* const find = new QAction(tr("Filter"), this);
    find->setShortcut(QKeySequence::Find);
    connect(find, &QAction::triggered, m_filter, qOverload<>(&QWidget::setFocus));
    addAction(find);
    auto* const row = new QHBoxLayout;
    row->addWidget(label);
    row->addWidget(m_filter, 1);
    contents().addLayout(row);
}

void LogPanel::addTable()
{
    m_table->setObjectName(QStringLiteral("lines"));
    m_table->setAccessibleName(tr("Calls and notifications"));
    m_table->setModel(m_shown);
    m_table->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_table->setTabKeyNavigation(false);
    m_table->setAlternatingRowColors(true);
    m_table->setShowGrid(false);
    m_table->setWordWrap(false);
    m_table->verticalHeader()->hide();
    m_table->verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 6);
    m_table->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed); // so that many lines cost nothing
    m_table->horizontalHeader()->setStretchLastSection(true);
    m_table->horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    m_table->horizontalHeader()->setHighlightSections(false);
    const int character = fontMetrics().averageCharWidth();
    for (const auto& [column, characters] : {std::pair(LogModel::Time, 16), std::pair(LogModel::Thread, 20),
                                             std::pair(LogModel::Control, 28), std::pair(LogModel::What, 44)})
        m_table->setColumnWidth(column, character * characters);
    rememberColumns(*m_table->horizontalHeader(), QStringLiteral("log"));
    contents().addWidget(m_table, 1);
}

void LogPanel::addButtons()
{
    auto* const buttons = new QHBoxLayout;
    buttons->addStretch();
    const auto add = [&](const QString& label, const char* name, auto act) {
        auto* const button = new QPushButton(label, this);
        button->setObjectName(QString::fromLatin1(name));
        connect(button, &QPushButton::clicked, this, act);
        buttons->addWidget(button);
    };
    add(tr("Co&py"), "copy", [this] { copy(); });
    add(tr("Sa&ve…"), "save", [this] { askForFile(); });
    add(tr("Clea&r"), "clear", [this] { m_log.clear(); });
    contents().addLayout(buttons);

    auto* const copying = new QAction(tr("Copy"), this);
    copying->setShortcut(QKeySequence::Copy);
    copying->setShortcutContext(Qt::WidgetShortcut);
    connect(copying, &QAction::triggered, this, &LogPanel::copy);
    m_table->addAction(copying);
}

// As long as the user has not scrolled away from it.
void LogPanel::keepLastInSight()
{
    const auto isAtEnd = std::make_shared<bool>(true);
    QScrollBar* const bar = m_table->verticalScrollBar();
    connect(m_shown, &QAbstractItemModel::rowsAboutToBeInserted, this,
            [bar, isAtEnd] { *isAtEnd = bar->value() == bar->maximum(); });
    connect(bar, &QScrollBar::rangeChanged, this, [bar, isAtEnd] {
        if (*isAtEnd)
            bar->setValue(bar->maximum());
    });
}

QList<int> LogPanel::shownRows() const
{
    QList<int> rows;
    rows.reserve(m_shown->rowCount());
    for (int row = 0; row < m_shown->rowCount(); ++row)
        rows.append(m_shown->mapToSource(m_shown->index(row, 0)).row());
    return rows;
}

QString LogPanel::textOf(const QList<int>& rows) const
{
    QString text;
    for (const int row : rows)
        text.append(m_log.line(row)).append('\n');
    return text;
}

// What is selected, or all that is shown.
void LogPanel::copy() const
{
    QList<int> rows;
    for (const QModelIndex& index : m_table->selectionModel()->selectedRows())
        rows.append(m_shown->mapToSource(index).row());
    std::ranges::sort(rows);
    QGuiApplication::clipboard()->setText(textOf(rows.isEmpty() ? shownRows() : rows));
}

void LogPanel::askForFile()
{
    auto* const dialog = new QFileDialog(this, tr("Save what is shown"));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    dialog->setDefaultSuffix(QStringLiteral("tsv"));
    dialog->setNameFilter(tr("Values divided by tabs (*.tsv)"));
    connect(dialog, &QFileDialog::fileSelected, this, &LogPanel::save);
    dialog->open();
}

void LogPanel::save(const QString& file)
{
    clearFault();
    follow(tr("save the log"), inBackground([file, text = m_log.headings() + '\n' + textOf(shownRows())] {
               const LocalTarget target{.path = QFile::encodeName(file).toStdString(), .force = true}; // it was asked
               writeLocalFile(target, text.toUtf8());
           }),
           [] {});
}

} // namespace tov::workbench
