#pragma once

#include <stdexcept>
#include <string>
#include <utility>

namespace tov::conformance {

/// A rule is broken: the text says what was seen.
class Finding : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

/// Why something is not looked at, and what it is; that is empty for all that a rule is about.
class NotLookedAt : public std::runtime_error
{
public:
    explicit NotLookedAt(const std::string& why, std::string what = {})
        : std::runtime_error(why)
        , m_subject(std::move(what))
    {
    }

    const std::string& subject() const noexcept { return m_subject; }

private:
    std::string m_subject;
};

/// The instrument lacks it, or its provider lacks what it takes to look.
class NotApplicable : public NotLookedAt
{
public:
    using NotLookedAt::NotLookedAt;
};

/// Looking would change what the user has not allowed to be changed.
class NotAllowed : public NotLookedAt
{
public:
    using NotLookedAt::NotLookedAt;
};

} // namespace tov::conformance
