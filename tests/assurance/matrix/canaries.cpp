#include "canaries.h"

#include "operations/operations.h"
#include "operations/row.h"
#include "testing/fakeloleakagecontrol.h"
#include "testing/fakememoryserialnumbercontrol.h"

#include <atomic>
#include <memory>
#include <system_error>
#include <utility>

namespace tov::testing {

namespace {

using sdk::service::ILoLeakageControl;
using sdk::service::IMemorySerialNumberControl;

/// Breaks the contract in the way that `fault` names.
template <typename SdkIface>
class Broken
{
public:
    explicit Broken(devices::ReacquiringControl<SdkIface> control)
        : m_control(std::move(control))
    {
    }

    bool callsTwice()
    {
        const auto locked = m_control.lock();
        return locked && locked->isEnabled() && locked->isEnabled();
    }
    bool keepsTheControl()
    {
        m_kept = m_control.lock();
        return m_kept && m_kept->isEnabled();
    }
    bool swallowsWhatIsThrown()
    try {
        const auto locked = m_control.lock();
        return locked && locked->isEnabled();
    } catch (...) {
        return false;
    }
    bool staysWithTheFirstControl()
    {
        if (!m_first)
            m_first = m_control.lock().control;
        const auto locked = m_control.lock();
        return locked && locked.control == m_first && locked->isEnabled();
    }
    bool doesNotWait()
    {
        const auto succeeded = std::make_shared<std::atomic<bool>>(false); // the answer may come when this has ended
        if (const auto locked = m_control.lock())
            locked->writeSerialNumber(1, [succeeded](std::error_code error) { *succeeded = !error; });
        return *succeeded;
    }

private:
    using Locked = typename devices::ReacquiringControl<SdkIface>::Locked;

    const devices::ReacquiringControl<SdkIface> m_control;
    Locked m_kept;
    SdkIface* m_first = nullptr;
};

Operation broken(bool (Broken<ILoLeakageControl>::*operation)())
{
    using Adapter = Broken<ILoLeakageControl>;
    return operations<Adapter, ILoLeakageControl, FakeLoLeakageControl>(
               {readsBy<Adapter>("isEnabled", operation, false, SdkAnswers{true}, true)})
        .front();
}

Operation impatient()
{
    using Adapter = Broken<IMemorySerialNumberControl>;
    return operations<Adapter, IMemorySerialNumberControl, FakeMemorySerialNumberControl>(
               {requests<Adapter>(
                   "write", "writeSerialNumber(1)", {}, "done", Tells::False,
                   [](Adapter& adapter) -> std::string { return adapter.doesNotWait() ? "done" : "failed"; })})
        .front();
}

Operation changed(std::string Operation::* expectation)
{
    Operation row = loLeakageOperations().front();
    row.*expectation = "something else";
    return row;
}

} // namespace

std::vector<Canary> canaries()
{
    using Adapter = Broken<ILoLeakageControl>;
    return {
        {"a row whose result is wrong", changed(&Operation::whenPresent)},
        {"a row whose default is wrong", changed(&Operation::whenAbsent)},
        {"an operation that calls the SDK twice", broken(&Adapter::callsTwice)},
        {"an operation that keeps the control", broken(&Adapter::keepsTheControl)},
        {"an operation that swallows what is thrown", broken(&Adapter::swallowsWhatIsThrown)},
        {"an operation that stays with the first control", broken(&Adapter::staysWithTheFirstControl)},
        {"an operation that does not wait for its answer", impatient()},
    };
}

} // namespace tov::testing
