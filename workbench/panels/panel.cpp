#include "workbench/panels/panel.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QTimer>
#include <QVBoxLayout>

namespace tov::workbench {

Panel::Panel(Instrument& instrument, QWidget* parent)
    : QWidget(parent)
    , m_instrument(instrument)
    , m_contents(new QVBoxLayout)
    , m_faultLine(new QLabel(this))
    , m_waitingFor(new QLabel(this))
    , m_busy(new QProgressBar(this))
    , m_showsWaiting(new QTimer(this))
{
    m_faultLine->setObjectName(QStringLiteral("fault"));
    m_faultLine->setWordWrap(true);
    m_faultLine->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    m_faultLine->setFocusPolicy(Qt::NoFocus);
    m_faultLine->setAccessibleDescription(tr("What went wrong")); // its name is the sentence
    QFont bold = m_faultLine->font();
    bold.setBold(true);
    m_faultLine->setFont(bold);
    m_waitingFor->setObjectName(QStringLiteral("waiting"));
    m_busy->setRange(0, 0);
    m_busy->setTextVisible(false);
    m_busy->setMaximumWidth(fontMetrics().averageCharWidth() * 16);
    m_busy->setAccessibleName(tr("The instrument is at work"));
    QSizePolicy keepsItsPlace = m_busy->sizePolicy();
    keepsItsPlace.setRetainSizeWhenHidden(true); // so that what stands above does not jump with each call
    m_busy->setSizePolicy(keepsItsPlace);

    auto* const foot = new QHBoxLayout;
    foot->addWidget(m_faultLine, 1);
    foot->addWidget(m_waitingFor);
    foot->addWidget(m_busy);
    auto* const layout = new QVBoxLayout(this);
    layout->addLayout(m_contents, 1);
    layout->addLayout(foot);
    m_faultLine->hide();
    m_waitingFor->hide();
    m_busy->hide();

    m_showsWaiting->setSingleShot(true);
    m_showsWaiting->setInterval(200); // what is answered sooner shows nothing
    connect(m_showsWaiting, &QTimer::timeout, this, &Panel::showWaiting);

    connect(&instrument, &Instrument::stateChanged, this, &Panel::refreshIfSeen);
    connect(&instrument, &Instrument::controlsReleased, this, [this] {
        m_isOld = true;
        showFault(tr("The instrument has taken its controls away; what is shown was read before."));
    });
    connect(&instrument, &Instrument::controlsOffered, this, [this] {
        m_isOld = true;
        refreshIfSeen();
    });
}

void Panel::showFault(const QString& sentence)
{
    m_fault = sentence;
    m_faultLine->setText(sentence);
    m_faultLine->setVisible(!sentence.isEmpty());
}

void Panel::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    refreshIfSeen();
}

void Panel::begin(const QString& what)
{
    m_waiting.append(what);
    if (!m_showsWaiting->isActive() && m_busy->isHidden())
        m_showsWaiting->start();
}

void Panel::end(const QString& what)
{
    m_waiting.removeOne(what);
    if (m_waiting.isEmpty())
        m_showsWaiting->stop();
    if (m_waiting.isEmpty() || !m_busy->isHidden())
        showWaiting();
}

void Panel::showFailure(const QString& what, const QString& why)
{
    showFault(tr("Could not %1: %2.").arg(what, why));
}

void Panel::showWaiting()
{
    const auto others = m_waiting.size() - 1;
    QString text = m_waiting.isEmpty() ? QString() : tr("Waiting to %1").arg(m_waiting.first());
    if (others > 0)
        text = tr("%1, and %2 more").arg(text).arg(others);
    m_waitingFor->setText(text);
    m_waitingFor->setVisible(!m_waiting.isEmpty());
    m_busy->setVisible(!m_waiting.isEmpty());
}

void Panel::refreshIfSeen()
{
    if (!m_isOld || !isVisible() || m_instrument.state() != Instrument::State::Open)
        return;
    m_isOld = false;
    clearFault();
    refresh();
}

} // namespace tov::workbench
