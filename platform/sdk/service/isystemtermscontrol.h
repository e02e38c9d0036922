#pragma once

#include "sdk/corrections/errorterms.h"
#include "sdk/slotorder.h"

#include <cstdint>
#include <vector>

namespace sdk::service {

/// The system error terms that the instrument stores. What an operation throws reaches the application.
///
/// Thread: *any thread*.
class ISystemTermsControl
{
public:
    /// A record that is stored with the terms. The library passes it on without knowing what it means.
    struct TermsRecord
    {
        std::int64_t key = 0;    ///< passed on bit for bit
        double value = 0.0;      ///< passed on unchanged
        std::int32_t number = 0; ///< read with its sign, written as the low 32 bits of the application's number
    };

    /// Told of the stored terms on the SDK's notification thread. The library does not know what the notifications
    /// mean.
    class Observer
    {
    public:
        virtual ~Observer() = default;

        /// The instrument's first notice.
        virtual void onTermsNotice() = 0;

        /// The instrument tells a value.
        virtual void onTermsValue(unsigned int value) = 0;

        /// The instrument's second notice.
        virtual void onTermsSecondNotice() = 0;

        /// The instrument tells a status, a number from 0 to 9; any other one counts as 0.
        virtual void onTermsStatus(int status) = 0;
    };

    virtual ~ISystemTermsControl() = default;

    /// Not used by this library; keeps its slot.
    virtual void reserved1() {}

    /// Tells `observer`, which is not owned, from now on; it may be told before this returns. It may come again for one
    /// that is registered: what that does is the SDK's. If this throws, `observer` is not registered.
    virtual void addObserver(Observer* observer) = 0;

    /// No notification reaches `observer` once this has returned. One that is not registered is ignored.
    virtual void removeObserver(Observer* observer) = 0;

    /// The stored records, in an order that the library keeps.
    virtual std::vector<TermsRecord> termsRecords() = 0;

    /// Not used by this library; keeps its slot.
    virtual void reserved5() {}
    /// Not used by this library; keeps its slot.
    virtual void reserved6() {}

    /// Takes `terms` to be stored with a list of records, of which there is at least one. Nothing answers later. The
    /// library passes `parameter` on without knowing what it means.
    TOV_OVERLOADS_IN_SLOT_ORDER(virtual void writeSystemTerms(long long secondsSinceEpoch, double parameter,
                                                              std::vector<TermsRecord> records,
                                                              corrections::ErrorTerms terms) = 0,
                                virtual void writeSystemTerms(long long secondsSinceEpoch, double parameter,
                                                              corrections::ErrorTerms terms) = 0);

    /// \fn void writeSystemTerms(long long secondsSinceEpoch, double parameter, corrections::ErrorTerms terms)
    /// Takes `terms` to be stored without records. Nothing answers later.

    /// A flag of the stored terms, which the library passes on without knowing what it means.
    virtual bool systemTermsFlag() = 0;
};

} // namespace sdk::service
