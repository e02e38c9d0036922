#include "neveranswered.h"

#include "sleepingthread.h"

#include <array>
#include <csignal>
#include <stdexcept>
#include <thread>

#include <sys/wait.h>
#include <unistd.h>

namespace tov::testing {

namespace {

enum Ends { Reading, Writing };

bool hasEnded(pid_t child)
{
    siginfo_t end{};
    return waitid(P_PID, static_cast<id_t>(child), &end, WEXITED | WNOHANG | WNOWAIT) != 0 || end.si_pid != 0;
}

} // namespace

std::string waitsForEver(const std::function<void(const std::function<void()>& whenCalled)>& call)
{
    std::array<int, 2> pipe{};
    if (::pipe(pipe.data()) != 0)
        throw std::runtime_error("no pipe to a child process");
    const pid_t child = fork();
    if (child < 0)
        throw std::runtime_error("no child process");
    if (child == 0) {
        try {
            call([&] {
                const char sign = 0;
                if (write(pipe[Writing], &sign, 1) != 1)
                    _exit(2);
            });
        } catch (...) {
            _exit(3);
        }
        _exit(0);
    }
    close(pipe[Writing]);
    char sign = 0;
    const bool isCalled = read(pipe[Reading], &sign, 1) == 1;
    close(pipe[Reading]);

    const std::string thread = "/proc/" + std::to_string(child);
    while (!sleepsForEver(thread) && !hasEnded(child))
        std::this_thread::yield();
    const bool ended = hasEnded(child);
    kill(child, SIGKILL);
    int status = 0;
    waitpid(child, &status, 0);
    if (!isCalled)
        return "    the SDK is not called\n";
    if (ended || !WIFSIGNALED(status) || WTERMSIG(status) != SIGKILL)
        return "    the call ends without an answer, with the status " + std::to_string(status) + '\n';
    return {};
}

} // namespace tov::testing
