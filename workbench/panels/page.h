#pragma once

#include "workbench/panels/panel.h"

#include <QWidget>

#include <functional>

class QVBoxLayout;

namespace tov::workbench {

class NoticeBar;

/// One of several pages of a panel, which calls the instrument by the panel: the faults are shown there.
class Page : public QWidget
{
    Q_OBJECT

public:
    /// The panel takes the page when it is added to it.
    explicit Page(Panel& panel);

    /// Reads all that the page shows anew, as far as the controls are there. Called while the instrument is open.
    virtual void refresh() = 0;

protected:
    Panel& panel() const { return m_panel; }
    Instrument& instrument() const { return m_panel.instrument(); }

    /// Where the page's own widgets go.
    QVBoxLayout& contents() const { return *m_contents; }

    /// Asks the user whether to do what cannot be undone. `question` stays until the user has chosen, until another
    /// question, or until the controls go; `act` is done only when he chose the button with `verb`.
    void confirm(const QString& question, const QString& verb, std::function<void()> act);

private:
    Panel& m_panel;
    NoticeBar* m_question;
    QVBoxLayout* m_contents;
};

} // namespace tov::workbench
