#pragma once

#include "workbench/instrument/instrument.h"

#include <QMainWindow>
#include <QString>

class QLabel;
class QTabWidget;
class QTimer;

namespace tov::workbench {

class NoticeBar;
class Panel;

/// The window: a panel a tab, and the instrument's state at its foot.
///
/// It closes when the instrument is closed. What has not begun is taken back for that; where the instrument still has a
/// call, the window says which, and closes when that is answered, unless the user goes on or leaves at once.
class MainWindow final : public QMainWindow
{
    Q_OBJECT

public:
    /// Opens `instrument`, which must outlive the window, by `opener`. What the window remembers is written by
    /// `QSettings`.
    MainWindow(Instrument& instrument, Instrument::Opener opener);

    /// Brings the panel of this name to the front; false when there is none.
    bool bringUp(const QString& panel);

Q_SIGNALS:
    /// The user does not wait for the call that is under way: the program is to end without it.
    void left();

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    enum class Leaving {
        No,
        Waiting, ///< for the call that is under way
        Closing, ///< the instrument
    };

    void addPanels();
    void addActions();
    void addFoot();
    void open();
    void showState();
    void showCall();
    void askWhetherToWait(const QString& what);
    void goOn();
    void leave();
    void closeInstrument();
    void saveSettings() const;
    Panel* panelInFront() const;

    Instrument& m_instrument;
    const Instrument::Opener m_opener;
    NoticeBar* m_notice;
    QTabWidget* m_panels;
    QLabel* m_callLabel;
    QLabel* m_stateLabel;
    QTimer* m_clock; // while a call is under way
    Leaving m_leaving = Leaving::No;
};

} // namespace tov::workbench
