#include "console/terminal/interruption.h"

#include <QtGlobal>

#include <atomic>
#include <csignal>

#ifdef Q_OS_UNIX
#include <array>
#include <cerrno>

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>
#endif

namespace tov::console {

namespace {

// NOLINTBEGIN(cppcoreguidelines-avoid-non-const-global-variables): all that a signal handler can reach
std::atomic<bool> interrupted = false;
static_assert(std::atomic<bool>::is_always_lock_free, "a signal handler sets it");

#ifdef Q_OS_UNIX
// Who waits for input is woken by a byte in a pipe, however shortly before he waits the signal comes.
std::array<int, 2> wake = {-1, -1};
#endif
// NOLINTEND(cppcoreguidelines-avoid-non-const-global-variables)

void interrupt(int signal)
{
    std::signal(signal, interrupt); // some systems forget the handler
    interrupted = true;
#ifdef Q_OS_UNIX
    const int before = errno;
    [[maybe_unused]] const auto written = write(wake[1], "", 1); // one that is full wakes too
    errno = before;
#endif
}

void prepareToWake()
{
#ifdef Q_OS_UNIX
    if (wake[0] < 0 && pipe(wake.data()) == 0)
        for (const int end : wake) {
            fcntl(end, F_SETFL, O_NONBLOCK); // NOLINT(cppcoreguidelines-pro-type-vararg)
            fcntl(end, F_SETFD, FD_CLOEXEC); // NOLINT(cppcoreguidelines-pro-type-vararg)
        }
#endif
}

} // namespace

Interruption::Interruption(Signals which)
    : m_interrupt((prepareToWake(), std::signal(SIGINT, interrupt)))
    , m_terminate(which == Signals::CtrlC ? std::nullopt : std::optional(std::signal(SIGTERM, interrupt)))
{
    came(); // one that came before is nobody's
}

Interruption::~Interruption()
{
    std::signal(SIGINT, m_interrupt);
    if (m_terminate)
        std::signal(SIGTERM, *m_terminate);
}

bool Interruption::came()
{
#ifdef Q_OS_UNIX
    std::array<char, 64> bytes{};
    while (read(wake[0], bytes.data(), bytes.size()) > 0) {
    }
#endif
    return interrupted.exchange(false);
}

bool Interruption::isThere()
{
    return interrupted;
}

bool Interruption::waitForInput()
{
#ifdef Q_OS_UNIX
    std::array<pollfd, 2> waiting{pollfd{0, POLLIN, 0}, pollfd{wake[0], POLLIN, 0}};
    while (!interrupted && (poll(waiting.data(), waiting.size(), -1) < 0 || waiting[0].revents == 0)) {
    }
    return !interrupted;
#else
    return true;
#endif
}

} // namespace tov::console
