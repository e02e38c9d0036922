#pragma once

#include "workbench/models/logmodel.h"
#include "workbench/panels/panel.h"

#include <QList>

class QLineEdit;
class QSortFilterProxyModel;
class QTableView;

namespace tov::workbench {

/// Every call and every notification; what contains a text, the user's to copy and to save.
class LogPanel final : public Panel
{
    Q_OBJECT

public:
    explicit LogPanel(Instrument& instrument, QWidget* parent = nullptr);

    /// Reads nothing: the log grows by itself.
    void refresh() override {}

private:
    void addFilter();
    void addTable();
    void addButtons();
    void keepLastInSight();
    QList<int> shownRows() const;
    QString textOf(const QList<int>& rows) const;
    void copy() const;
    void askForFile();
    void save(const QString& file);

    LogModel m_log;
    QSortFilterProxyModel* m_shown;
    QLineEdit* m_filter;
    QTableView* m_table;
};

} // namespace tov::workbench
