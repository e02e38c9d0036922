#pragma once

#include "workbench/instrument/instrument.h"

namespace tov::workbench {

/// Shows the window on what `opener` opens until it is closed, and gives the exit status of the program. Where the user
/// left a call that was not answered, it does not return but ends the program: nobody could wait for that call's
/// thread.
///
/// Thread: that of the application object.
int runWindow(Instrument::Opener opener);

} // namespace tov::workbench
