#include "console/terminal.h"

#include <QtGlobal>

#ifdef Q_OS_WIN
#include <io.h>
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
