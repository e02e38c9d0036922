// A handle that threads lock, copy and have moved from, while the control behind it goes and comes.

#include "pausingsdk.h"

#include <optional>
#include <stdexcept>

namespace tov::assurance {

namespace {

class Probe
{
public:
    Probe() = default;
    Probe(const Probe&) = delete;
    Probe& operator=(const Probe&) = delete;
    ~Probe() { m_lives = false; }

    void use() const
    {
        const SdkCall call("calls the control", "returns from the control");
        expect(m_lives, "a control is called that is gone");
    }

private:
    bool m_lives = true;
};

} // namespace

} // namespace tov::assurance

/// As every handle, but it takes its time to be copied or replaced, and notices who else is at it meanwhile.
template <>
class sdk::ControlHandle<tov::assurance::Probe>
{
    using Probe = tov::assurance::Probe;

public:
    using Locked = ControlHandle<const Probe>::Locked;

    ControlHandle() noexcept = default;
    explicit(false) ControlHandle(std::shared_ptr<Probe> control) noexcept
        : m_control(std::move(control))
    {
    }
    ControlHandle(const ControlHandle& other)
    {
        tov::assurance::expect(!other.m_replaced, "a handle is copied while it is replaced");
        ++other.m_copied;
        tov::assurance::pause("copies a handle");
        m_control = other.m_control;
        --other.m_copied;
    }
    ControlHandle(ControlHandle&& other) noexcept
        : m_control(std::move(other.m_control))
    {
        other.expectLeftAlone();
    }
    ControlHandle& operator=(const ControlHandle&) = delete;
    ControlHandle& operator=(ControlHandle&& other) noexcept
    {
        expectLeftAlone();
        m_replaced = true;
        tov::assurance::pause("replaces a handle");
        m_control = std::move(other.m_control);
        m_replaced = false;
        return *this;
    }
    ~ControlHandle() { expectLeftAlone(); }

    Locked lock() const noexcept { return Locked(m_control.lock()); }

private:
    void expectLeftAlone() const
    {
        tov::assurance::expect(!m_replaced && m_copied == 0, "a handle is replaced while others use it");
    }

    std::weak_ptr<Probe> m_control;
    mutable int m_copied = 0;
    bool m_replaced = false;
};

namespace tov::assurance {

namespace {

using Handle = devices::ReacquiringControl<Probe>;

enum class Do {
    Lock,
    LockTwice,
    LockMovedFrom, ///< the handle that `Lock` locks was moved from this one
    LockOrFail,    ///< the instrument cannot be asked, if this thread does
    Copy,          ///< and lock the copy
    GoAndCome,     ///< the control goes, and there is a new one
    Go,
};

class HandleScene final : public SceneOf<Do>
{
public:
    explicit HandleScene(std::vector<Do> deeds, bool goneBefore = false)
        : SceneOf(std::move(deeds))
    {
        m_offers.offer();
        m_handle.emplace([this] { return ask(); });
        if (doing(Do::LockMovedFrom))
            m_moved.emplace(std::move(*m_handle));
        if (goneBefore) {
            m_offers.release();
            m_offers.offer();
        }
        m_offers.lookups = 0;
    }

    void lookAtTheEnd() override
    {
        if (m_offers.releases == 0)
            expect(m_offers.lookups == 0, "the instrument was asked for a control that lived");
        if (!m_offers.now)
            m_offers.offer();
        m_goes = false;
        lock(handle());
        const int lookups = m_offers.lookups;
        lock(handle());
        expect(m_offers.lookups == lookups, "the last answer was not kept");
        m_handle.reset();
        m_moved.reset();
        m_offers.end();
    }

private:
    const Handle& handle() const { return m_moved ? *m_moved : *m_handle; }

    sdk::ControlHandle<Probe> ask()
    {
        const SdkCall call("asks for the control", "has asked for the control");
        ++m_offers.lookups;
        if (s_fails)
            throw std::runtime_error("the instrument cannot be asked");
        return {m_offers.now};
    }

    void perform(Do deed) override
    {
        switch (deed) {
        case Do::LockTwice:
            lock(handle());
            [[fallthrough]];
        case Do::Lock:
            return lock(handle());
        case Do::LockMovedFrom:
            if (const auto locked = m_handle->lock())
                locked->use();
            return;
        case Do::LockOrFail:
            s_fails = true;
            try {
                lock(handle());
            } catch (const std::runtime_error&) {
            }
            s_fails = false;
            return;
        case Do::Copy:
            return lock(Handle(handle()));
        case Do::GoAndCome:
            go();
            pause("has let the control go");
            m_offers.offer();
            m_goes = false;
            return;
        case Do::Go:
            return go();
        }
    }

    void go()
    {
        m_goes = true;
        m_offers.release();
    }

    // The lock gives what is there, unless it goes meanwhile.
    void lock(const Handle& handle)
    {
        const int releases = m_offers.releases;
        const bool there = !m_goes;
        const auto locked = handle.lock();
        if (locked)
            locked->use();
        else
            expect(!there || releases != m_offers.releases, "a control that was there all the time was not lent");
    }

    inline static thread_local bool s_fails = false;

    Offers<Probe> m_offers;
    bool m_goes = false;
    std::optional<Handle> m_handle;
    std::optional<Handle> m_moved;
};

Scenario scenario(std::string name, int preemptions, const std::vector<Do>& deeds, bool goneBefore = false)
{
    return {.name = std::move(name), .preemptions = preemptions, .makeScene = [=] {
                return std::make_unique<HandleScene>(deeds, goneBefore);
            }};
}

} // namespace

std::vector<Scenario> scenarios()
{
    return {
        scenario("two threads lock a handle", 6, {Do::LockTwice, Do::Lock}),
        scenario("a handle is locked while its control goes and comes", 6, {Do::LockTwice, Do::GoAndCome}),
        scenario("two threads lock a handle while its control goes and comes", 3, {Do::Lock, Do::Lock, Do::GoAndCome}),
        scenario("three threads lock a handle after its control came anew", 3, {Do::Lock, Do::Lock, Do::Lock}, true),
        scenario("two threads lock a handle while its new control goes", 3, {Do::Lock, Do::Lock, Do::Go}, true),
        scenario("a handle is copied and locked while its control goes and comes", 3,
                 {Do::Copy, Do::Lock, Do::GoAndCome}),
        scenario("a handle is copied by two threads after its control came anew", 2, {Do::Copy, Do::Copy, Do::Lock},
                 true),
        scenario("a handle and the one that it was moved from are locked while the control goes and comes", 3,
                 {Do::Lock, Do::LockMovedFrom, Do::GoAndCome}),
        scenario("the instrument cannot be asked by one of two threads while the control goes and comes", 3,
                 {Do::Lock, Do::LockOrFail, Do::GoAndCome}),
    };
}

} // namespace tov::assurance
