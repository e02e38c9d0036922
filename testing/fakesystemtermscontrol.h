#pragma once

#include "sdk/service/isystemtermscontrol.h"
#include "testing/observedfake.h"

namespace tov::testing {

/// A fake of `sdk::service::ISystemTermsControl`.
class FakeSystemTermsControl final
    : public ObservedFake<sdk::service::ISystemTermsControl, sdk::service::ISystemTermsControl::Observer>
{
public:
    FakeSystemTermsControl() { recordsObservers = false; }

    /// What the last write brought.
    std::vector<TermsRecord> writtenRecords;
    /// What was written last.
    sdk::corrections::ErrorTerms writtenTerms;

    std::vector<TermsRecord> termsRecords() override { return called<std::vector<TermsRecord>>("termsRecords"); }
    void writeSystemTerms(long long secondsSinceEpoch, double parameter, std::vector<TermsRecord> records,
                          sdk::corrections::ErrorTerms terms) override
    {
        writtenRecords = std::move(records);
        writtenTerms = std::move(terms);
        called("writeSystemTerms with records", secondsSinceEpoch, parameter);
    }
    void writeSystemTerms(long long secondsSinceEpoch, double parameter, sdk::corrections::ErrorTerms terms) override
    {
        writtenTerms = std::move(terms);
        called("writeSystemTerms", secondsSinceEpoch, parameter);
    }
    bool systemTermsFlag() override { return called<bool>("systemTermsFlag"); }
};

} // namespace tov::testing
