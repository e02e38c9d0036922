#include "workbench/panels/pagedpanel.h"

#include <QTabWidget>
#include <QVBoxLayout>

namespace tov::workbench {

PagedPanel::PagedPanel(Instrument& instrument, QWidget* parent)
    : Panel(instrument, parent)
    , m_pages(new QTabWidget(this))
{
    contents().addWidget(m_pages);
    connect(m_pages, &QTabWidget::currentChanged, this, &PagedPanel::readPageInFront);
}

void PagedPanel::refresh()
{
    for (int i = 0; i < m_pages->count(); ++i)
        m_old.insert(page(i));
    readPageInFront();
}

QStringList PagedPanel::pages() const
{
    QStringList names;
    for (int i = 0; i < m_pages->count(); ++i)
        names.append(page(i)->objectName());
    return names;
}

bool PagedPanel::bringUpPage(const QString& name)
{
    for (int i = 0; i < m_pages->count(); ++i)
        if (page(i)->objectName() == name) {
            m_pages->setCurrentIndex(i);
            return true;
        }
    return false;
}

void PagedPanel::addPage(Page* page, const QString& title, const QString& name)
{
    page->setObjectName(name);
    m_pages->addTab(page, title);
}

void PagedPanel::readPageInFront()
{
    Page* const inFront = page(m_pages->currentIndex());
    if (instrument().state() == Instrument::State::Open && m_old.remove(inFront))
        inFront->refresh();
}

Page* PagedPanel::page(int index) const
{
    return qobject_cast<Page*>(m_pages->widget(index));
}

} // namespace tov::workbench
