#pragma once

#include "workbench/instrument/instrument.h"

#include <QFuture>
#include <QString>
#include <QStringList>
#include <QWidget>

#include <exception>
#include <functional>
#include <type_traits>
#include <utility>

class QLabel;
class QProgressBar;
class QTimer;
class QVBoxLayout;

namespace tov::workbench {

/// A page of the window. A panel puts its widgets into `contents()`; below them stand a line for what went wrong and,
/// while its calls take long, the name of the one that waits.
///
/// It reads in `refresh()`, by `ask()`, and never waits. Calls whose answer comes when the panel is gone answer nobody.
class Panel : public QWidget
{
    Q_OBJECT

public:
    explicit Panel(Instrument& instrument, QWidget* parent = nullptr);

    /// Reads all that is shown anew. Called while the instrument is open: when the panel is shown for the first time,
    /// when the user asks for it, and when the controls came back.
    virtual void refresh() = 0;

    /// Says in a sentence what went wrong, until the next `refresh()` or until `clearFault()`.
    void showFault(const QString& sentence);
    void clearFault() { showFault({}); }

    /// What went wrong; empty when nothing did.
    QString fault() const { return m_fault; }

    /// Whether something that was asked for has not been answered yet.
    bool isWaiting() const { return !m_waiting.isEmpty(); }

    Instrument& instrument() const { return m_instrument; }

    /// Calls `function` with the adapter, as `Instrument::call()` does, and then `answered` with what it returned, in
    /// the user interface's thread. An answer that reports a failure, as an exception does, is a fault that is shown,
    /// and `answered` is not called. `ended` is called before either, also when the call was taken back.
    template <typename Exposed, typename Function, typename Answered>
    void ask(
        const host::Control<Exposed>& kind, const QString& what, Function function, Answered answered,
        const std::function<void()>& ended = [] {})
    {
        follow(what, m_instrument.call(kind, what, std::move(function)), std::move(answered), ended);
    }

    /// The same for any call that was asked for.
    template <typename Answer, typename Answered>
    void follow(
        const QString& what, const QFuture<Answer>& call, Answered answered,
        const std::function<void()>& ended = [] {});

protected:
    /// Where the panel's own widgets go.
    QVBoxLayout& contents() const { return *m_contents; }

    void showEvent(QShowEvent* event) override;

private:
    void begin(const QString& what);
    void end(const QString& what);
    void showFailure(const QString& what, const QString& why);
    void showWaiting();
    void refreshIfSeen();

    Instrument& m_instrument;
    QVBoxLayout* m_contents;
    QLabel* m_faultLine;
    QLabel* m_waitingFor;
    QProgressBar* m_busy;
    QTimer* m_showsWaiting;
    QString m_fault;
    QStringList m_waiting; // in the order in which they were asked for
    bool m_isOld = true;   // what is shown
};

template <typename Answer, typename Answered>
void Panel::follow(const QString& what, const QFuture<Answer>& call, Answered answered,
                   const std::function<void()>& ended)
{
    begin(what);
    whenFinished(call, this, [this, what, answered = std::move(answered), ended](QFuture<Answer> answer) mutable {
        end(what);
        ended();
        try {
            if constexpr (std::is_void_v<Answer>) {
                answer.waitForFinished(); // it is; throws what the call threw
                if (!answer.isCanceled())
                    answered();
            } else if (answer.isResultReadyAt(0)) {
                Answer taken = answer.takeResult();
                if (const QString why = errorOf(taken); !why.isEmpty())
                    showFailure(what, why);
                else
                    answered(std::move(taken));
            } else {
                answer.waitForFinished();
            }
        } catch (const std::exception& error) {
            showFailure(what, QString::fromUtf8(error.what()));
        } catch (...) {
            showFailure(what, tr("something went wrong"));
        }
    });
}

} // namespace tov::workbench
