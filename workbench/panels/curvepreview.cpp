#include "workbench/panels/curvepreview.h"

#include "workbench/panels/plot.h"

#include <QComboBox>
#include <QLabel>
#include <QVBoxLayout>

#include <utility>

namespace tov::workbench {

CurvePreview::CurvePreview(const QString& name, const QString& empty, QWidget* parent)
    : QWidget(parent)
    , m_choice(new QComboBox(this))
    , m_empty(new QLabel(empty, this))
    , m_plot(new Plot(name, this))
{
    m_choice->setObjectName(QStringLiteral("sheets"));
    m_choice->setAccessibleName(tr("What is plotted"));
    m_empty->setAlignment(Qt::AlignCenter);
    m_empty->setForegroundRole(QPalette::PlaceholderText);
    m_empty->setWordWrap(true);
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_choice, 0, Qt::AlignLeft);
    layout->addWidget(m_empty, 1);
    layout->addWidget(m_plot, 1);
    connect(m_choice, &QComboBox::currentIndexChanged, this, &CurvePreview::showSheet);
    setSheets({});
}

void CurvePreview::setSheets(std::vector<CurveSheet> sheets)
{
    m_sheets.clear(); // while the choice changes there is nothing to be shown
    m_choice->clear();
    for (const CurveSheet& sheet : sheets)
        m_choice->addItem(sheet.name);
    m_sheets = std::move(sheets);
    m_choice->setVisible(m_sheets.size() > 1);
    m_choice->adjustSize();
    m_empty->setVisible(m_sheets.empty());
    m_plot->setVisible(!m_sheets.empty());
    showSheet(m_choice->currentIndex());
}

void CurvePreview::showSheet(int index)
{
    if (index >= 0 && static_cast<std::size_t>(index) < m_sheets.size())
        m_plot->show(m_sheets[static_cast<std::size_t>(index)]);
}

} // namespace tov::workbench
