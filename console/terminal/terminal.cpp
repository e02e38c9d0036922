#include "console/terminal/terminal.h"

#include <QtGlobal>

#ifdef Q_OS_WIN
#include <io.h>
#include <windows.h>
#else
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

} // namespace tov::console
