#include "operations/world.h"

#include "service/servicecontrols.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <future>
#include <iostream>
#include <map>
#include <stdexcept>

namespace tov::testing {

namespace {

constexpr std::size_t bytesOfStep = 4;
constexpr std::size_t mostSteps = 32;
constexpr std::size_t mostAdapters = 12;

struct Trouble : std::runtime_error
{
    Trouble()
        : std::runtime_error("the instrument failed")
    {
    }
};

// Registrations are compared as they stand, so how they came about is left out.
bool isRegistration(const std::string& call)
{
    return call == "addObserver()" || call == "removeObserver()";
}

const devices::ControlRegistry& registry()
{
    static const devices::ControlRegistry registered = [] {
        devices::ControlRegistry empty;
        devices::service::servicecontrols::registrate(&empty);
        return empty;
    }();
    return registered;
}

std::string printed(const std::vector<std::string>& calls)
{
    std::string text;
    for (const std::string& call : calls)
        text += "\n    " + call;
    return text;
}

std::string printed(const Told& told)
{
    std::string text;
    for (const auto& [number, what] : told)
        text += "\n    " + std::to_string(number) + ": " + what;
    return text;
}

// The order among several observers is the instrument's; what each is told comes in order.
std::map<int, std::vector<std::string>> byObserver(const Told& told)
{
    std::map<int, std::vector<std::string>> each;
    for (const auto& [number, what] : told)
        each[number].push_back(what);
    return each;
}

std::string textOfSnapshot(float temperature)
{
    return exactly(static_cast<double>(temperature)) + " a" + exactly(static_cast<double>(temperature + 1)) + " b"
           + exactly(static_cast<double>(temperature));
}

} // namespace

World::World(Workers& workers)
    : m_workers(workers)
{
    for (const Kind& kind : kinds())
        m_slots.emplace_back().kind = &kind;
}

World::~World()
{
    while (!m_adapters.empty())
        destroy(m_adapters.begin());
    for (Slot& slot : m_slots)
        release(slot, false);
    compare();
}

// The first two bytes choose the kinds that take part, which are few, so that much happens to each.
void World::run(std::span<const std::uint8_t> input)
{
    if (input.size() < 2)
        return;
    m_firstKind = input[0];
    m_kindCount = 1 + input[1] % 4U;
    for (unsigned int i = 0; i < m_kindCount; ++i)
        offer(slotOf(i), false);
    m_input = input.subspan(2).first(std::min(input.size() - 2, mostSteps * bytesOfStep));
    while (const auto next = take()) {
        step(*next);
        compare();
    }
}

std::optional<World::Step> World::take()
{
    if (m_input.size() < bytesOfStep)
        return std::nullopt;
    const auto bytes = m_input.first(bytesOfStep);
    m_input = m_input.subspan(bytesOfStep);
    // To hand over takes longest, so most is done by the thread that is there.
    constexpr std::array threads{0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 1, 1, 2, 2};
    return Step{.verb = bytes[0] % 16U,
                .thread = threads.at(bytes[0] / 16U),
                .target = bytes[1],
                .which = bytes[2],
                .argument = bytes[3]};
}

void World::step(const Step& next)
{
    Slot& slot = slotOf(next.target);
    Adapter* const adapter = adapterOf(next.target);
    const auto doIt = [&] {
        switch (next.verb) {
        case 0:
            return create(slot);
        case 2:
        case 3:
            return notify(slot, next);
        case 4:
            return release(slot, false);
        case 5:
            return release(slot, true);
        case 6:
            return offer(slot, false);
        case 7:
            return offer(slot, true);
        case 8:
            return behave(slot, next.which);
        default:
            break;
        }
        if (adapter == nullptr)
            return create(slot);
        Observer& observer = adapter->observers[next.which % observersOfEach];
        switch (next.verb) {
        case 1:
        case 9:
            return call(*adapter, next);
        case 10:
        case 11:
            return addObserver(*adapter, observer);
        case 12:
            return removeObserver(*adapter, observer);
        case 13:
            return copy(*adapter, next.which % 2 != 0);
        case 14:
            return next.which % 2 == 0 ? announceOffer(*adapter) : announceRelease(*adapter);
        default:
            return destroy(std::ranges::find(m_adapters, adapter, [](Adapter& each) { return &each; }));
        }
    };
    m_done.push_back(std::to_string(next.verb) + " " + std::string(slot.kind->name.name) + ", adapter of "
                     + (adapter == nullptr ? "none" : std::string(adapter->slot->kind->name.name)) + ", "
                     + std::to_string(next.which) + ", " + std::to_string(next.argument) + " on thread "
                     + std::to_string(next.thread));
    // The signals of a controller reach its watchers at once in the thread that made them.
    const auto isController = [](const Slot& one) { return one.kind->observing == Observing::Controller; };
    const bool atHome = isController(slot) || (adapter != nullptr && isController(*adapter->slot));
    m_workers.run(atHome ? 0 : next.thread, doIt);
}

// Inside a call, the next step comes in between, if it is one that other threads may make meanwhile.
void World::interrupt()
{
    if (!std::exchange(m_interruptible, false))
        return;
    const auto next = take();
    if (!next)
        return;
    Slot& slot = slotOf(next->target);
    const bool mayThrow = std::exchange(m_mayThrow, false);
    m_done.push_back("  meanwhile " + std::to_string(next->verb) + " " + std::string(slot.kind->name.name));
    m_workers.run(next->thread, [&] {
        switch (next->verb % 4) {
        case 0:
            return release(slot, false);
        case 1:
            return offer(slot, false);
        case 2:
            return notify(slot, *next);
        default:
            if (Adapter* const adapter = adapterOf(next->which))
                call(*adapter, {.which = next->argument});
        }
    });
    m_mayThrow = mayThrow;
}

void World::create(Slot& slot)
{
    if (m_adapters.size() == mostAdapters)
        return;
    sdk::IVna* const instrument = &m_instrument;
    const std::any made = registry().create(slot.kind->name.keys.registry, instrument);
    if (made.has_value() != slot.present)
        fail("an adapter is made when and only when the control is there");
    if (!slot.present)
        return;
    Adapter& adapter = m_adapters.emplace_back();
    adapter.slot = &slot;
    adapter.held = slot.kind->hold(made);
    if (slot.kind->observing == Observing::List || slot.kind->observing == Observing::Temperature)
        adapter.registered = 1;
    adapter.snapshot = "0";
    if (slot.kind->observing == Observing::Temperature)
        refresh(adapter);
}

void World::call(Adapter& adapter, const Step& step)
{
    Slot& slot = *adapter.slot;
    const auto& calls = slot.kind->calls;
    const Call& called = calls[step.which % calls.size()];
    const bool reaches = slot.present && slot.available;
    const bool throws = reaches && slot.throws && !called.sdkCalls.empty();

    std::string expected = reaches ? called.whenPresent : called.whenAbsent;
    if (reaches && !called.whenFailed.empty() && slot.error.value() != 0)
        expected = called.tellsErrorText ? "failed: " + slot.error.message() : called.whenFailed;
    if (called.readsSnapshot)
        expected = adapter.snapshot;
    if (reaches)
        m_expectedCalls.insert(m_expectedCalls.end(), called.sdkCalls.begin(),
                               throws ? called.sdkCalls.begin() + 1 : called.sdkCalls.end());
    if (throws)
        expected = "threw";

    m_mayThrow = true;
    // An operation of several calls would see in its second what happened in its first.
    m_interruptible = reaches && called.sdkCalls.size() == 1 && step.argument % 2 != 0;
    m_atAnswer = !called.whenFailed.empty() && step.argument % 4 == 3;
    std::string given;
    try {
        given = called.call(adapter.held.adapter.get());
    } catch (const Trouble&) {
        given = "threw";
    }
    m_mayThrow = false;
    m_interruptible = false;
    if (given != expected)
        fail(called.name + " gave " + given + " instead of " + expected);
}

void World::notify(Slot& slot, const Step& step)
{
    const Notification notification{.which = step.which, .a = step.argument, .b = step.which / 4U};
    if (!slot.present || !slot.kind->told)
        return;
    const std::string what = slot.kind->told(notification);
    for (const Adapter* adapter : adaptersOf(slot))
        if (!what.empty())
            expectTold(*adapter, what, adapter->registered);
    if (slot.kind->observing == Observing::Temperature)
        for (Adapter* const adapter : adaptersOf(slot))
            for (int i = 0; i < adapter->registered; ++i)
                refresh(*adapter);
    slot.offered.notify(notification);
}

// What `adapter` passes on of something that it hears so often itself, or its observers by their own registrations.
void World::expectTold(const Adapter& adapter, const std::string& what, int registrations)
{
    switch (adapter.slot->kind->observing) {
    case Observing::List:
        for (int i = 0; i < registrations; ++i)
            for (const int number : adapter.order)
                m_expectedTold.emplace_back(number, what);
        return;
    case Observing::Temperature:
        for (const Observer& observer : adapter.observers)
            for (int i = 0; observer.times > 0 && i < registrations; ++i)
                m_expectedTold.emplace_back(observer.number, what);
        return;
    default:
        for (const Observer& observer : adapter.observers)
            for (int i = 0; i < observer.registered; ++i)
                m_expectedTold.emplace_back(observer.number, what);
    }
}

void World::refresh(Adapter& adapter)
{
    if (!adapter.slot->present)
        return;
    m_expectedCalls.insert(m_expectedCalls.end(), {"modulesTemperature()", "temperature()"});
    adapter.snapshot = textOfSnapshot(adapter.slot->temperature);
}

void World::release(Slot& slot, bool announced)
{
    if (announced)
        for (Adapter* const adapter : adaptersOf(slot))
            announceRelease(*adapter);
    if (!slot.present)
        return;
    static const bool keeps = isSeeded("keeps-released-controls");
    if (keeps)
        m_kept.push_back(slot.offered.control.lock());
    m_released.push_back(slot.offered.control);
    m_instrument.release(slot.kind->name.keys.sdk);
    slot.present = false;
    for (Adapter* const adapter : adaptersOf(slot)) {
        adapter->registered = 0;
        for (Observer& observer : adapter->observers)
            observer.registered = 0;
    }
}

void World::offer(Slot& slot, bool announced)
{
    if (!slot.present) {
        auto [control, offered] = slot.kind->offer();
        offered.recording->recordInto(m_journal);
        offered.recording->duringCall = [this, &slot] {
            const bool throws = slot.throws && m_mayThrow; // before another call may come in between
            if (!slot.later || !m_atAnswer)
                interrupt();
            if (throws)
                throw Trouble();
        };
        if (offered.answering != nullptr)
            offered.answering->beforeAnswer = [this] { interrupt(); };
        slot.offered = std::move(offered);
        slot.present = true;
        m_instrument.offer(slot.kind->name.keys.sdk, std::move(control));
        behave(slot, 255);
    }
    if (announced)
        for (Adapter* const adapter : adaptersOf(slot))
            announceOffer(*adapter);
}

void World::announceRelease(Adapter& adapter)
{
    if (adapter.held.lifecycle == nullptr)
        return;
    adapter.held.lifecycle->onControlsAboutToBeReleased();
    if (!adapter.slot->present)
        return;
    adapter.registered = 0;
    for (Observer& observer : adapter.observers) {
        if (adapter.slot->kind->observing != Observing::Table || observer.attached)
            observer.registered = 0;
        observer.attached = false;
    }
}

void World::announceOffer(Adapter& adapter)
{
    if (adapter.held.lifecycle == nullptr)
        return;
    const bool present = adapter.slot->present;
    switch (adapter.slot->kind->observing) {
    case Observing::List:
        adapter.registered += present ? 1 : 0;
        break;
    case Observing::Table:
        for (Observer& observer : adapter.observers)
            if (present && observer.times > 0 && !std::exchange(observer.attached, true))
                ++observer.registered;
        break;
    case Observing::Corrections:
        for (Observer& observer : adapter.observers)
            if (present && observer.times > 0) {
                ++observer.registered;
                m_expectedTold.insert(m_expectedTold.end(),
                                      {{observer.number, "changed"}, {observer.number, "states"}});
            }
        break;
    case Observing::Temperature:
        adapter.registered += present ? 1 : 0;
        refresh(adapter);
        expectTold(adapter, "changed", 1);
        break;
    case Observing::Controller:
        for (Observer& observer : adapter.observers)
            if (observer.times > 0) {
                observer.registered = present ? 1 : 0;
                m_expectedTold.insert(m_expectedTold.end(),
                                      {{observer.number, "unit"}, {observer.number, "configuration"}});
            }
        break;
    case Observing::Nothing:
        break;
    }
    adapter.held.lifecycle->onControlsAvailable();
}

void World::addObserver(Adapter& adapter, Observer& observer)
{
    const Kind& kind = *adapter.slot->kind;
    if (!kind.makeObserver)
        return;
    if (!observer.object) {
        observer.number = ++m_numbers;
        observer.object = kind.makeObserver(adapter.held.adapter.get(), m_told, observer.number);
        if (!kind.add) { // it listens from now on
            observer.times = 1;
            observer.registered = kind.observing == Observing::Controller && adapter.slot->present ? 1 : 0;
            return;
        }
    }
    if (!kind.add)
        return;
    kind.add(adapter.held.adapter.get(), observer.object.get());
    if (kind.observing == Observing::List) {
        static const bool once = isSeeded("tells-doubles-once");
        if (!once || observer.times == 0)
            adapter.order.push_back(observer.number);
        ++observer.times;
    } else if (observer.times == 0) {
        observer.times = 1;
        observer.attached = adapter.slot->present;
        observer.registered = adapter.slot->present ? 1 : 0;
    }
}

void World::removeObserver(Adapter& adapter, Observer& observer)
{
    const Kind& kind = *adapter.slot->kind;
    if (!observer.object)
        return;
    if (!kind.remove) {
        observer = {};
        return;
    }
    kind.remove(adapter.held.adapter.get(), observer.object.get());
    if (kind.observing == Observing::Corrections && !adapter.slot->present)
        return;
    std::erase(adapter.order, observer.number);
    observer.times = 0;
    observer.registered = 0;
    observer.attached = false;
}

void World::copy(Adapter& adapter, bool move)
{
    const auto& make = move ? adapter.slot->kind->moveOut : adapter.slot->kind->copy;
    if (!make || m_adapters.size() == mostAdapters)
        return;
    Adapter& made = m_adapters.emplace_back();
    made.slot = adapter.slot;
    made.held = make(adapter.held.adapter.get());
}

// Whoever observes by a registration of its own must be removed first, while the control is there.
void World::destroy(std::list<Adapter>::iterator adapter)
{
    const Observing observing = adapter->slot->kind->observing;
    if (observing != Observing::List && observing != Observing::Temperature)
        for (Observer& observer : adapter->observers)
            removeObserver(*adapter, observer);
    m_adapters.erase(adapter);
}

void World::behave(Slot& slot, unsigned int how)
{
    if (how != 255) {
        const std::array<std::error_code, 4> errors = {std::error_code(), std::make_error_code(std::errc::io_error),
                                                       std::error_code(0, std::future_category()),
                                                       std::error_code(-1, std::system_category())};
        slot.error = errors.at(how % 4);
        slot.later = (how & 4U) != 0;
        slot.throws = (how & 24U) == 24;
        slot.available = slot.kind->name.name != "file-memory" || (how & 96U) != 96;
        slot.temperature = static_cast<float>(how) / 2;
    }
    if (!slot.present)
        return;
    slot.offered.setAvailable(slot.available);
    slot.offered.setTemperature(slot.temperature);
    if (AnsweringControl* const answering = slot.offered.answering) {
        answering->error = slot.error;
        answering->when = slot.later ? AnsweringControl::When::Later : AnsweringControl::When::AtOnce;
    }
}

World::Slot& World::slotOf(unsigned int target)
{
    return m_slots[(m_firstKind + target % m_kindCount) % m_slots.size()];
}

World::Adapter* World::adapterOf(unsigned int target)
{
    if (m_adapters.empty())
        return nullptr;
    return &*std::next(m_adapters.begin(), static_cast<std::ptrdiff_t>(target % m_adapters.size()));
}

std::vector<World::Adapter*> World::adaptersOf(const Slot& slot)
{
    std::vector<Adapter*> adapters;
    for (Adapter& adapter : m_adapters)
        if (adapter.slot == &slot)
            adapters.push_back(&adapter);
    return adapters;
}

// At rest: what was called, who was told, who is registered, and that nobody keeps what was released.
void World::compare()
{
    std::vector<std::string> calls = m_journal->calls();
    std::erase_if(calls, isRegistration);
    if (calls != m_expectedCalls)
        fail("the instrument was called" + printed(calls) + "\n  instead of" + printed(m_expectedCalls));
    m_journal = std::make_shared<Journal>();
    m_expectedCalls.clear();
    for (const Slot& slot : m_slots)
        if (slot.present)
            slot.offered.recording->recordInto(m_journal);
    if (byObserver(m_told) != byObserver(m_expectedTold))
        fail("observers were told" + printed(m_told) + "\n  instead of" + printed(m_expectedTold));
    m_told.clear();
    m_expectedTold.clear();

    for (const Slot& slot : m_slots) {
        std::size_t expected = 0;
        for (const Adapter* adapter : adaptersOf(slot)) {
            expected += static_cast<std::size_t>(adapter->registered);
            for (const Observer& observer : adapter->observers)
                expected += static_cast<std::size_t>(observer.registered);
        }
        if (slot.present && slot.offered.registrations() != expected)
            fail(std::string(slot.kind->name.name) + " has " + std::to_string(slot.offered.registrations())
                 + " registrations instead of " + std::to_string(expected));
    }
    if (!std::ranges::all_of(m_released, &std::weak_ptr<void>::expired))
        fail("a control that was released lives on");
    m_released.clear();
}

void World::fail(const std::string& what) const
{
    std::cerr << "what was done:" << printed(m_done) << "\n" << what << "\n";
    std::abort();
}

} // namespace tov::testing
