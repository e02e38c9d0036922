#pragma once

// An instrument whose every call gives others their turns, and which notices what must not be done to it.

#include "devices/reacquiringcontrol.h"
#include "scheduler.h"

#include <sanitizer/asan_interface.h>

#include <algorithm>
#include <memory>
#include <set>
#include <thread>
#include <utility>
#include <vector>

namespace tov::assurance {

/// Lasts as long as a call to the instrument.
class SdkCall
{
public:
    SdkCall(const char* begins, const char* returns)
        : m_returns(returns)
    {
        expect(!holdsALock(), "the instrument is called under a lock");
        pause(begins);
    }
    SdkCall(const SdkCall&) = delete;
    SdkCall& operator=(const SdkCall&) = delete;
    ~SdkCall() { pause(m_returns); }

private:
    const char* const m_returns;
};

/// The observers of one control. Everything here is done by the one thread whose turn it is.
template <typename Observer>
class SdkObservers
{
public:
    void add(Observer* observer)
    {
        const SdkCall call("calls addObserver()", "returns from addObserver()");
        m_observers.push_back(observer);
    }

    /// Waits for the notifications of other threads that run in `observer`, as an instrument must.
    void remove(Observer* observer)
    {
        const SdkCall call("calls removeObserver()", "returns from removeObserver()");
        std::erase(m_observers, observer);
        waitUntil([this, observer, self = std::this_thread::get_id()] {
            return std::ranges::none_of(
                m_told, [=](const auto& told) { return told.first == observer && told.second != self; });
        });
    }

    void notify(auto notification)
    {
        for (Observer* const observer : std::vector(m_observers)) {
            if (std::ranges::find(m_observers, observer) == m_observers.end())
                continue;
            m_told.emplace_back(observer, std::this_thread::get_id());
            notification(*observer);
            std::erase(m_told, std::pair(observer, std::this_thread::get_id()));
        }
    }

    const std::vector<Observer*>& all() const { return m_observers; }

    void expectAllAlive() const
    {
        for (Observer* const observer : m_observers)
            expect(__asan_address_is_poisoned(observer) == 0, "an observer of the instrument is gone");
    }

private:
    std::vector<Observer*> m_observers;
    std::vector<std::pair<Observer*, std::thread::id>> m_told;
};

/// What the instrument offers of one kind of control, one after the other, and which of them live.
template <typename Control>
class Offers
{
public:
    /// Offers a new control.
    void offer()
    {
        auto* const created = new Control; // NOLINT(cppcoreguidelines-owning-memory): the next line owns it
        now = std::shared_ptr<Control>(created, [this](Control* gone) {
            m_living.erase(gone);
            if constexpr (requires { gone->observers; })
                wentInUse = wentInUse || !gone->observers.all().empty();
            delete gone; // NOLINT(cppcoreguidelines-owning-memory)
        });
        m_living.insert(created);
    }

    /// Lets go of the present one.
    void release()
    {
        now.reset();
        ++releases;
    }

    /// Lets go of the present one, and waits until nobody uses it.
    void releaseAndWait()
    {
        release();
        waitUntil([this] { return m_living.empty(); });
    }

    /// Lets go of the present one, and offers a new one when nobody uses it.
    void replace()
    {
        releaseAndWait();
        pause("has let the control go");
        offer();
    }

    /// Lets go of the present one, which nobody may hold besides.
    void end()
    {
        release();
        expect(m_living.empty(), "a control was not let go of");
    }

    void expectObserversAlive() const
    {
        for (const Control* control : m_living)
            control->observers.expectAllAlive();
    }

    /// How an adapter reaches what is offered.
    template <typename SdkControl>
    devices::ReacquiringControl<SdkControl> reached()
    {
        return devices::ReacquiringControl<SdkControl>([this] {
            const SdkCall call("asks for the control", "has asked for the control");
            ++lookups;
            return sdk::ControlHandle<SdkControl>(std::shared_ptr<SdkControl>(now));
        });
    }

    const std::set<Control*>& living() const { return m_living; }

    std::shared_ptr<Control> now;
    int releases = 0;
    int lookups = 0;
    bool wentInUse = false; ///< with observers

private:
    std::set<Control*> m_living;
};

} // namespace tov::assurance
