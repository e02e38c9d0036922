#include "workbench/panels/page.h"

#include "workbench/panels/noticebar.h"

#include <QVBoxLayout>

#include <utility>

namespace tov::workbench {

Page::Page(Panel& panel)
    : QWidget(&panel)
    , m_panel(panel)
    , m_question(new NoticeBar(this))
    , m_contents(new QVBoxLayout)
{
    auto* const layout = new QVBoxLayout(this);
    layout->addWidget(m_question);
    layout->addLayout(m_contents, 1);
    m_question->setObjectName(QStringLiteral("question"));
    connect(&panel.instrument(), &Instrument::controlsReleased, m_question, &NoticeBar::clear);
}

void Page::confirm(const QString& question, const QString& verb, std::function<void()> act)
{
    m_question->show(question);
    m_question->offer(QStringLiteral("cancel"), tr("Ca&ncel"), [this] { m_question->clear(); }); // gets the focus
    m_question->offer(QStringLiteral("confirm"), verb, [this, act = std::move(act)] {
        m_question->clear();
        act();
    });
}

} // namespace tov::workbench
