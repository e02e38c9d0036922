#include "workbench/panels/noticebar.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

#include <utility>

namespace tov::workbench {

NoticeBar::NoticeBar(QWidget* parent)
    : QFrame(parent)
    , m_sentence(new QLabel(this))
    , m_buttons(new QHBoxLayout)
{
    setObjectName(QStringLiteral("notice"));
    setFrameShape(QFrame::StyledPanel);
    setAutoFillBackground(true);
    setBackgroundRole(QPalette::ToolTipBase);
    m_sentence->setForegroundRole(QPalette::ToolTipText);
    m_sentence->setWordWrap(true);
    auto* const layout = new QHBoxLayout(this);
    layout->addWidget(m_sentence, 1);
    layout->addLayout(m_buttons);
    hide();
}

void NoticeBar::show(const QString& sentence)
{
    clear();
    m_sentence->setText(sentence);
    setAccessibleName(sentence);
    setVisible(true);
}

void NoticeBar::offer(const QString& name, const QString& label, std::function<void()> act)
{
    auto* const button = new QPushButton(label, this);
    button->setObjectName(name);
    connect(button, &QPushButton::clicked, this, std::move(act), Qt::QueuedConnection); // it may take the button away
    m_buttons->addWidget(button);
    if (m_buttons->count() == 1)
        button->setFocus();
}

void NoticeBar::clear()
{
    hide();
    while (auto* const item = m_buttons->takeAt(0)) {
        item->widget()->deleteLater();
        item->widget()->hide();
        delete item; // as takeAt() wants
    }
}

QString NoticeBar::sentence() const
{
    return isHidden() ? QString() : m_sentence->text();
}

} // namespace tov::workbench
