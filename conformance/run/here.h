#pragma once

#include "conformance/bench/bench.h"
#include "conformance/checks/checks.h"
#include "host/providers.h"

namespace tov::conformance {

/// Makes one check in this process, which gives the exit status to be ended with. What comes next and what came of it
/// are told on standard output, each in a line: a record separator and a JSON object (RFC 7464), so that what others
/// print there is told apart.
int runHere(const host::ProviderChoice& choice, const Check& check, const Settings& settings);

} // namespace tov::conformance
