#include "console/terminal/terminal.h"

#include <QtGlobal>

#ifdef Q_OS_WIN
#include <io.h>
#include <windows.h>
#else
#include <clocale>
#include <csignal>
#include <string_view>

#include <langinfo.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <unistd.h>
#endif

namespace tov::console {

namespace {

bool isTerminal(int descriptor)
{
#ifdef Q_OS_WIN
    return _isatty(descriptor) != 0;
#else
    return isatty(descriptor) != 0;
#endif
}

std::size_t widthOf(int descriptor)
{
    if (!isTerminal(descriptor))
        return 0;
#ifdef Q_OS_WIN
    CONSOLE_SCREEN_BUFFER_INFO info;
    HANDLE const handle = GetStdHandle(descriptor == 1 ? STD_OUTPUT_HANDLE : STD_ERROR_HANDLE);
    return GetConsoleScreenBufferInfo(handle, &info)
               ? static_cast<std::size_t>(info.srWindow.Right - info.srWindow.Left + 1)
               : 0;
#else
    winsize size = {};
    return ioctl(descriptor, TIOCGWINSZ, &size) == 0 ? size.ws_col : 0; // NOLINT(cppcoreguidelines-pro-type-vararg)
#endif
}

} // namespace

void prepareTerminal()
{
#ifdef Q_OS_WIN
    SetConsoleOutputCP(CP_UTF8);
    SetConsoleCP(CP_UTF8);
    for (const DWORD stream : {STD_OUTPUT_HANDLE, STD_ERROR_HANDLE}) {
        HANDLE const handle = GetStdHandle(stream);
        DWORD mode = 0;
        if (GetConsoleMode(handle, &mode))
            SetConsoleMode(handle, mode | ENABLE_VIRTUAL_TERMINAL_PROCESSING);
    }
#else
    std::signal(SIGPIPE, SIG_IGN);
    // The line editor takes characters apart as the program's locale does, which begins as one without other letters
    // than those of English.
    // NOLINTBEGIN(concurrency-mt-unsafe): no thread has begun
    if (std::setlocale(LC_CTYPE, "") == nullptr || std::string_view(nl_langinfo(CODESET)) != "UTF-8")
        std::setlocale(LC_CTYPE, "C.UTF-8");
    // NOLINTEND(concurrency-mt-unsafe)
#endif
}

bool standardInputIsTerminal()
{
    return isTerminal(0);
}

bool standardOutputIsTerminal()
{
    return isTerminal(1);
}

bool standardErrorIsTerminal()
{
    return isTerminal(2);
}

bool standardOutputIsUnread()
{
#ifdef Q_OS_WIN
    return false;
#else
    pollfd output{.fd = STDOUT_FILENO, .events = 0, .revents = 0};
    return poll(&output, 1, 0) > 0 && (output.revents & (POLLERR | POLLHUP)) != 0;
#endif
}

std::size_t terminalWidth()
{
    return widthOf(1);
}

std::size_t errorTerminalWidth()
{
    return widthOf(2);
}

} // namespace tov::console
