#pragma once

#include "workbench/panels/page.h"
#include "workbench/panels/panel.h"

#include <QSet>
#include <QString>
#include <QStringList>

class QTabWidget;

namespace tov::workbench {

/// A panel of several pages, each of which reads when it is brought to the front and what it shows is old.
class PagedPanel : public Panel
{
    Q_OBJECT

public:
    explicit PagedPanel(Instrument& instrument, QWidget* parent = nullptr);

    /// Reads the page in front, and the others when they come there.
    void refresh() override;

    /// The object names of the pages, in their order.
    QStringList pages() const;

    /// Brings the page of this object name to the front; false when there is none.
    bool bringUpPage(const QString& name);

protected:
    /// Takes over `page`; `name` is what programs call it.
    void addPage(Page* page, const QString& title, const QString& name);

private:
    void readPageInFront();
    Page* page(int index) const;

    QTabWidget* m_pages;
    QSet<Page*> m_old;
};

} // namespace tov::workbench
