#pragma once

#include "devices/slotorder.h"
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
    /// As the instrument gives it; `number` has 32 bits there.
    struct TermsRecord
    {
        std::int64_t key = 0;
        double value = 0.0;
        std::int64_t number = 0;
    };

    /// The instrument's number of a status; 0 also stands for every number that is not listed.
    enum class Status : std::uint32_t {
        Status0 = 0,
        Status1,
        Status2,
        Status3,
        Status4,
        Status5,
        Status6,
        Status7,
        Status8,
        Status9,
    };

    /// Told of the stored terms on the *SDK's notification thread*, while the list of observers is locked:
    /// it must not add or remove observers of the same control.
    class Observer
    {
    public:
        virtual ~Observer() = default;

        virtual void onTermsNotice() = 0;
        virtual void onTermsValue(unsigned int value) = 0;
        virtual void onTermsSecondNotice() = 0;
        virtual void onTermsStatus(Status status) = 0;
    };

    virtual ~ISystemTermsControl() = default;

    /// The stored records in the instrument's order; empty when the control is absent.
    virtual std::vector<TermsRecord> termsRecords() = 0;

    /// Stores `terms`, with or without a list of records. The time goes to the instrument in whole seconds,
    /// the number of a record in its low 32 bits, everything else unchanged. Does nothing when the control
    /// is absent; the form with records does nothing without records either.
    TOV_OVERLOADS_IN_SLOT_ORDER(virtual void writeSystemTerms(QDateTime time, double parameter,
                                                              std::vector<TermsRecord> records,
                                                              const vna::ErrorTerms& terms) = 0,
                                virtual void writeSystemTerms(QDateTime time, double parameter,
                                                              const vna::ErrorTerms& terms) = 0);

    /// A flag of the stored terms; false when the control is absent.
    virtual bool systemTermsFlag() = 0;

    /// Appends `observer`, which is not owned and is told once for each time it was added. Works while the
    /// control is absent too.
    virtual void addObserver(Observer* observer) = 0;

    /// Removes every entry of `observer`; waits for a notification that is being delivered.
    virtual void removeObserver(Observer* observer) = 0;
};

} // namespace tov::devices::service
