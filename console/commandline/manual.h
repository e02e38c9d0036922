#pragma once

#include "console/commandline/command.h"

#include <string>

namespace tov::console {

/// Writes a manual page of `program`, and one of each of its commands, into `folder`. What people wrote for that of the
/// program is the file `prose`: comments in it say where the facts go, and each page takes its examples from there.
/// Throws `Failure`.
void writeManual(const Command& program, const std::string& folder, const std::string& prose);

} // namespace tov::console
