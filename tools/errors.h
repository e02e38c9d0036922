#pragma once

#include <stdexcept>

namespace tov::inline tools {

/// The instrument lacks the control, or did not do what was asked, or a file cannot be used. What it says is one line
/// for the person who asked.
class Failure : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

/// Something is unknown or malformed; nothing was changed. What it says is one line for the person who asked.
class BadUse : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

/// Standard output takes no more.
class OutputLost : public std::runtime_error
{
public:
    OutputLost()
        : std::runtime_error("cannot write to standard output")
    {
    }
};

} // namespace tov::inline tools
