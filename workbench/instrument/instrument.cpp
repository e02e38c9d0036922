#include "workbench/instrument/instrument.h"

#include "tools/notifications/hearing.h"

#include <QMetaObject>

#include <algorithm>
#include <stdexcept>

namespace tov::workbench {

namespace {

/// Hears, as an adapter does, of the controls of the session that made it.
class LifecycleEar final : public devices::IControlLifecycleObserver
{
public:
    LifecycleEar(std::function<void()> released, std::function<void()> offered)
        : m_released(std::move(released))
        , m_offered(std::move(offered))
    {
    }
    void onControlsAboutToBeReleased() override { m_released(); }
    void onControlsAvailable() override { m_offered(); }

private:
    const std::function<void()> m_released;
    const std::function<void()> m_offered;
};

constexpr host::Control<LifecycleEar> lifecycle{{"lifecycle", {.registry = 0x7B5A1C0E64D2938F, .sdk = {0}}}};

devices::ControlRegistry registryWith(const std::shared_ptr<LifecycleEar>& ear)
{
    auto registry = host::registeredControls();
    registry.addEntry(devices::ControlRegistry::ControlEntry<sdk::IVna>{
        lifecycle.keys.registry, [ear](sdk::IVna* /*instrument*/) { return std::any(ear); }});
    return registry;
}

} // namespace

/// What lives in the instrument's thread.
class Instrument::Room : public QObject
{
public:
    explicit Room(Instrument& owner)
        : m_owner(owner)
    {
    }

    // One that cannot be opened is closed, so that it can be tried again.
    void open(std::unique_ptr<provider::IConnection> connection)
    try {
        const auto ear = std::make_shared<LifecycleEar>(
            [this] { tellOwner([](Instrument& owner) { owner.setPresent({}, false); }); },
            // The adapters hear of it first.
            [this] { QMetaObject::invokeMethod(this, [this] { look(true); }, Qt::QueuedConnection); });
        m_session = std::make_unique<host::InstrumentSession>(std::move(connection), registryWith(ear));
        m_session->control(lifecycle);
        const auto pass = [&owner = m_owner](std::string_view control, std::string_view notification,
                                             std::initializer_list<double> numbers) {
            const Notification told{.time = QDateTime::currentDateTime(),
                                    .thread = currentThreadName(),
                                    .control = QString::fromUtf8(control),
                                    .name = QString::fromUtf8(notification),
                                    .numbers = numbers};
            QMetaObject::invokeMethod(&owner, [&owner, told] { Q_EMIT owner.notified(told); }, Qt::QueuedConnection);
        };
        const auto notHeard = [&owner = m_owner](const host::ControlName& kind, const std::exception_ptr& thrown) {
            owner.tellFailure(QString::fromUtf8(kind.name), Instrument::tr("hear what it tells"), thrown);
        };
        m_hearing = std::make_unique<Hearing>(*m_session, pass, notHeard);
        look(false);
    } catch (...) {
        close();
        throw;
    }

    void close()
    {
        m_hearing.reset();
        m_session.reset();
    }

    host::InstrumentSession* session() { return m_session.get(); }

    void look(bool offered)
    {
        if (!m_session)
            return;
        m_hearing->hearWhatIsThere();
        tellOwner([present = controls(), offered](Instrument& owner) { owner.setPresent(present, offered); });
    }

    template <typename Act>
    void tellOwner(const Act& act)
    {
        QMetaObject::invokeMethod(&m_owner, [&owner = m_owner, act] { act(owner); }, Qt::QueuedConnection);
    }

private:
    // One that cannot be looked for is not there.
    QSet<quint64> controls() const
    {
        QSet<quint64> present;
        for (const host::ControlName& kind : host::controls::all)
            try {
                if (m_session->isPresent(kind))
                    present.insert(kind.keys.registry);
            } catch (...) {
                m_owner.tellFailure(QString::fromUtf8(kind.name), Instrument::tr("look for it"),
                                    std::current_exception());
            }
        return present;
    }

    Instrument& m_owner; // outlives the thread
    std::unique_ptr<host::InstrumentSession> m_session;
    std::unique_ptr<Hearing> m_hearing; // goes before the session
};

Instrument::Instrument(QObject* parent)
    : QObject(parent)
    , m_room(new Room(*this)) // goes with its thread
{
    m_thread.setObjectName(QStringLiteral("instrument"));
    m_room->moveToThread(&m_thread);
    connect(&m_thread, &QThread::finished, m_room, &QObject::deleteLater);
    m_thread.start();
}

Instrument::~Instrument()
{
    takeBackWaiting();
    inRoom([](Room& room) {
        room.close();
        QThread::currentThread()->quit();
    });
    m_thread.wait();
}

Instrument::Opener Instrument::openerOf(const QString& provider)
{
    return [provider]() -> provider::Result<Opened> {
        const auto choice = host::chooseProvider(provider);
        if (!choice)
            return std::unexpected(choice.error());
        auto opened = host::openInstrument(*choice);
        if (!opened)
            return std::unexpected(opened.error());
        return Opened{choice->provider, std::move(*opened)};
    };
}

void Instrument::open(Opener opener)
{
    setState(State::Opening);
    m_openingError.clear();
    const auto [way, promise] = ask<provider::Result<Facts>>({}, tr("open the instrument"));
    inRoom([this, way, promise, opener = std::move(opener)](Room& room) {
        make(way, *promise, [&]() -> provider::Result<Facts> {
            auto opened = opener();
            if (!opened)
                return std::unexpected(opened.error());
            Facts facts{opened->provider, opened->instrument.description, {}};
            if (auto* const hooks = opened->instrument.connection->testHooks())
                facts.abilities = hooks->abilities();
            room.open(std::move(opened->instrument.connection));
            return facts;
        });
    });
    whenFinished(promise->future(), this, [this](QFuture<provider::Result<Facts>> call) {
        provider::Result<Facts> facts = std::unexpected(tr("it was given up"));
        try {
            call.waitForFinished(); // it is; throws what the opener threw
            if (call.resultCount() > 0)
                facts = call.result();
        } catch (...) {
            facts = std::unexpected(messageOf(std::current_exception()));
        }
        if (facts)
            m_facts = *facts;
        else
            m_openingError = facts.error();
        setState(facts ? State::Open : State::NotOpen);
    });
}

void Instrument::lookForControls()
{
    inRoom([](Room& room) { room.look(false); });
}

void Instrument::takeBackWaiting()
{
    for (const Way& way : std::vector(m_ways)) {
        if (!way->claim())
            continue;
        change(way, [](Call& call) { call.state = Call::State::TakenBack; });
        way->cancel();
    }
}

std::optional<Call> Instrument::underWay() const
{
    for (const Way& way : m_ways)
        if (way->claimed)
            return way->call;
    return {};
}

void Instrument::close()
{
    takeBackWaiting();
    const auto [way, promise] = ask<void>({}, tr("close the instrument"));
    inRoom([this, way, promise](Room& room) { make(way, *promise, [&] { room.close(); }); });
    whenFinished(promise->future(), this, [this](const QFuture<void>& /*call*/) { setState(State::Closed); });
}

Instrument::Way Instrument::add(const QString& control, const QString& what, std::function<void()> cancel)
{
    auto way = std::make_shared<Course>();
    way->call = {.number = ++m_asked,
                 .what = what,
                 .control = control,
                 .state = Call::State::Waiting,
                 .asked = QDateTime::currentDateTime(),
                 .began = {},
                 .duration = {},
                 .thread = {},
                 .error = {}};
    way->cancel = std::move(cancel);
    m_ways.push_back(way);
    Q_EMIT callChanged(way->call);
    return way;
}

void Instrument::tellBegin(const Way& way)
{
    const auto began = [time = QDateTime::currentDateTime(), thread = currentThreadName()](Call& call) {
        call.state = Call::State::UnderWay;
        call.began = time;
        call.thread = thread;
    };
    QMetaObject::invokeMethod(this, [this, way, began] { change(way, began); }, Qt::QueuedConnection);
}

void Instrument::tellEnd(const Way& way, const QString& error, std::chrono::steady_clock::duration duration)
{
    const auto ended = [error, duration](Call& call) {
        call.state = error.isEmpty() ? Call::State::Done : Call::State::Failed;
        call.duration = std::chrono::duration_cast<std::chrono::microseconds>(duration);
        call.error = error;
    };
    QMetaObject::invokeMethod(this, [this, way, ended] { change(way, ended); }, Qt::QueuedConnection);
}

QString Instrument::messageOf(const std::exception_ptr& thrown)
{
    try {
        std::rethrow_exception(thrown);
    } catch (const std::exception& error) {
        return QString::fromUtf8(error.what());
    } catch (...) {
        return tr("something went wrong");
    }
}

void Instrument::tellFailure(const QString& control, const QString& what, const std::exception_ptr& thrown)
{
    const QDateTime now = QDateTime::currentDateTime();
    const Call failed{.what = what,
                      .control = control,
                      .state = Call::State::Failed,
                      .asked = now,
                      .began = now,
                      .duration = {},
                      .thread = currentThreadName(),
                      .error = messageOf(thrown)};
    const auto tell = [this, failed] {
        Call call = failed;
        call.number = ++m_asked;
        call.state = Call::State::Waiting; // as every call begins
        Q_EMIT callChanged(call);
        call.state = Call::State::Failed;
        Q_EMIT callChanged(call);
    };
    QMetaObject::invokeMethod(this, tell, Qt::QueuedConnection);
}

void Instrument::inRoom(std::function<void(Room&)> act)
{
    QMetaObject::invokeMethod(m_room, [room = m_room, act = std::move(act)] { act(*room); }, Qt::QueuedConnection);
}

host::InstrumentSession& Instrument::sessionOf(Room& room)
{
    if (auto* const session = room.session())
        return *session;
    throw std::runtime_error("no instrument is open");
}

// An adapter that was made before is there even while its control is not, and gives its defaults then.
void Instrument::requirePresent(const host::InstrumentSession& session, const host::ControlName& kind)
{
    if (!session.isPresent(kind))
        throw host::ControlAbsent(kind);
}

provider::ITestHooks& Instrument::testHooksOf(const host::InstrumentSession& session)
{
    provider::IConnection* const connection = session.connection();
    if (provider::ITestHooks* const hooks = connection != nullptr ? connection->testHooks() : nullptr)
        return *hooks;
    throw std::runtime_error("the provider cannot do anything for tests");
}

void Instrument::change(const Way& way, const std::function<void(Call&)>& how)
{
    how(way->call);
    if (way->call.state != Call::State::Waiting && way->call.state != Call::State::UnderWay)
        std::erase(m_ways, way);
    Q_EMIT callChanged(way->call);
}

void Instrument::setState(State state)
{
    m_state = state;
    Q_EMIT stateChanged();
}

void Instrument::setPresent(const QSet<quint64>& present, bool offered)
{
    const bool released = present.isEmpty() && !m_present.isEmpty();
    m_present = present;
    Q_EMIT presenceChanged();
    if (released)
        Q_EMIT controlsReleased();
    if (offered)
        Q_EMIT controlsOffered();
}

} // namespace tov::workbench
