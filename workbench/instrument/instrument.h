#pragma once

#include "host/instrumentsession.h"
#include "host/providers.h"
#include "workbench/instrument/call.h"

#include <QFuture>
#include <QFutureWatcher>
#include <QObject>
#include <QPromise>
#include <QSet>
#include <QThread>

#include <atomic>
#include <chrono>
#include <concepts>
#include <exception>
#include <functional>
#include <memory>
#include <optional>
#include <type_traits>
#include <utility>
#include <vector>

namespace tov::workbench {

/// What was opened, and by what.
struct Opened
{
    host::ProviderDescription provider;
    host::OpenInstrument instrument;
};

/// What is said when an answer reports a failure; empty when it is none.
template <typename Answer>
QString errorOf(const Answer& answer)
{
    if constexpr (requires { answer.error(); }) {
        if (answer)
            return {};
        if constexpr (std::convertible_to<decltype(answer.error()), QString>)
            return answer.error();
        else
            return QStringLiteral("the instrument reported a failure");
    } else {
        return {};
    }
}

/// What a call that gave this answer is said to have failed by, also when only a part of it failed, which the answer
/// then tells by `failedPart()`; empty when nothing did.
template <typename Answer>
QString whatFailedIn(const Answer& answer)
{
    if constexpr (requires { answer.failedPart(); })
        return answer.failedPart();
    else
        return errorOf(answer);
}

/// Calls `act` with a future that has finished, also by being cancelled, in the thread of `context` and by its event
/// loop; not at all when `context` is gone by then. (To `QFuture::then()` of Qt 6.4 the context must not be gone.)
template <typename Answer, typename Act>
void whenFinished(const QFuture<Answer>& future, QObject* context, Act act)
{
    auto* const watcher = new QFutureWatcher<Answer>(context);
    QObject::connect(watcher, &QFutureWatcherBase::finished, context, [watcher, act = std::move(act)]() mutable {
        watcher->deleteLater();
        act(watcher->future());
    });
    watcher->setFuture(future);
}

/// The open instrument, for a user interface that never waits for it.
///
/// Its session lives in a thread of its own with an event loop, and calls are made one after the other on the session's
/// thread for calls. However long the instrument takes, whoever uses this object goes on.
///
/// Thread: *owner's thread*, which has an event loop: signals are emitted there, and it never waits, but for the
/// destructor.
class Instrument final : public QObject
{
    Q_OBJECT

public:
    enum class State {
        NotOpen, ///< not yet, or it could not be opened
        Opening,
        Open,
        Closed, ///< for good
    };

    /// Opens an instrument, or says why not; called on another thread.
    using Opener = std::function<provider::Result<Opened>()>;

    explicit Instrument(QObject* parent = nullptr);
    Instrument(const Instrument&) = delete;
    Instrument& operator=(const Instrument&) = delete;

    /// Takes back what has not begun, and waits for what has. Who cannot wait looks at `underWay()` before.
    ~Instrument() override;

    /// Opens the instrument that `provider` names, as `host::chooseProvider()` takes it.
    static Opener openerOf(const QString& provider);

    /// Opens the instrument; `stateChanged()` tells when it is open, or why it is not. Again only after that.
    void open(Opener opener);

    State state() const { return m_state; }

    /// Why it could not be opened, a sentence for people; empty otherwise.
    QString openingError() const { return m_openingError; }

    /// The provider, as it describes itself; without a name before something is open.
    const host::ProviderDescription& provider() const { return m_facts.provider; }

    /// The instrument, as its provider describes it.
    const provider::InstrumentDescription& description() const { return m_facts.description; }

    /// Whether the instrument offered the control when it was last looked: after opening, a release, an offer and
    /// `lookForControls()`.
    bool isPresent(const host::ControlName& kind) const { return m_present.contains(kind.keys.registry); }

    /// Looks which controls are there; `presenceChanged()` tells when it is known.
    void lookForControls();

    /// What tests may do to it; empty when that is nothing.
    const std::vector<provider::ITestHooks::Ability>& abilities() const { return m_facts.abilities; }

    /// Has `function`, which must be copyable, called with the adapter of this kind on the session's thread for calls,
    /// after all that was asked for before, and returns at once. `what` says it for people, after "to": "read the
    /// serial number".
    ///
    /// The future gives what `function` returns, or throws what it throws: `host::ControlAbsent` when the instrument
    /// does not have the control when the call is asked for or has its turn, and also when it has it no more at the end
    /// of a call whose answer cannot tell of failures. Go on by `whenFinished()`; panels use `Panel::ask()`.
    template <typename Exposed, typename Function>
    auto call(const host::Control<Exposed>& kind, const QString& what, Function function)
        -> QFuture<std::invoke_result_t<Function&, Exposed&>>;

    /// The same with an adapter of which only a table knows the type. `run` is called in the session's owner's thread:
    /// it has what it is given called with the adapter, on the session's thread for calls.
    template <typename Adapter, typename Function, typename Run>
    auto callBy(const host::ControlName& kind, Run run, const QString& what, Function function)
        -> QFuture<std::invoke_result_t<Function&, Adapter>>;

    /// The same with the session, in its owner's thread: for what does not wait. `control` is the name of whose call it
    /// is; empty: of the instrument as a whole.
    template <typename Function>
    auto callSession(const QString& control, const QString& what, Function function)
        -> QFuture<std::invoke_result_t<Function&, host::InstrumentSession&>>;

    /// The same with what tests may do to the instrument; throws where that is nothing.
    template <typename Function>
    auto callTestHooks(const QString& what, Function function)
        -> QFuture<std::invoke_result_t<Function&, provider::ITestHooks&>>;

    /// Takes back the calls that have not begun: their futures are cancelled.
    void takeBackWaiting();

    /// The call that the instrument has; opening and closing are such calls too.
    std::optional<Call> underWay() const;

    /// Whether all that was asked for has ended.
    bool isIdle() const { return m_ways.empty(); }

    /// Takes back what has not begun and closes the instrument after what is under way. `stateChanged()` tells.
    void close();

Q_SIGNALS:
    void stateChanged();
    void presenceChanged();

    /// The controls have gone: what panels show is old. Calls fail until they come back.
    void controlsReleased();

    /// The controls are there again: panels read anew. Comes when `isPresent()` knows of them.
    void controlsOffered();

    /// A call was asked for, began, or ended.
    void callChanged(const tov::workbench::Call& call);

    /// A control told something by itself.
    void notified(const tov::workbench::Notification& notification);

private:
    class Room;

    // What is known of the instrument when it is open.
    struct Facts
    {
        host::ProviderDescription provider;
        provider::InstrumentDescription description;
        std::vector<provider::ITestHooks::Ability> abilities;
    };

    // A call on its way: either it begins or it is taken back, whichever claims it first.
    struct Course
    {
        Call call; // of the owner's thread
        std::function<void()> cancel;
        std::atomic<bool> claimed = false;

        bool claim() { return !claimed.exchange(true); }
    };
    using Way = std::shared_ptr<Course>;

    template <typename Answer>
    using Promise = std::shared_ptr<QPromise<Answer>>;

    template <typename Answer>
    std::pair<Way, Promise<Answer>> ask(const QString& control, const QString& what);
    Way add(const QString& control, const QString& what, std::function<void()> cancel);

    // On the thread that makes the call.
    template <typename Answer, typename Act>
    void make(const Way& way, QPromise<Answer>& promise, Act act);
    void tellBegin(const Way& way);
    void tellEnd(const Way& way, const QString& error, std::chrono::steady_clock::duration duration);
    static QString messageOf(const std::exception_ptr& thrown);

    // Of what nobody asked for, such as to hear a control that has come.
    void tellFailure(const QString& control, const QString& what, const std::exception_ptr& thrown);

    void inRoom(std::function<void(Room&)> act);
    static host::InstrumentSession& sessionOf(Room& room);
    static void requirePresent(const host::InstrumentSession& session, const host::ControlName& kind);
    static provider::ITestHooks& testHooksOf(const host::InstrumentSession& session);
    void change(const Way& way, const std::function<void(Call&)>& how);
    void setState(State state);
    void setPresent(const QSet<quint64>& present, bool offered);

    State m_state = State::NotOpen;
    QString m_openingError;
    Facts m_facts;
    QSet<quint64> m_present;
    std::vector<Way> m_ways; // those that have not ended
    quint64 m_asked = 0;
    QThread m_thread;
    Room* m_room; // lives there, and as long as it
};

template <typename Answer>
std::pair<Instrument::Way, Instrument::Promise<Answer>> Instrument::ask(const QString& control, const QString& what)
{
    const auto promise = std::make_shared<QPromise<Answer>>();
    promise->start();
    return {add(control, what,
                [promise] {
                    promise->future().cancel();
                    promise->finish();
                }),
            promise};
}

template <typename Answer, typename Act>
void Instrument::make(const Way& way, QPromise<Answer>& promise, Act act)
{
    if (!way->claim())
        return;
    tellBegin(way);
    const auto begin = std::chrono::steady_clock::now();
    QString error;
    try {
        if constexpr (std::is_void_v<Answer>) {
            act();
        } else {
            Answer answer = act();
            error = whatFailedIn(answer);
            promise.addResult(std::move(answer));
        }
    } catch (...) {
        error = messageOf(std::current_exception());
        promise.setException(std::current_exception());
    }
    tellEnd(way, error, std::chrono::steady_clock::now() - begin); // before what follows the answer
    promise.finish();
}

template <typename Adapter, typename Function, typename Run>
auto Instrument::callBy(const host::ControlName& kind, Run run, const QString& what, Function function)
    -> QFuture<std::invoke_result_t<Function&, Adapter>>
{
    using Answer = std::invoke_result_t<Function&, Adapter>;
    const auto [way, promise] = ask<Answer>(QString::fromUtf8(kind.name), what);
    inRoom([this, way, promise, kind, run = std::move(run), function = std::move(function)](Room& room) {
        try {
            host::InstrumentSession& session = sessionOf(room);
            requirePresent(session, kind);
            run(session, [this, way, promise, kind, function, &session](Adapter adapter) mutable {
                // The controls may go while the call waits or is under way.
                make(way, *promise, [&] {
                    requirePresent(session, kind);
                    if constexpr (std::is_void_v<Answer>) {
                        function(adapter);
                        requirePresent(session, kind);
                    } else {
                        Answer answer = function(adapter);
                        if constexpr (!requires { answer.error(); })
                            requirePresent(session, kind);
                        return answer;
                    }
                });
            });
        } catch (...) {
            make(way, *promise, [&]() -> Answer { throw; });
        }
    });
    return promise->future();
}

template <typename Exposed, typename Function>
auto Instrument::call(const host::Control<Exposed>& kind, const QString& what, Function function)
    -> QFuture<std::invoke_result_t<Function&, Exposed&>>
{
    const auto run = [kind]<typename Act>(host::InstrumentSession& session, Act act) {
        if (!session.control(kind))
            throw host::ControlAbsent(kind);
        session.run(kind, std::move(act));
    };
    return callBy<Exposed&>(kind, run, what, std::move(function));
}

template <typename Function>
auto Instrument::callSession(const QString& control, const QString& what, Function function)
    -> QFuture<std::invoke_result_t<Function&, host::InstrumentSession&>>
{
    using Answer = std::invoke_result_t<Function&, host::InstrumentSession&>;
    const auto [way, promise] = ask<Answer>(control, what);
    inRoom([this, way, promise, function = std::move(function)](Room& room) mutable {
        make(way, *promise, [&] { return function(sessionOf(room)); });
    });
    return promise->future();
}

template <typename Function>
auto Instrument::callTestHooks(const QString& what, Function function)
    -> QFuture<std::invoke_result_t<Function&, provider::ITestHooks&>>
{
    return callSession({}, what, [function = std::move(function)](host::InstrumentSession& session) mutable {
        return function(testHooksOf(session));
    });
}

} // namespace tov::workbench
