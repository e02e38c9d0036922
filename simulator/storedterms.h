#pragma once

#include "sdk/corrections/errorterms.h"
#include "sdk/service/isystemtermscontrol.h"

#include <vector>

namespace tov::simulator {

/// The system error terms as they were written to the simulated instrument.
struct StoredTerms
{
    long long secondsSinceEpoch = 0; ///< the time that came with them
    double parameter = 0.0;          ///< the number that came with them, without meaning to the simulator

    /// The records that came with them; none when they were written without.
    std::vector<sdk::service::ISystemTermsControl::TermsRecord> records;

    sdk::corrections::ErrorTerms terms; ///< the terms themselves
};

} // namespace tov::simulator
