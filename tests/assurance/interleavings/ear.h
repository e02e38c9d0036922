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

    /// Removes the observer by `remove`. It must be silent afterwards, unless it was added or removed by others
    /// meanwhile: who finds it gone from the table does not wait for those who remove it. One that removes itself
    /// inside a notification is told until that one ends.
    void removeBy(auto remove)
    {
        const bool meetsOthers = m_adding > 0 || m_removing > 0;
        const int additions = m_additions;
        const int ownRemoval = ++removals;
        m_removesItself = m_removesItself || (m_telling > 0 && m_teller == std::this_thread::get_id());
        ++m_removing;
        remove();
        --m_removing;
        if (meetsOthers || additions != m_additions || ownRemoval != removals)
            return;
        mustBeSilent = true;
        expect(m_telling == 0 || m_removesItself, "an observer was removed while it is told");
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
        m_removesItself = false;
    }

    bool mustBeSilent = false;
    int removals = 0;
    int told = 0;

private:
    int m_adding = 0;
    int m_additions = 0;
    int m_removing = 0;
    bool m_removesItself = false;
    int m_telling = 0;
    std::thread::id m_teller;
};

} // namespace tov::assurance
