#pragma once

#include <QDateTime>
#include <QList>
#include <QString>

#include <chrono>

namespace tov::workbench {

/// A call to the instrument, as people follow it.
struct Call
{
    /// How far it is.
    enum class State {
        Waiting,   ///< for those before it
        UnderWay,  ///< the instrument has it
        Done,      ///< it was answered
        Failed,    ///< `error` says why
        TakenBack, ///< before it began
    };

    quint64 number = 0; ///< calls are numbered from 1
    QString what;       ///< in words that follow "to", such as "read the serial number"
    QString control;    ///< whose it is; empty: of the instrument as a whole
    State state = State::Waiting;
    QDateTime asked;                       ///< when it was asked for
    QDateTime began;                       ///< when the instrument got it; invalid before
    std::chrono::microseconds duration{0}; ///< from its begin to its end; 0 before
    QString thread;                        ///< on which it was made; empty before
    QString error;                         ///< a sentence without a full stop; empty unless it failed
};

/// Something that a control told by itself.
struct Notification
{
    QDateTime time;
    QString thread;  ///< on which it was told
    QString control; ///< whose it is
    QString name;    ///< such as "changed"
    QList<double> numbers;
};

/// The thread that asks, as the log names it: its name, or its number where it has none.
///
/// Thread: *any thread*.
QString currentThreadName();

} // namespace tov::workbench
