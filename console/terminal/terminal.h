#pragma once

namespace tov::console {

/// Has the terminal take UTF-8 and control sequences, which on some platforms it must be told.
void prepareTerminal();

bool standardInputIsTerminal();
bool standardOutputIsTerminal();
bool standardErrorIsTerminal();

} // namespace tov::console
