#pragma once

#include "devices/slotorder.h"
#include "sdk/corrections/errorterms.h"

#include <cstdint>
#include <vector>

namespace sdk::service {

/// The system error terms that the instrument stores.
///
/// Thread: *any thread*.
class ISystemTermsControl
{
public:
    struct TermsRecord
    {
        std::int64_t key = 0;
        double value = 0.0;
        std::int32_t number = 0;
    };

    /// Told of the stored terms on the SDK's notification thread.
    class Observer
    {
    public:
        virtual ~Observer() = default;

        virtual void onTermsNotice() = 0;
        virtual void onTermsValue(unsigned int value) = 0;
        virtual void onTermsSecondNotice() = 0;
        virtual void onTermsStatus(int status) = 0;
    };

    virtual ~ISystemTermsControl() = default;

    virtual void reserved1() {}

    virtual void addObserver(Observer* observer) = 0;

    /// No notification reaches `observer` once this has returned.
    virtual void removeObserver(Observer* observer) = 0;

    virtual std::vector<TermsRecord> termsRecords() = 0;

    virtual void reserved5() {}
    virtual void reserved6() {}

    /// Stores `terms`, once with a list of records and once without.
    TOV_OVERLOADS_IN_SLOT_ORDER(virtual void writeSystemTerms(long long secondsSinceEpoch, double parameter,
                                                              std::vector<TermsRecord> records,
                                                              corrections::ErrorTerms terms) = 0,
                                virtual void writeSystemTerms(long long secondsSinceEpoch, double parameter,
                                                              corrections::ErrorTerms terms) = 0);

    virtual bool systemTermsFlag() = 0;
};

} // namespace sdk::service
