#include "attempt.h"
#include "countingobserver.h"
#include "devices/controlregistry.h"
#include "devices/controls.h"
#include "devices/icontrollifecycleobserver.h"
#include "devices/makecreatefunction.h"
#include "scenario.h"
#include "service/calibration/sdkcalibrationcontrolhandle.h"
#include "service/memory/ifilememorycontrol.h"
#include "service/memory/ipotentiometerscontrol.h"
#include "service/memory/iusbidcontrol.h"
#include "service/memory/sdkserialnumbercontrol.h"
#include "service/monitoring/sdktemperaturecontrol.h"
#include "service/servicecontrols.h"
#include "service/tuning/sdkkz515powercontrol.h"
#include "service/tuning/sdkkz515synthesiscontrol.h"
#include "service/tuning/sdkloleakagecontrol.h"
#include "service/tuning/sdkulkpowercontrol.h"
#include "service/tuning/sdkulksynthesiscontrol.h"
#include "service/tuning/sdkwn0807powercontrol.h"
#include "service/tuning/sdkwn0807synthesiscontrol.h"
#include "service/tuning/sdkyqsynthesiscontrol.h"
#include "testing/fakecalibrationcontrol.h"
#include "testing/fakecalibrationcontroller.h"
#include "testing/fakefactorycorrectioncontrol.h"
#include "testing/fakefilememorycontrol.h"
#include "testing/fakeinstrument.h"
#include "testing/fakekz515powercontrol.h"
#include "testing/fakekz515synthesiscontrol.h"
#include "testing/fakeloleakagecontrol.h"
#include "testing/fakememoryoperationscontrol.h"
#include "testing/fakememoryserialnumbercontrol.h"
#include "testing/fakememoryusbidcontrol.h"
#include "testing/fakepotentiometerscontrol.h"
#include "testing/fakesystemtermscontrol.h"
#include "testing/faketemperaturecontrol.h"
#include "testing/fakeulkpowercontrol.h"
#include "testing/fakeulksynthesiscontrol.h"
#include "testing/fakewn0807powermodulecontrol.h"
#include "testing/fakewn0807synthesiscontrol.h"
#include "testing/fakeyqsynthesiscontrol.h"

#include <any>
#include <functional>
#include <memory>
#include <new>
#include <string>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

namespace tov::testing {

namespace {

/// The first of `Fakes` that is a control of the SDK's interface.
template <typename SdkIface, typename... Fakes>
struct FirstThatIs;

template <typename SdkIface, typename Fake, typename... Others>
struct FirstThatIs<SdkIface, Fake, Others...>
    : std::conditional_t<std::is_base_of_v<SdkIface, Fake>, std::type_identity<Fake>, FirstThatIs<SdkIface, Others...>>
{
};

template <typename SdkIface>
using FakeOf =
    typename FirstThatIs<SdkIface, FakeFileMemoryControl, FakePotentiometersControl, FakeMemoryUsbIdControl,
                         FakeMemorySerialNumberControl, FakeMemoryOperationsControl, FakeUlkSynthesisControl,
                         FakeUlkPowerControl, FakeWn0807SynthesisControl, FakeWn0807PowerModuleControl,
                         FakeLoLeakageControl, FakeKz515PowerControl, FakeKz515SynthesisControl, FakeYqSynthesisControl,
                         FakeSystemTermsControl, FakeYqIfswCalibrationControl, FakeYqFactoryPowerCalibrationControl,
                         FakeFactoryCorrectionControl, FakeTemperatureControl, FakeCalibrationController>::type;

// One notification of each kind of observer of the SDK's.
void notify(sdk::service::IMemorySerialNumberControl::Observer& observer)
{
    observer.onSerialNumberEvent(1, 2);
}
void notify(sdk::service::IMemoryOperationsControl::IObserver& observer)
{
    observer.onNotification1(1, 2);
}
void notify(sdk::service::ISystemTermsControl::Observer& observer)
{
    observer.onTermsNotice();
}
void notify(sdk::IFactoryCorrectionControl::IObserver& observer)
{
    observer.onCorrectionsChanged();
}
void notify(sdk::ITemperatureControl::Observer& observer)
{
    observer.onTemperatureChanged();
}
template <typename Observer>
    requires requires(Observer& observer) { observer.onFirstEvent(); }
void notify(Observer& observer)
{
    observer.onFirstEvent();
}

using Create = std::function<std::any(sdk::IVna*)>;

/// An adapter's life with an instrument that takes its control away and offers another one.
template <typename SdkIface, typename Exposed>
class Life
{
    using Fake = FakeOf<SdkIface>;

    // The SDK notifies the adapter, or a part of it.
    static constexpr bool observes = requires(Fake& fake) { notify(*fake.observers().front()); };
    static constexpr bool hasObservers = requires { sizeof(CountingObserver<Exposed>); };

public:
    Life(sdk::Key key, Create create, Complaints& complaints)
        : m_key(key)
        , m_create(std::move(create))
        , m_complaints(complaints)
    {
        m_instrument.duringLookup = [] { sdkIsCalled(); };
        offer();
    }

    void run()
    {
        create();
        if constexpr (hasObservers) {
            add(m_first);
            add(m_second);
            expectRegistrations(2);
        }
        tell(2);
        if (auto* const lifecycle = lifecycleOfAdapter()) {
            attempt([&] { lifecycle->onControlsAboutToBeReleased(); });
            expectRegistrations(0);
            release();
            if constexpr (hasObservers)
                add(m_third);
            offer();
            attempt([&] { lifecycle->onControlsAvailable(); },
                    [&] {
                        lifecycle->onControlsAboutToBeReleased(); // ends what came about before it went wrong
                        lifecycle->onControlsAvailable();
                    });
            expectRegistrations(3);
            tell(3);
        } else {
            release();
            offer();
        }
        if constexpr (hasObservers) {
            remove(m_first);
            expectRegistrations(2);
            tell(2);
            remove(m_second);
            remove(m_third);
        }
        m_adapter.reset();
        if constexpr (observes)
            m_complaints.expect(m_fake->observers().empty(), "nobody is registered with the SDK at the end");
        release();
    }

private:
    // The application's observers each have a registration with the SDK.
    static constexpr bool registersEach =
        hasObservers && std::is_base_of_v<devices::IControlLifecycleObserver, Exposed>;

    void create()
    {
        attempt([&] { m_adapter = std::any_cast<std::shared_ptr<Exposed>>(m_create(&m_instrument)); });
        m_complaints.expect(m_adapter != nullptr, "the adapter is created");
    }

    // As the application looks for it.
    devices::IControlLifecycleObserver* lifecycleOfAdapter() const
    {
        if constexpr (std::is_polymorphic_v<Exposed>)
            return dynamic_cast<devices::IControlLifecycleObserver*>(m_adapter.get());
        else
            return nullptr;
    }

    void offer()
    {
        m_fake = std::make_shared<Fake>();
        if constexpr (requires { m_fake->recordsObservers; })
            m_fake->recordsObservers = true;
        if constexpr (requires { m_fake->modules; })
            m_fake->modules = {{"a module with a long name", 1.0F}, {"another module", 2.0F}};
        m_fake->duringCall = [this] {
            if (m_fake->calls().back() != "removeObserver()") // an SDK lets go of an observer without fail
                sdkIsCalled();
        };
        m_instrument.template offer<SdkIface>(m_key, m_fake);
    }

    void release()
    {
        const std::weak_ptr<Fake> released = m_fake;
        m_instrument.release(m_key);
        m_fake.reset();
        m_complaints.expect(released.expired(), "nobody holds the control that is released");
    }

    void add(auto& observer)
    {
        attempt([&] { m_adapter->addObserver(&observer); },
                [&] {
                    m_adapter->removeObserver(&observer); // one that the SDK refused waits for the controls
                    m_adapter->addObserver(&observer);
                });
    }

    void remove(auto& observer)
    {
        attempt([&] { m_adapter->removeObserver(&observer); });
    }

    void expectRegistrations(std::size_t ofTheApplication)
    {
        if constexpr (registersEach)
            m_complaints.expect(m_fake->observers().size() == ofTheApplication,
                                "the SDK has a registration for each observer");
        else if constexpr (observes)
            m_complaints.expect(m_fake->observers().size() == (ofTheApplication > 0 ? 1U : 0U),
                                "the SDK has the adapter's registration");
    }

    // The SDK notifies, and each observer is told once.
    void tell(int observers)
    {
        if constexpr (observes) {
            for (auto* const observer : m_fake->observers())
                attempt([&] { notify(*observer); });
            if constexpr (hasObservers) {
                const int before = m_first.told + m_second.told + m_third.told;
                for (auto* const observer : m_fake->observers())
                    notify(*observer);
                m_complaints.expect(m_first.told + m_second.told + m_third.told == before + observers,
                                    "every observer is told once");
            }
        }
    }

    struct Nobody
    {
    };
    using Observer = typename std::conditional_t<hasObservers, std::type_identity<CountingObserver<Exposed>>,
                                                 std::type_identity<Nobody>>::type;

    const sdk::Key m_key;
    const Create m_create;
    Complaints& m_complaints;
    FakeInstrument m_instrument;
    std::shared_ptr<Fake> m_fake;
    Observer m_first;
    Observer m_second;
    Observer m_third;
    std::shared_ptr<Exposed> m_adapter;
};

using devices::service::SdkSerialNumberControl;

/// Stays registered with the SDK when it has no memory.
class StaysRegistered final : public SdkSerialNumberControl
{
public:
    using SdkSerialNumberControl::SdkSerialNumberControl;

    void onControlsAboutToBeReleased() override
    {
        try {
            ::operator delete(::operator new(1));
        } catch (const std::bad_alloc&) {
            return;
        }
        SdkSerialNumberControl::onControlsAboutToBeReleased();
    }
};

} // namespace

std::vector<Scenario> lifeScenarios()
{
    const auto registry = std::make_shared<devices::ControlRegistry>();
    devices::service::servicecontrols::registrate(registry.get());
    std::vector<Scenario> scenarios;
    const auto add = [&]<typename SdkIface, typename Exposed, typename Adapter>(
                         const devices::ControlKind<SdkIface, Exposed, Adapter>& kind) {
        const Create create = [registry, key = kind.keys.registry](sdk::IVna* instrument) {
            return registry->create(key, instrument);
        };
        scenarios.push_back({std::string(kind.name), [create, key = kind.keys.sdk](Complaints& complaints) {
                                 Life<SdkIface, Exposed>(key, create, complaints).run();
                             }});
    };
    std::apply([&](const auto&... kind) { (add(kind), ...); }, devices::controls::kinds);
    return scenarios;
}

std::vector<Scenario> brokenLifeScenarios()
{
    using devices::service::ISerialNumberControl;
    using sdk::service::IMemorySerialNumberControl;
    const sdk::Key key = devices::controls::serialNumber.keys.sdk;
    const Create create =
        devices::makeCreateFunction<sdk::IVna, IMemorySerialNumberControl, ISerialNumberControl, StaysRegistered>(key);
    return {{"an adapter that stays registered when it has no memory", [key, create](Complaints& complaints) {
                 Life<IMemorySerialNumberControl, ISerialNumberControl>(key, create, complaints).run();
             }}};
}

} // namespace tov::testing
