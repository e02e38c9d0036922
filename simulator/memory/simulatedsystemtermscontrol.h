#pragma once

#include "sdk/service/isystemtermscontrol.h"
#include "simulator/support/laststored.h"
#include "simulator/support/machine.h"
#include "simulator/support/observerhub.h"
#include "simulator/storedterms.h"

#include <memory>
#include <vector>

namespace tov::simulator {

/// The system error terms that the simulated instrument was given last.
class SystemTermsState final : public LastStored<StoredTerms>
{
private:
    QCborMap toCbor(const StoredTerms& stored) const override;
    StoredTerms fromCbor(const QCborMap& saved) const override;
};

/// The system terms as the simulated instrument offers them. The flag tells whether terms are stored.
///
/// A write is told by a notice, the number of its records, the status 1 with records or 2 without, and a
/// second notice.
class SimulatedSystemTermsControl final : public sdk::service::ISystemTermsControl
{
public:
    SimulatedSystemTermsControl(std::shared_ptr<Machine> machine, std::shared_ptr<SystemTermsState> state);
    SimulatedSystemTermsControl(const SimulatedSystemTermsControl&) = delete;
    SimulatedSystemTermsControl& operator=(const SimulatedSystemTermsControl&) = delete;
    ~SimulatedSystemTermsControl() override;

    void addObserver(Observer* observer) override;
    void removeObserver(Observer* observer) override;
    std::vector<TermsRecord> termsRecords() override;
    void writeSystemTerms(long long secondsSinceEpoch, double parameter, std::vector<TermsRecord> records,
                          sdk::corrections::ErrorTerms terms) override;
    void writeSystemTerms(long long secondsSinceEpoch, double parameter, sdk::corrections::ErrorTerms terms) override;
    bool systemTermsFlag() override;

private:
    void store(StoredTerms stored, int status);

    const std::shared_ptr<Machine> m_machine;
    const std::shared_ptr<SystemTermsState> m_state;
    const std::shared_ptr<ObserverHub<Observer>> m_observers;
};

} // namespace tov::simulator
