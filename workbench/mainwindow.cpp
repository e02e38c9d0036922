#include "workbench/mainwindow.h"

#include "workbench/panels/noticebar.h"
#include "workbench/panels/panels.h"

#include <QAction>
#include <QCloseEvent>
#include <QLabel>
#include <QMenuBar>
#include <QSettings>
#include <QStatusBar>
#include <QTabWidget>
#include <QTimer>
#include <QVBoxLayout>

#include <utility>

namespace tov::workbench {

namespace {

const auto geometryKey = QStringLiteral("window/geometry");
const auto panelKey = QStringLiteral("window/panel");

} // namespace

MainWindow::MainWindow(Instrument& instrument, Instrument::Opener opener)
    : m_instrument(instrument)
    , m_opener(std::move(opener))
    , m_notice(new NoticeBar(this))
    , m_panels(new QTabWidget(this))
    , m_callLabel(new QLabel(this))
    , m_stateLabel(new QLabel(this))
    , m_clock(new QTimer(this))
{
    setWindowTitle(tr("Service workbench"));
    auto* const middle = new QWidget(this);
    auto* const layout = new QVBoxLayout(middle);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_notice);
    layout->addWidget(m_panels, 1);
    m_panels->setDocumentMode(true);
    setCentralWidget(middle);
    addPanels();
    addActions();
    addFoot();

    const QSettings settings;
    if (!restoreGeometry(settings.value(geometryKey).toByteArray()))
        resize(fontMetrics().averageCharWidth() * 130, fontMetrics().height() * 42);
    bringUp(settings.value(panelKey).toString());

    connect(&m_instrument, &Instrument::stateChanged, this, &MainWindow::showState);
    connect(&m_instrument, &Instrument::callChanged, this, &MainWindow::showCall);
    connect(m_clock, &QTimer::timeout, this, &MainWindow::showCall);
    open();
}

bool MainWindow::bringUp(const QString& panel)
{
    for (int i = 0; i < m_panels->count(); ++i)
        if (m_panels->widget(i)->objectName() == panel) {
            m_panels->setCurrentIndex(i);
            return true;
        }
    return false;
}

void MainWindow::closeEvent(QCloseEvent* event)
{
    using State = Instrument::State;
    saveSettings();
    if (m_instrument.state() == State::Closed) {
        event->accept();
        return;
    }
    event->ignore();
    if (m_leaving != Leaving::Closing)
        m_instrument.takeBackWaiting();
    const auto call = m_instrument.underWay();
    if (call)
        askWhetherToWait(call->what);
    else if (m_leaving == Leaving::Closing) // the instrument's thread is held up by what is no call, such as a lookup
        askWhetherToWait(tr("close the instrument"));
    else
        closeInstrument();
}

void MainWindow::addPanels()
{
    for (const PanelKind& kind : panelKinds()) {
        Panel* const panel = kind.make(m_instrument);
        panel->setObjectName(kind.name);
        m_panels->addTab(panel, kind.title);
    }
}

void MainWindow::addActions()
{
    auto* const program = menuBar()->addMenu(tr("&Workbench"));
    QAction* const refresh = program->addAction(tr("&Read anew"), QKeySequence(QKeySequence::Refresh), this, [this] {
        if (m_instrument.state() != Instrument::State::Open)
            return;
        panelInFront()->clearFault();
        panelInFront()->refresh();
    });
    refresh->setObjectName(QStringLiteral("refresh"));
    program->addSeparator();
    program->addAction(tr("&Quit"), QKeySequence(tr("Ctrl+Q")), this, &QWidget::close);

    auto* const go = menuBar()->addMenu(tr("&Go to"));
    for (int i = 0; i < m_panels->count(); ++i)
        go->addAction(m_panels->tabText(i), QKeySequence(QStringLiteral("Ctrl+%1").arg(i + 1)), this,
                      [this, i] { m_panels->setCurrentIndex(i); });
}

void MainWindow::addFoot()
{
    m_callLabel->setObjectName(QStringLiteral("call"));
    m_stateLabel->setObjectName(QStringLiteral("state"));
    statusBar()->addWidget(m_callLabel, 1);
    statusBar()->addPermanentWidget(m_stateLabel);
    m_clock->setInterval(std::chrono::seconds(1));
}

void MainWindow::open()
{
    m_instrument.open(m_opener);
}

void MainWindow::showState()
{
    using State = Instrument::State;
    switch (m_instrument.state()) {
    case State::Opening:
        m_stateLabel->setText(tr("opening"));
        m_notice->show(tr("The instrument is being opened."));
        break;
    case State::NotOpen:
        m_stateLabel->setText(tr("not open"));
        m_notice->show(tr("The instrument could not be opened: %1.").arg(m_instrument.openingError()));
        m_notice->offer(QStringLiteral("again"), tr("T&ry again"), [this] { open(); });
        break;
    case State::Open:
        m_stateLabel->setText(tr("%1 is open").arg(m_instrument.description().id));
        m_notice->clear();
        break;
    case State::Closed:
        close();
        return;
    }
}

void MainWindow::showCall()
{
    const auto call = m_instrument.underWay();
    if (call && call->began.isValid()) {
        const auto seconds = call->began.secsTo(QDateTime::currentDateTime());
        m_callLabel->setText(seconds < 1 ? call->what : tr("%1, for %2 s").arg(call->what).arg(seconds));
        if (!m_clock->isActive())
            m_clock->start();
        return;
    }
    m_callLabel->clear();
    m_clock->stop();
    if (m_leaving == Leaving::Waiting && !call)
        closeInstrument();
}

void MainWindow::askWhetherToWait(const QString& what)
{
    m_notice->show(tr("Still waiting to %1. The window closes when that is done.").arg(what));
    m_notice->offer(QStringLiteral("leave"), tr("Lea&ve without the answer"), [this] { leave(); });
    if (m_leaving == Leaving::Closing)
        return;
    m_notice->offer(QStringLiteral("go-on"), tr("&Stay"), [this] { goOn(); });
    m_leaving = Leaving::Waiting;
}

void MainWindow::goOn()
{
    if (m_leaving == Leaving::Closing) // meanwhile
        return;
    m_leaving = Leaving::No;
    m_notice->clear();
    if (m_instrument.state() == Instrument::State::Opening)
        showState();
}

void MainWindow::leave()
{
    saveSettings();
    Q_EMIT left();
}

void MainWindow::closeInstrument()
{
    m_leaving = Leaving::Closing;
    m_instrument.close();
    QTimer::singleShot(std::chrono::seconds(1), this, [this] {
        if (m_instrument.state() != Instrument::State::Closed)
            close(); // which asks whether to wait
    });
}

void MainWindow::saveSettings() const
{
    QSettings settings;
    settings.setValue(geometryKey, saveGeometry());
    settings.setValue(panelKey, panelInFront()->objectName());
    settings.sync();
}

Panel* MainWindow::panelInFront() const
{
    return qobject_cast<Panel*>(m_panels->currentWidget());
}

} // namespace tov::workbench
