#pragma once

#include <optional>

namespace tov::console {

/// While it exists, Ctrl-C ends nothing by itself: who waits asks whether it came.
class Interruption
{
public:
    /// Which signals count as Ctrl-C.
    enum class Signals { CtrlC, CtrlCAndTermination };

    explicit Interruption(Signals which = Signals::CtrlC);
    Interruption(const Interruption&) = delete;
    Interruption& operator=(const Interruption&) = delete;

    /// Gives the handling of the signal back.
    ~Interruption();

    /// Whether it came since this was asked last.
    static bool came();

    /// The same, but it will have come when this is asked again.
    static bool isThere();

    /// Returns when standard input has something to read, or has ended; false when Ctrl-C comes before, or came and
    /// nobody has asked. Where that cannot be known, it returns at once.
    static bool waitForInput();

private:
    using Handler = void (*)(int);

    const Handler m_interrupt;
    const std::optional<Handler> m_terminate; // none where that goes on ending the program
};

} // namespace tov::console
