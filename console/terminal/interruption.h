#pragma once

namespace tov::console {

/// While it exists, Ctrl-C ends nothing by itself: who waits asks whether it came.
class Interruption
{
public:
    Interruption();
    Interruption(const Interruption&) = delete;
    Interruption& operator=(const Interruption&) = delete;

    /// Gives the handling of the signal back.
    ~Interruption();

    /// Whether it came since this was asked last.
    static bool came();

    /// Returns when standard input has something to read, or has ended; false when Ctrl-C comes before, or came and
    /// nobody has asked. Where that cannot be known, it returns at once.
    static bool waitForInput();

private:
    void (*const m_before)(int);
};

} // namespace tov::console
