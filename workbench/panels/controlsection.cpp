#include "workbench/panels/controlsection.h"

#include <QGroupBox>
#include <QLabel>
#include <QVBoxLayout>

namespace tov::workbench {

ControlSection::ControlSection(Instrument& instrument, const host::ControlName& kind, const QString& title,
                               QWidget* parent)
    : QWidget(parent)
    , m_absent(new QLabel(tr("Absent: the instrument has no %1 control now.").arg(QString::fromUtf8(kind.name)), this))
    , m_inside(new QWidget(this))
    , m_contents(new QVBoxLayout(m_inside))
{
    setObjectName(QString::fromUtf8(kind.name));
    m_absent->setObjectName(QStringLiteral("absent"));
    QFont italic = m_absent->font();
    italic.setItalic(true);
    m_absent->setFont(italic);
    m_absent->setWordWrap(true);
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    m_contents->setContentsMargins(0, 0, 0, 0);
    QVBoxLayout* within = layout;
    if (!title.isEmpty()) {
        auto* const box = new QGroupBox(title, this);
        layout->addWidget(box);
        within = new QVBoxLayout(box);
    }
    within->addWidget(m_absent);
    within->addWidget(m_inside, 1);

    connect(&instrument, &Instrument::presenceChanged, this,
            [this, &instrument, kind] { showPresence(instrument.isPresent(kind)); });
    m_absent->setVisible(false); // nobody has looked yet
    if (instrument.state() == Instrument::State::Open)
        showPresence(instrument.isPresent(kind));
    else
        m_inside->setEnabled(false);
}

void ControlSection::showPresence(bool isPresent)
{
    m_absent->setVisible(!isPresent);
    m_inside->setEnabled(isPresent);
}

} // namespace tov::workbench
