// Instruments each of which breaks one rule, to see that it is noticed.

#include "devices/controls.h"
#include "host/providers.h"
#include "provider/iprovider.h"
#include "tests/conformance/mutants/mutantcontrols.h"

#include <QObject>

#include <map>

namespace tov::testing {

namespace controls = devices::controls;
using provider::Result;

class MutantInstrument final : public sdk::IVna
{
public:
    MutantInstrument(std::shared_ptr<sdk::IVna> inner, std::shared_ptr<Means> means)
        : m_inner(std::move(inner))
        , m_means(std::move(means))
    {
    }

    std::shared_ptr<void> findControl(sdk::Key key) override
    {
        const Broken& broken = m_means->broken;
        const auto inner = m_inner->findControl(key);
        const std::lock_guard guard(m_mutex);
        if (!inner) {
            if (broken.is("LOOKUP-3"))
                throw std::out_of_range("no such control");
            if (broken.is("LOOKUP-4"))
                std::this_thread::sleep_for(std::chrono::milliseconds(5));
            const auto old = m_offered.find(key.value);
            return broken.is("LOOKUP-2") && old != m_offered.end() ? old->second : nullptr;
        }
        auto& offered = m_offered[key.value];
        if (!offered)
            offered = wrapped(key, inner);
        return offered;
    }

    // What was made of the controls, which go. Those that break the rule stay.
    void forget()
    {
        std::map<std::uint64_t, std::shared_ptr<void>> gone;
        const std::lock_guard guard(m_mutex);
        if (!m_means->broken.is("LIFE-3") && !m_means->broken.is("LOOKUP-2"))
            gone.swap(m_offered);
    }

    std::shared_ptr<MutantSerialNumber> serialNumber()
    {
        const auto found = std::static_pointer_cast<sdk::service::IMemorySerialNumberControl>(
            findControl(controls::serialNumber.keys.sdk));
        return std::dynamic_pointer_cast<MutantSerialNumber>(found);
    }

private:
    template <typename Mutant, typename SdkIface, typename... Types>
    std::shared_ptr<SdkIface> mutant(const devices::ControlKind<SdkIface, Types...>& /*kind*/,
                                     const std::shared_ptr<void>& inner) const
    {
        return std::make_shared<Mutant>(std::static_pointer_cast<SdkIface>(inner), m_means);
    }

    std::shared_ptr<void> wrapped(sdk::Key key, const std::shared_ptr<void>& inner) const
    {
        if (key == controls::serialNumber.keys.sdk) {
            auto made = mutant<MutantSerialNumber>(controls::serialNumber, inner);
            if (m_means->broken.is("LOOKUP-1"))
                return std::static_pointer_cast<MutantSerialNumber>(made); // to the object, not to its interface
            return made;
        }
        if (key == controls::fileMemory.keys.sdk)
            return mutant<MutantFileMemory>(controls::fileMemory, inner);
        if (key == controls::temperature.keys.sdk)
            return mutant<MutantTemperature>(controls::temperature, inner);
        if (key == controls::calibrationController1.keys.sdk)
            return mutant<MutantCalibrationController>(controls::calibrationController1, inner);
        if (key == controls::ifswCalibration.keys.sdk)
            return mutant<MutantIfswCalibration>(controls::ifswCalibration, inner);
        return inner;
    }

    const std::shared_ptr<sdk::IVna> m_inner;
    const std::shared_ptr<Means> m_means;
    std::mutex m_mutex; // guards all below
    std::map<std::uint64_t, std::shared_ptr<void>> m_offered;
};

class MutantConnection final : public provider::IConnection,
                               public provider::ITestHooks,
                               private provider::IControlsListener
{
public:
    MutantConnection(std::unique_ptr<provider::IConnection> inner, std::shared_ptr<Means> means)
        : m_means(std::move(means))
        , m_inner(std::move(inner))
        , m_instrument(std::make_shared<MutantInstrument>(m_inner->instrument(), m_means))
    {
        m_inner->setListener(this);
    }
    ~MutantConnection() override
    {
        m_inner->setListener(nullptr);
        m_instrument->forget();
    }

    std::shared_ptr<sdk::IVna> instrument() override
    {
        if (m_means->broken.is("LIFE-1"))
            return {std::shared_ptr<sdk::IVna>(), m_instrument.get()}; // which owns nothing
        return m_instrument;
    }

    void setListener(provider::IControlsListener* listener) override
    {
        const std::lock_guard guard(m_mutex);
        m_listener = listener;
    }

    ITestHooks* testHooks() override { return this; }

    std::vector<Ability> abilities() const override { return m_inner->testHooks()->abilities(); }
    Result<void> releaseControls() override { return m_inner->testHooks()->releaseControls(); }
    Result<void> offerControls() override { return m_inner->testHooks()->offerControls(); }
    Result<void> passTime(std::chrono::milliseconds time) override { return m_inner->testHooks()->passTime(time); }
    Result<void> waitUntilQuiet() override { return m_inner->testHooks()->waitUntilQuiet(); }

    Result<void> notify(sdk::Key control) override
    {
        if (control == controls::serialNumber.keys.sdk && m_means->broken.is("OBSERVER-8"))
            if (const auto serialNumber = m_instrument->serialNumber())
                serialNumber->tell();
        return m_inner->testHooks()->notify(control);
    }

    Result<void> setAnswer(sdk::Key control, const QString& operation, Answer answer) override
    {
        if (control != controls::serialNumber.keys.sdk || operation != "addObserver")
            return m_inner->testHooks()->setAnswer(control, operation, answer);
        m_means->addObserverThrows = answer == Answer::Throwing;
        return {};
    }

private:
    void onControlsAboutToBeReleased(std::shared_ptr<void> hold) override
    {
        const std::lock_guard guard(m_mutex);
        const std::shared_ptr<void> mine(nullptr,
                                         [hold = std::move(hold), instrument = m_instrument](void* /*none*/) mutable {
                                             instrument->forget();
                                             hold.reset();
                                         });
        if (m_listener != nullptr)
            m_listener->onControlsAboutToBeReleased(mine);
    }
    void onControlsOffered() override
    {
        const std::lock_guard guard(m_mutex);
        if (m_listener != nullptr)
            m_listener->onControlsOffered();
    }

    const std::shared_ptr<Means> m_means;
    const std::unique_ptr<provider::IConnection> m_inner;
    const std::shared_ptr<MutantInstrument> m_instrument;
    std::recursive_mutex m_mutex; // guards m_listener, also while it is told
    provider::IControlsListener* m_listener = nullptr;
};

class MutantProvider final : public QObject, public provider::IProvider
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID DEVICESSERVICE_PROVIDER_IID FILE "mutants.json")
    Q_INTERFACES(tov::provider::IProvider)

public:
    Result<std::vector<provider::InstrumentDescription>> instruments() override
    {
        return std::vector<provider::InstrumentDescription>{
            {.id = "mutant", .model = "mutant", .serialNumber = {}, .description = "A simulated one, altered"}};
    }

    Result<std::unique_ptr<provider::IConnection>> open(const QString& /*id*/, const QVariantMap& options) override
    {
        const auto simulated = host::chooseProvider("simulated:answers=later,delay=1000");
        if (!simulated)
            return std::unexpected(simulated.error());
        auto opened = host::openInstrument(*simulated);
        if (!opened)
            return std::unexpected(opened.error());
        const auto means = std::make_shared<Means>(Broken(options["breaks"].toString().toStdString()));
        means->tellsInside = options["tells-inside"].toBool();
        means->late = std::chrono::milliseconds(options["late"].toInt());
        return std::make_unique<MutantConnection>(std::move(opened->connection), means);
    }
};

} // namespace tov::testing

#include "mutantprovider.moc"
