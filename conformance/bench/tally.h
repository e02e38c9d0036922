#pragma once

#include "conformance/bench/verdicts.h"

#include <algorithm>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace tov::conformance {

/// What a check that found nothing wrong says.
struct Seen
{
    std::string looked;  ///< at what
    std::string leftOut; ///< what it could not look at, and why; may be empty
};

/// What a check has looked at, one after the other, and what it left out.
class Tally
{
public:
    void looked(const std::string& what) { append(m_looked, what); }
    void looked(const std::string& how, const Seen& others)
    {
        looked(how + " (" + others.looked + ")");
        if (!others.leftOut.empty())
            leftOut(NotApplicable(others.leftOut));
    }
    void leftOut(const NotApplicable& why) { m_notApplicable.add(why); }
    void leftOut(const NotAllowed& why) { m_notAllowed.add(why); }

    /// Does `work`. If it cannot look, that is left out: the `subject`, or what it names itself if that is empty.
    void attempt(const std::string& subject, const std::function<void()>& work)
    try {
        work();
    } catch (const NotApplicable& why) {
        leftOut(subject.empty() ? why : NotApplicable(why.what(), subject));
    } catch (const NotAllowed& why) {
        leftOut(subject.empty() ? why : NotAllowed(why.what(), subject));
    }

    /// Throws what the check comes to when it looked at nothing.
    Seen seen() const
    {
        if (m_looked.empty() && !m_notAllowed.isEmpty())
            throw NotAllowed(m_notAllowed.words());
        if (m_looked.empty())
            throw NotApplicable(m_notApplicable.isEmpty() ? "the instrument lacks what the rule is about"
                                                          : m_notApplicable.words());
        std::string leftOut = m_notApplicable.words();
        if (!m_notAllowed.isEmpty())
            append(leftOut, m_notAllowed.words(), "; ");
        return {m_looked, leftOut};
    }

private:
    static void append(std::string& list, const std::string& what, const char* between = ", ")
    {
        list.append(list.empty() ? "" : between).append(what);
    }

    /// Reasons, each once, and what they are the reasons of.
    class Reasons
    {
    public:
        void add(const NotLookedAt& left)
        {
            const auto same = std::ranges::find(m_all, left.what(), &std::pair<std::string, std::string>::first);
            if (same == m_all.end())
                m_all.emplace_back(left.what(), left.subject());
            else
                append(same->second, left.subject());
        }

        bool isEmpty() const { return m_all.empty(); }

        std::string words() const
        {
            std::string all;
            for (const auto& [why, what] : m_all)
                append(all, what.empty() ? why : std::string(what).append(": ").append(why), "; ");
            return all;
        }

    private:
        std::vector<std::pair<std::string, std::string>> m_all;
    };

    std::string m_looked;
    Reasons m_notApplicable;
    Reasons m_notAllowed;
};

} // namespace tov::conformance
