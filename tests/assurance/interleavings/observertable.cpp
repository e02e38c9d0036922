// The observers of a calibration, which threads add and remove while its control is announced to go and to come, goes
// and comes, and notifies.

#include "calibrations.h"
#include "ear.h"

namespace tov::assurance {

namespace {

enum class Do {
    Add,
    AddOther,
    Remove,
    RemoveOther,
    Detach,           ///< the controls are announced to go, but stay
    Attach,           ///< the controls are announced to be there
    Reconnect,        ///< the controls are announced to go, go when nobody uses them, and new ones are announced
    Replace,          ///< the same, without waiting for those who use the old ones
    Notify,           ///< the instrument notifies
    NotifyAndRemove,  ///< an observer removes itself when it is told
    AddAndDetach,     ///< the instrument has the controls announced to go inside its registration
    AddAndRemove,     ///< the observer is removed inside its registration
    DetachAndAttach,  ///< the controls are announced to be there inside the removal of a registration
    AddAndNotify,     ///< the instrument notifies inside its registration
    RemoveAndNotify,  ///< the instrument notifies others inside the removal of a registration
    RemoveAndAddAnew, ///< the observer is added again inside the removal of its registration
};

template <typename Calibration>
class TableScene final : public SceneOf<Do>
{
    using Adapter = typename Calibration::Adapter;
    using Sdk = typename Calibration::Sdk;
    using Control = typename Calibration::Control;

public:
    TableScene(std::vector<Do> deeds, bool addedBefore)
        : SceneOf(std::move(deeds))
        , m_addedBefore(addedBefore)
    {
        m_offers.offer();
        m_adapter = std::make_unique<Adapter>(m_offers.template reached<Sdk>());
        if (m_addedBefore)
            add(m_first);
        m_first.removesItself = doing(Do::NotifyAndRemove);
    }

    void look() override { m_offers.expectObserversAlive(); }

    void lookAtTheEnd() override
    {
        m_first.removesItself = false;
        // Who comes between the announcement that the controls go and their going is registered with those that go, and
        // comes back when they go and come again.
        if (m_heldOver || (m_offers.wentInUse && (adding() || doing(Do::AddOther))))
            reconnect();
        const std::size_t atRest = registered();
        m_adapter->onControlsAvailable();
        const std::size_t known = registered();
        if (!doing(Do::Detach) && !doing(Do::AddAndDetach))
            expect(atRest == known, "the instrument does not have the observers of the table");
        m_adapter->onControlsAboutToBeReleased();
        expect(registered() == 0, "the instrument has an observer that the table does not know");
        m_adapter->onControlsAvailable();
        expect(registered() == known, "the table has lost an observer");
        for (Listener* listener : {&m_first, &m_other})
            listener->ear.told = 0;
        m_offers.now->observers.notify([](auto& observer) { observer.onFirstEvent(); });
        expectTold(m_first, m_addedBefore || adding(), removing());
        expectTold(m_other, doing(Do::AddOther), doing(Do::RemoveOther));
        for (Listener* listener : {&m_first, &m_other})
            remove(*listener);
        expect(registered() == 0, "an observer was not removed");
        m_adapter.reset();
        m_offers.end();
    }

private:
    class Listener final : public Adapter::Observer
    {
    public:
        explicit Listener(TableScene& scene)
            : m_scene(scene)
        {
        }

        void onFirstEvent() override
        {
            if (removesItself)
                ear.hear([this] { m_scene.remove(*this); });
            else
                ear.hear();
        }
        void onSecondEvent() override {}
        void onThirdEvent() override {}
        void onStateChanged(devices::service::CalibrationState /*state*/) override {}

        Ear ear;
        bool removesItself = false;
        bool added = false;

    private:
        TableScene& m_scene;
    };

    /// While something changes that decides who hears what.
    class Change
    {
    public:
        explicit Change(TableScene& scene)
            : m_scene(scene)
        {
            ++m_scene.m_changing;
            ++m_scene.m_changes;
        }
        Change(const Change&) = delete;
        Change& operator=(const Change&) = delete;
        ~Change() { --m_scene.m_changing; }

    private:
        TableScene& m_scene;
    };

    bool adding() const
    {
        return doing(Do::Add) || doing(Do::AddAndNotify) || doing(Do::AddAndDetach) || doing(Do::AddAndRemove)
               || doing(Do::RemoveAndAddAnew);
    }
    bool removing() const
    {
        return doing(Do::Remove) || doing(Do::RemoveAndNotify) || doing(Do::AddAndRemove) || doing(Do::RemoveAndAddAnew)
               || doing(Do::NotifyAndRemove);
    }
    // Whether the controls are announced by one thread only, so that it is known when they are.
    bool isAnnouncedInOrder() const
    {
        return !doing(Do::Detach) && !doing(Do::AddAndDetach) && !doing(Do::DetachAndAttach) && !doing(Do::Replace);
    }

    static void expectTold(const Listener& listener, bool added, bool removed)
    {
        expect(listener.ear.told <= 1, "an observer is told twice");
        if (!removed)
            expect(listener.ear.told == (added ? 1 : 0), "an observer that was added is not told");
        else if (!added)
            expect(listener.ear.told == 0, "an observer that was removed is told");
    }

    std::size_t registered() const { return m_offers.now->observers.all().size(); }

    void add(Listener& listener)
    {
        const Change change(*this);
        listener.ear.beginToAdd();
        m_adapter->addObserver(&listener);
        listener.ear.endToAdd();
        listener.added = true;
    }
    void remove(Listener& listener)
    {
        const Change change(*this);
        listener.ear.removeBy([&] { m_adapter->removeObserver(&listener); });
    }
    void detach()
    {
        const Change change(*this);
        m_adapter->onControlsAboutToBeReleased();
    }
    void attach()
    {
        const Change change(*this);
        m_adapter->onControlsAvailable();
    }
    void reconnect()
    {
        const Change change(*this);
        detach();
        m_offers.replace();
        attach();
    }
    void replace()
    {
        detach();
        m_offers.release();
        m_heldOver = !m_offers.living().empty();
        pause("has let the control go");
        m_offers.offer();
        attach();
    }

    // Who is registered when the notification begins hears of it once, unless something changes meanwhile.
    void notify()
    {
        const auto control = m_offers.now;
        if (!control)
            return;
        pause("begins to notify");
        const bool knows = m_changing == 0 && isAnnouncedInOrder() && !m_offers.wentInUse;
        const bool hears = m_first.added && m_first.ear.removals == 0;
        const int changes = m_changes;
        const int told = m_first.ear.told;
        if (control == m_offers.now)
            control->observers.notify([](auto& observer) { observer.onFirstEvent(); });
        if (knows && hears && changes == m_changes)
            expect(m_first.ear.told == told + 1, "an observer that is registered does not hear a notification once");
    }

    // Does `inner` inside the first call to the instrument of `outer`, if it makes one.
    void nest(auto outer, std::function<void()> inner)
    {
        Control::s_afterwards = std::move(inner);
        outer();
        Control::s_afterwards = nullptr;
    }

    void perform(Do deed) override
    {
        switch (deed) {
        case Do::Add:
            return add(m_first);
        case Do::AddOther:
            return add(m_other);
        case Do::Remove:
            return remove(m_first);
        case Do::RemoveOther:
            return remove(m_other);
        case Do::Detach:
            return detach();
        case Do::Attach:
            return attach();
        case Do::Reconnect:
            return reconnect();
        case Do::Replace:
            return replace();
        case Do::Notify:
        case Do::NotifyAndRemove:
            return notify();
        case Do::AddAndDetach:
            return nest([this] { add(m_first); }, [this] { detach(); });
        case Do::AddAndRemove:
            return nest([this] { add(m_first); }, [this] { remove(m_first); });
        case Do::AddAndNotify:
            return nest([this] { add(m_first); }, [this] { notify(); });
        case Do::RemoveAndNotify:
            return nest([this] { remove(m_first); }, [this] { notify(); });
        case Do::DetachAndAttach:
            return nest([this] { detach(); }, [this] { attach(); });
        case Do::RemoveAndAddAnew:
            return nest([this] { remove(m_first); }, [this] { add(m_first); });
        }
    }

    const bool m_addedBefore; // the first observer is there already
    Offers<Control> m_offers;
    bool m_heldOver = false; // a call that was under way kept the old control when it went
    int m_changing = 0;
    int m_changes = 0;
    Listener m_first{*this};
    Listener m_other{*this};
    std::unique_ptr<Adapter> m_adapter;
};

template <typename Calibration>
void addScenarios(std::vector<Scenario>& all, int preemptionsOfTwo, int preemptionsOfThree)
{
    const auto add = [&](const char* name, const std::vector<Do>& deeds) {
        for (const bool addedBefore : {false, true}) {
            all.push_back({.name = std::string(Calibration::name) + ": " + name
                                   + (addedBefore ? ", the observer being there" : ""),
                           .preemptions = deeds.size() < 3 ? preemptionsOfTwo : preemptionsOfThree,
                           .makeScene = [=] { return std::make_unique<TableScene<Calibration>>(deeds, addedBefore); }});
        }
    };
    add("added and removed", {Do::Add, Do::Remove});
    add("added while the controls reconnect", {Do::Add, Do::Reconnect});
    add("removed while the controls reconnect", {Do::Remove, Do::Reconnect});
    add("removed while the controls are replaced", {Do::Remove, Do::Replace});
    add("added while the controls are replaced", {Do::Add, Do::Replace});
    add("added, and released inside the registration, while they are announced", {Do::AddAndDetach, Do::Attach});
    add("added, and removed inside the registration, while the controls reconnect", {Do::AddAndRemove, Do::Reconnect});
    add("removed, and added inside the removal, while the controls reconnect", {Do::RemoveAndAddAnew, Do::Reconnect});
    add("removed, and added inside the removal, while added", {Do::RemoveAndAddAnew, Do::Add});
    add("released, and announced inside the removal, while added", {Do::DetachAndAttach, Do::Add});
    add("released, and announced inside the removal, while removed", {Do::DetachAndAttach, Do::Remove});
    add("added, and told inside the registration, while removed", {Do::AddAndNotify, Do::Remove});
    add("added, and told inside the registration, while the controls reconnect", {Do::AddAndNotify, Do::Reconnect});
    add("removed, and others told inside the removal, while added", {Do::RemoveAndNotify, Do::Add});
    add("removes itself while the controls reconnect", {Do::NotifyAndRemove, Do::Reconnect});
    add("added twice and removed", {Do::Add, Do::Add, Do::Remove});
    add("added and removed while the controls reconnect", {Do::Add, Do::Remove, Do::Reconnect});
    add("added and removed while the controls are replaced", {Do::Add, Do::Remove, Do::Replace});
    add("added and removed while the instrument notifies", {Do::Add, Do::Remove, Do::Notify});
    add("removed by two while the instrument notifies", {Do::Remove, Do::Remove, Do::Notify});
    add("added while the controls reconnect and the instrument notifies", {Do::Add, Do::Reconnect, Do::Notify});
    add("removed while the controls reconnect and the instrument notifies", {Do::Remove, Do::Reconnect, Do::Notify});
    add("added while two announce the controls", {Do::Add, Do::Detach, Do::Attach});
    add("removed while two announce the controls", {Do::Remove, Do::Detach, Do::Attach});
    add("removed while another comes and the controls reconnect", {Do::Remove, Do::AddOther, Do::Reconnect});
    add("another comes and goes while the controls reconnect", {Do::AddOther, Do::RemoveOther, Do::Reconnect});
    add("removes itself while another comes and the controls reconnect",
        {Do::NotifyAndRemove, Do::AddOther, Do::Reconnect});
    add("removes itself while removed and the controls reconnect", {Do::NotifyAndRemove, Do::Remove, Do::Reconnect});
}

} // namespace

std::vector<Scenario> scenarios()
{
    std::vector<Scenario> all;
    addScenarios<BareTable>(all, 3, 2);
    addScenarios<Ifsw>(all, 3, 2);
    addScenarios<FactoryPower>(all, 2, 1);
    return all;
}

} // namespace tov::assurance
