#include "workbench/panels/tuningpanel.h"

#include "tools/files/localfile.h"
#include "workbench/models/settingchange.h"
#include "workbench/panels/tuningpage.h"

#include <QAction>
#include <QFile>
#include <QHBoxLayout>
#include <QListWidget>
#include <QScopedValueRollback>
#include <QStackedWidget>
#include <QTimer>
#include <QToolButton>
#include <QVBoxLayout>

#include <functional>

namespace tov::workbench {

namespace {

QString textOf(const TuneModule& module, const TuneSetting& setting, const QJsonValue& value)
{
    return TuningPanel::tr("set %1 of %2 to %3")
        .arg(QString::fromStdString(setting.name), nameOf(module), shownValue(value));
}

} // namespace

TuningPanel::TuningPanel(Instrument& instrument, QWidget* parent)
    : Panel(instrument, parent)
    , m_undo(m_changes.createUndoAction(this))
    , m_redo(m_changes.createRedoAction(this))
    , m_names(new QListWidget(this))
    , m_stack(new QStackedWidget(this))
    , m_reads(new QTimer(this))
{
    m_names->setObjectName(QStringLiteral("modules"));
    m_stack->setObjectName(QStringLiteral("pages"));
    m_names->setAccessibleName(tr("Hardware modules"));
    m_names->setFixedWidth(fontMetrics().averageCharWidth() * 24);
    m_names->setSpacing(2);
    auto* const left = new QVBoxLayout;
    left->addWidget(m_names, 1);
    left->addLayout(undoButtons());
    auto* const halves = new QHBoxLayout;
    halves->addLayout(left);
    halves->addWidget(m_stack, 1);
    contents().addLayout(halves, 1);
    for (const TuneModule& module : tuneModules())
        addPage(module);
    m_names->setCurrentRow(0);

    m_reads->setSingleShot(true);
    m_reads->setInterval(50); // of many notifications at once the last counts
    connect(m_reads, &QTimer::timeout, this, &TuningPanel::readInFront);
    connect(m_names, &QListWidget::currentRowChanged, this, [this](int row) {
        m_stack->setCurrentIndex(row);
        readInFront();
    });
    connect(&instrument, &Instrument::notified, this,
            [this](const Notification& notification) { markOld(notification.control); });
    connect(&instrument, &Instrument::controlsReleased, this, [this] {
        m_changes.clear();
        for (const Page& page : m_pages)
            page.page->setEnabled(false); // until it is read again
    });
}

void TuningPanel::refresh()
{
    for (Page& page : m_pages)
        page.isOld = true;
    readInFront();
}

void TuningPanel::showEvent(QShowEvent* event)
{
    Panel::showEvent(event);
    readInFront(); // what was told of meanwhile
}

QLayout* TuningPanel::undoButtons()
{
    auto* const buttons = new QHBoxLayout;
    const auto add = [&](QAction* action, const QKeySequence& keys, const char* name) {
        action->setObjectName(QString::fromLatin1(name));
        action->setShortcut(keys);
        addAction(action); // whose keys count while the panel is seen
        auto* const button = new QToolButton(this);
        button->setDefaultAction(action);
        button->setToolButtonStyle(Qt::ToolButtonTextOnly);
        button->setFocusPolicy(Qt::StrongFocus);
        button->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
        buttons->addWidget(button);
    };
    add(m_undo, QKeySequence::Undo, "undo");
    add(m_redo, QKeySequence::Redo, "redo");
    // What would be undone is too long for a button.
    for (QAction* const action : {m_undo, m_redo})
        connect(action, &QAction::changed, this, [this, action] {
            const QString shortText = action == m_undo ? tr("&Undo") : tr("Re&do");
            if (action->iconText() != shortText)
                action->setIconText(shortText);
        });
    m_undo->setIconText(tr("&Undo"));
    m_redo->setIconText(tr("Re&do"));
    connect(&m_changes, &QUndoStack::canUndoChanged, this, &TuningPanel::enableUndo); // after the actions themselves
    connect(&m_changes, &QUndoStack::canRedoChanged, this, &TuningPanel::enableUndo);
    return buttons;
}

void TuningPanel::addPage(const TuneModule& module)
{
    const std::size_t index = m_pages.size();
    auto* const page = new TuningPage(module, this);
    page->setEnabled(false); // until it is read
    m_pages.push_back({.page = page});
    m_names->addItem(nameOf(module));
    m_stack->addWidget(page);
    connect(page, &TuningPage::edited, this,
            [this, index](const TuneSetting& setting, const QJsonValue& value) { change(index, setting, value); });
    connect(page, &TuningPage::resetAsked, this, [this, index] { reset(index); });
    connect(page, &TuningPage::loadAsked, this,
            [this, index](const TuneTable& table, const QString& file) { load(index, table, file); });
}

void TuningPanel::readInFront()
{
    const auto index = static_cast<std::size_t>(m_stack->currentIndex());
    if (index < m_pages.size() && m_pages[index].isOld && isVisible()
        && instrument().state() == Instrument::State::Open)
        read(index);
}

void TuningPanel::markOld(const QString& control)
{
    for (Page& page : m_pages)
        if (nameOf(page.page->module()) == control) {
            page.isOld = true;
            m_reads->start();
        }
}

void TuningPanel::read(std::size_t index)
{
    m_pages[index].isOld = false;
    TuningPage* const page = m_pages[index].page;
    const TuneModule& module = page->module();
    const QString what = tr("read the settings of %1").arg(nameOf(module));
    follow(
        what,
        callModule(instrument(), module, what, [&module](TunedAdapter adapter) { return readModule(module, adapter); }),
        [page](const ReadModule& read) {
            page->show(read);
            page->setEnabled(true);
        });
}

void TuningPanel::write(std::size_t index, const TuneSetting& setting, const QJsonValue& value, const Ended& ended)
{
    clearFault();
    const TuneModule& module = m_pages[index].page->module();
    const QString what = textOf(module, setting, value);
    const auto call = callModule(instrument(), module, what, [&setting, value](TunedAdapter adapter) {
        // What the page shows may be old, or may never have been taken.
        QJsonValue before = setting.read(adapter);
        changeSetting(adapter, setting, value);
        return before;
    });
    countWrites(+1);
    follow(
        what, call, [](const QJsonValue&) {},
        [this, call, ended] {
            ended(call.isResultReadyAt(0) ? std::optional(call.result()) : std::nullopt);
            countWrites(-1);
        });
    read(index); // also when it was not taken
}

void TuningPanel::change(std::size_t index, const TuneSetting& setting, const QJsonValue& after)
{
    write(index, setting, after, [this, index, &setting, after](const std::optional<QJsonValue>& before) {
        if (before && !before->isNull() && *before != after) // otherwise there is no way back
            m_changes.push(new SettingChange(
                textOf(m_pages[index].page->module(), setting, after), *before, after,
                [this, index, &setting](const QJsonValue& value) { changeAgain(index, setting, value); }));
    });
}

// Undoes a change or makes it again, one at a time.
void TuningPanel::changeAgain(std::size_t index, const TuneSetting& setting, const QJsonValue& value)
{
    if (m_corrects)
        return;
    m_names->setCurrentRow(static_cast<int>(index)); // where it is seen
    write(index, setting, value, [this, place = m_changes.index()](const std::optional<QJsonValue>& before) {
        if (before)
            return;
        const QScopedValueRollback corrects(m_corrects, true);
        m_changes.setIndex(place); // it still is as it was
    });
}

void TuningPanel::countWrites(int more)
{
    m_writes += more;
    enableUndo();
}

// While something is written, the newest change is not known yet.
void TuningPanel::enableUndo()
{
    m_undo->setEnabled(m_writes == 0 && m_changes.canUndo());
    m_redo->setEnabled(m_writes == 0 && m_changes.canRedo());
}

void TuningPanel::reset(std::size_t index)
{
    clearFault();
    const TuneModule& module = m_pages[index].page->module();
    const QString what = tr("reset %1").arg(nameOf(module));
    countWrites(+1);
    follow(
        what, callModule(instrument(), module, what, module.reset),
        [this] { m_changes.clear(); }, // also of what was answered meanwhile: it is not known what was before
        [this] { countWrites(-1); });
    read(index);
}

void TuningPanel::load(std::size_t index, const TuneTable& table, const QString& file)
{
    clearFault();
    const TuneModule& module = m_pages[index].page->module();
    const QString what = tr("load %1 into %2").arg(QString::fromStdString(table.name), nameOf(module));
    const auto loadFile = [&table, path = QFile::encodeName(file).toStdString()](TunedAdapter adapter) {
        const QByteArray contents = readLocalFile(path);
        table.load(adapter, {contents.begin(), contents.end()});
    };
    follow(what, callModule(instrument(), module, what, loadFile), [] {});
    read(index);
}

} // namespace tov::workbench
