#pragma once

#include "sdk/corrections/errorterms.h"
#include "sdk/service/isystemtermscontrol.h"

#include <vector>

namespace tov::simulator {

/// The system error terms as they were written to the simulated instrument.
struct StoredTerms
{
    long long secondsSinceEpoch = 0;
    double parameter = 0.0;
    std::vector<sdk::service::ISystemTermsControl::TermsRecord> records;
    sdk::corrections::ErrorTerms terms;
};

} // namespace tov::simulator
