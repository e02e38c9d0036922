#pragma once

#include "sdk/slotorder.h"
#include "vna/errorterms.h"

#include <QDateTime>

#include <cstdint>
#include <vector>

namespace tov::devices::service {

/// The system error terms that the instrument stores.
///
/// What the instrument throws passes through every operation.
///
/// Thread: *any thread*.
class ISystemTermsControl
{
public:
    /// A record that is stored with the terms; its meaning and units are the instrument's.
    struct TermsRecord
    {
        std::int64_t key = 0;    ///< unchanged in both directions
        double value = 0.0;      ///< unchanged in both directions
        std::int64_t number = 0; ///< a signed number of 32 bits in the instrument, which gets the low ones
    };

    /// The instrument's number of a status, whose meaning is the instrument's; 0 also stands for every number that is
    /// not listed.
    enum class Status : std::uint32_t {
        Status0 = 0, ///< the instrument's 0
        Status1,     ///< the instrument's 1
        Status2,     ///< the instrument's 2
        Status3,     ///< the instrument's 3
        Status4,     ///< the instrument's 4
        Status5,     ///< the instrument's 5
        Status6,     ///< the instrument's 6
        Status7,     ///< the instrument's 7
        Status8,     ///< the instrument's 8
        Status9,     ///< the instrument's 9
    };

    /// Told of the stored terms on the *SDK's notification thread*, while the list of observers is locked:
    /// it must not add or remove observers of the same control. What the notifications mean is the instrument's.
    class Observer
    {
    public:
        virtual ~Observer() = default;

        /// The instrument's first notice.
        virtual void onTermsNotice() = 0;

        /// The instrument tells a value, which is passed on unchanged.
        virtual void onTermsValue(unsigned int value) = 0;

        /// The instrument's second notice.
        virtual void onTermsSecondNotice() = 0;

        /// The instrument tells a status.
        virtual void onTermsStatus(Status status) = 0;
    };

    virtual ~ISystemTermsControl() = default;

    /// The stored records in the instrument's order; empty when the control is absent.
    virtual std::vector<TermsRecord> termsRecords() = 0;

    /// Stores `terms` with a list of records. The time goes to the instrument in whole seconds since 1970 (UTC), the
    /// number of a record in its low 32 bits, everything else unchanged; what `parameter` means is the instrument's.
    /// Does nothing when `records` is empty or the control is absent.
    TOV_OVERLOADS_IN_SLOT_ORDER(virtual void writeSystemTerms(QDateTime time, double parameter,
                                                              std::vector<TermsRecord> records,
                                                              const vna::ErrorTerms& terms) = 0,
                                virtual void writeSystemTerms(QDateTime time, double parameter,
                                                              const vna::ErrorTerms& terms) = 0);

    /// \fn void writeSystemTerms(QDateTime time, double parameter, const vna::ErrorTerms& terms)
    /// Stores `terms` without records; time and parameter go as they do with records. Does nothing when the control is
    /// absent.

    /// A flag of the stored terms, whose meaning is the instrument's; false when the control is absent.
    virtual bool systemTermsFlag() = 0;

    /// Appends `observer`, which must not be null and is not owned. Observers are told in the order in which they were
    /// added, once for each time. Waits for a notification that is being delivered. Works while the control is absent
    /// too.
    virtual void addObserver(Observer* observer) = 0;

    /// Removes every entry of `observer`; waits for a notification that is being delivered.
    virtual void removeObserver(Observer* observer) = 0;
};

} // namespace tov::devices::service
