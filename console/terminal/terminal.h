#pragma once

#include <cstddef>

namespace tov::console {

/// Has terminal and program take UTF-8, and the terminal control sequences, where they must be told. From now on a
/// reader of standard output that goes, as `head` does, is an error of writing and does not end the program. Called
/// before there is any other thread.
void prepareTerminal();

bool standardInputIsTerminal();
bool standardOutputIsTerminal();
bool standardErrorIsTerminal();

/// Whether whoever read standard output has gone, where that can be known.
bool standardOutputIsUnread();

/// How many columns the terminal of standard output, or of standard error, has; 0 when it is none.
std::size_t terminalWidth();
std::size_t errorTerminalWidth();

} // namespace tov::console
