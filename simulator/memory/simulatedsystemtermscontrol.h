#pragma once

#include "sdk/service/isystemtermscontrol.h"
#include "simulator/storeddata.h"
#include "simulator/support/laststored.h"
#include "simulator/support/observers.h"

#include <memory>
#include <vector>

namespace tov::simulator {

/// The system error terms that the simulated instrument was given last.
using SystemTermsState = LastStored<StoredTerms>;
QCborMap toCbor(const StoredTerms& stored);
void fromCbor(const QCborMap& saved, StoredTerms& stored);

/// The system terms as the simulated instrument offers them. The flag tells whether terms are stored.
///
/// A write is told by a notice, the number of its records, the status 1 with records or 2 without, and a
/// second notice.
class SimulatedSystemTermsControl final : public ObservedControl<sdk::service::ISystemTermsControl>
{
public:
    SimulatedSystemTermsControl(std::shared_ptr<Machine> machine, std::shared_ptr<SystemTermsState> state);

    std::vector<TermsRecord> termsRecords() override;
    void writeSystemTerms(long long secondsSinceEpoch, double parameter, std::vector<TermsRecord> records,
                          sdk::corrections::ErrorTerms terms) override;
    void writeSystemTerms(long long secondsSinceEpoch, double parameter, sdk::corrections::ErrorTerms terms) override;
    bool systemTermsFlag() override;

private:
    void store(StoredTerms stored, int status);

    const std::shared_ptr<Machine> m_machine;
    const std::shared_ptr<SystemTermsState> m_state;
};

} // namespace tov::simulator
