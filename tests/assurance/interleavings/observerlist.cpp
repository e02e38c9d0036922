// The observers of the memory operations, the serial number and the system terms, which threads add and remove while
// the instrument notifies, its control goes and comes, and the adapter is destroyed.

#include "ear.h"
#include "pausingsdk.h"
#include "service/memory/sdkmemoryoperationscontrol.h"
#include "service/memory/sdkserialnumbercontrol.h"
#include "service/memory/sdksystemtermscontrol.h"

namespace tov::assurance {

namespace {

/// What the instrument's side of the three have in common.
template <typename SdkIface, typename SdkObserver>
class Notifying : public SdkIface
{
public:
    void addObserver(SdkObserver* observer) override { observers.add(observer); }
    void removeObserver(SdkObserver* observer) override { observers.remove(observer); }

    SdkObservers<SdkObserver> observers;
};

struct SerialNumber
{
    using Adapter = devices::service::SdkSerialNumberControl;
    using Sdk = sdk::service::IMemorySerialNumberControl;
    using AppObserver = devices::service::ISerialNumberControl::Observer;
    class Control final : public Notifying<Sdk, Sdk::Observer>
    {
        void readSerialNumber(std::function<void(unsigned int, std::error_code)> /*answer*/) override {}
        void writeSerialNumber(unsigned int /*serialNumber*/, std::function<void(std::error_code)> /*answer*/) override
        {
        }
    };
    class Listener : public AppObserver
    {
    public:
        void onSerialNumberEvent(const devices::service::SerialNumberEvent& /*event*/) override { ear.hear(); }

        Ear ear;
    };
    static void notify(Sdk::Observer& observer) { observer.onSerialNumberEvent(1, 2); }
    static constexpr const char* name = "serial number";
};

struct MemoryOperations
{
    using Adapter = devices::service::SdkMemoryOperationsControl;
    using Sdk = sdk::service::IMemoryOperationsControl;
    using AppObserver = devices::service::IMemoryOperationsControl::IObserver;
    class Control final : public Notifying<Sdk, Sdk::IObserver>
    {
        void read(std::function<void(std::vector<std::byte>, std::error_code)> /*answer*/) override {}
        void write(std::vector<std::byte> /*data*/, std::function<void(std::error_code)> /*answer*/) override {}
        void erase(std::function<void(std::error_code)> /*answer*/) override {}
        void integrityCheck(std::function<void(std::error_code)> /*answer*/) override {}
    };
    class Listener : public AppObserver
    {
        using Event = devices::service::MemoryOperationEvent;

    public:
        void onNotification1(const Event& /*event*/) override { ear.hear(); }
        void onNotification2(const Event& /*event*/) override { ear.hear(); }
        void onNotification3(const Event& /*event*/) override { ear.hear(); }
        void onNotification4(const Event& /*event*/) override { ear.hear(); }

        Ear ear;
    };
    static void notify(Sdk::IObserver& observer) { observer.onNotification1(1, 2); }
    static constexpr const char* name = "memory operations";
};

struct SystemTerms
{
    using Adapter = devices::service::SdkSystemTermsControl;
    using Sdk = sdk::service::ISystemTermsControl;
    using AppObserver = devices::service::ISystemTermsControl::Observer;
    class Control final : public Notifying<Sdk, Sdk::Observer>
    {
        std::vector<TermsRecord> termsRecords() override { return {}; }
        void writeSystemTerms(long long /*time*/, double /*parameter*/, std::vector<TermsRecord> /*records*/,
                              sdk::corrections::ErrorTerms /*terms*/) override
        {
        }
        void writeSystemTerms(long long /*time*/, double /*parameter*/, sdk::corrections::ErrorTerms /*terms*/) override
        {
        }
        bool systemTermsFlag() override { return false; }
    };
    class Listener : public AppObserver
    {
    public:
        void onTermsNotice() override { ear.hear(); }
        void onTermsValue(unsigned int /*value*/) override { ear.hear(); }
        void onTermsSecondNotice() override { ear.hear(); }
        void onTermsStatus(devices::service::ISystemTermsControl::Status /*status*/) override { ear.hear(); }

        Ear ear;
    };
    static void notify(Sdk::Observer& observer) { observer.onTermsNotice(); }
    static constexpr const char* name = "system terms";
};

enum class Do {
    Add,
    AddOther,
    Remove, ///< of an observer that is there
    RemoveAndAdd,
    Notify,
    Reconnect, ///< the controls are announced to go, go when nobody uses them, and new ones are announced
    Vanish,    ///< the controls go unannounced
    Destroy,   ///< the owner destroys the adapter
};

template <typename Part>
class ListScene final : public SceneOf<Do>
{
    using Control = typename Part::Control;

public:
    explicit ListScene(std::vector<Do> deeds)
        : SceneOf(std::move(deeds))
    {
        m_offers.offer();
        m_adapter = std::make_unique<typename Part::Adapter>(m_offers.template reached<typename Part::Sdk>());
        for (Listener* listener : {&m_first, &m_last})
            add(*listener);
    }

    void look() override { m_offers.expectObserversAlive(); }

    void lookAtTheEnd() override
    {
        if (m_adapter) {
            if (!m_offers.now) {
                m_offers.offer();
                m_adapter->onControlsAvailable();
            }
            expect(m_offers.now->observers.all().size() == 1, "the adapter is not registered once");
            for (Listener* listener : {&m_first, &m_other, &m_last})
                listener->ear.told = 0;
            m_offers.now->observers.notify(Part::notify);
            expect(m_first.ear.told == (doing(Do::Remove) ? 0 : 1), "an observer was lost, or is told again");
            expect(m_other.ear.told == (doing(Do::AddOther) ? 1 : 0), "an observer that was added is not told once");
            expect(m_last.ear.told == (doing(Do::Add) ? 2 : 1), "an observer is not told as often as it was added");
            for (Listener* listener : {&m_first, &m_other, &m_last})
                remove(*listener);
            m_offers.now->observers.notify(Part::notify);
            m_adapter.reset();
        }
        if (m_offers.now)
            expect(m_offers.now->observers.all().empty(), "a destroyed adapter is still registered");
        m_offers.end();
    }

private:
    using Listener = typename Part::Listener;

    void add(Listener& listener)
    {
        listener.ear.beginToAdd();
        m_adapter->addObserver(&listener);
        listener.ear.endToAdd();
    }
    void remove(Listener& listener)
    {
        listener.ear.removeBy([&] { m_adapter->removeObserver(&listener); });
    }

    // Who was there before and is not touched hears of it once.
    void notify()
    {
        const auto control = m_offers.now;
        if (!control)
            return;
        pause("begins to notify");
        const bool hears = !control->observers.all().empty() && !doing(Do::Add) && howManyDo(Do::Notify) == 1;
        const int told = m_last.ear.told;
        control->observers.notify(Part::notify);
        if (hears)
            expect(m_last.ear.told == told + 1, "an observer does not hear a notification once");
    }

    void perform(Do deed) override
    {
        switch (deed) {
        case Do::Add:
            return add(m_last);
        case Do::AddOther:
            return add(m_other);
        case Do::Remove:
            return remove(m_first);
        case Do::RemoveAndAdd:
            remove(m_first);
            return add(m_first);
        case Do::Notify:
            return notify();
        case Do::Reconnect:
            m_adapter->onControlsAboutToBeReleased();
            m_offers.replace();
            return m_adapter->onControlsAvailable();
        case Do::Vanish:
            return m_offers.release();
        case Do::Destroy:
            return m_adapter.reset();
        }
    }

    Offers<Control> m_offers;
    Listener m_first;
    Listener m_other;
    Listener m_last;
    std::unique_ptr<typename Part::Adapter> m_adapter;
};

template <typename Part>
void addScenarios(std::vector<Scenario>& all, int preemptionsOfTwo, int preemptionsOfThree)
{
    const auto add = [&](const char* name, const std::vector<Do>& deeds) {
        all.push_back({.name = std::string(Part::name) + ": " + name,
                       .preemptions = deeds.size() < 3 ? preemptionsOfTwo : preemptionsOfThree,
                       .makeScene = [=] { return std::make_unique<ListScene<Part>>(deeds); }});
    };
    add("removed while the instrument notifies", {Do::Remove, Do::Notify});
    add("removed and added while the instrument notifies", {Do::RemoveAndAdd, Do::Notify});
    add("the instrument notifies while the controls reconnect", {Do::Notify, Do::Reconnect});
    add("destroyed while the instrument notifies", {Do::Destroy, Do::Notify});
    add("one comes and one goes while the instrument notifies", {Do::AddOther, Do::Remove, Do::Notify});
    add("added again and another goes while the instrument notifies", {Do::Add, Do::Remove, Do::Notify});
    add("one goes while the instrument notifies on two threads", {Do::Remove, Do::Notify, Do::Notify});
    add("one goes while the instrument notifies and the controls reconnect", {Do::Remove, Do::Notify, Do::Reconnect});
    add("one comes while the instrument notifies and the controls reconnect",
        {Do::AddOther, Do::Notify, Do::Reconnect});
    add("destroyed while the instrument notifies and the controls vanish", {Do::Destroy, Do::Notify, Do::Vanish});
}

} // namespace

std::vector<Scenario> scenarios()
{
    std::vector<Scenario> all;
    addScenarios<SerialNumber>(all, 5, 3);
    addScenarios<MemoryOperations>(all, 4, 2);
    addScenarios<SystemTerms>(all, 4, 2);
    return all;
}

} // namespace tov::assurance
