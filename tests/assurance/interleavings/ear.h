#pragma once

#include "scheduler.h"

#include <functional>
#include <thread>

namespace tov::assurance {

/// What is known of one observer of the application: whether it may be told, and how often it was.
class Ear
{
public:
    /// Around a call that adds the observer.
    void beginToAdd()
    {
        ++m_adding;
        ++m_additions;
        mustBeSilent = false;
    }
    void endToAdd() { --m_adding; }

    /// Removes the observer by `remove`. It must be silent afterwards, unless it was added meanwhile.
    void removeBy(auto remove)
    {
        ++removals;
        const bool wasBeingAdded = m_adding > 0;
        const int additions = m_additions;
        remove();
        if (wasBeingAdded || additions != m_additions)
            return;
        mustBeSilent = true;
        expect(m_telling == 0 || m_teller == std::this_thread::get_id(), "an observer was removed while it is told");
    }

    /// In the notification: does `meanwhile`, if there is something to do.
    void hear(const std::function<void()>& meanwhile = {})
    {
        expect(!mustBeSilent, "an observer is told after it was removed");
        ++told;
        ++m_telling;
        m_teller = std::this_thread::get_id();
        pause("tells an observer");
        if (meanwhile)
            meanwhile();
        pause("has told an observer");
        --m_telling;
    }

    bool mustBeSilent = false;
    int removals = 0;
    int told = 0;

private:
    int m_adding = 0;
    int m_additions = 0;
    int m_telling = 0;
    std::thread::id m_teller;
};

} // namespace tov::assurance
