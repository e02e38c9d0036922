// The last temperatures, which threads read while the instrument notifies, its control goes and comes, and the adapter
// is destroyed.

#include "pausingsdk.h"
#include "service/monitoring/sdktemperaturecontrol.h"

#include <array>
#include <string>
#include <unordered_map>

namespace tov::assurance {

namespace {

using devices::service::SdkTemperatureControl;

/// Every module has the temperature of the instrument, and there are two of them at even degrees and one at others, so
/// a torn reading shows.
class Thermometer final : public sdk::ITemperatureControl
{
public:
    Thermometer()
    {
        for (std::size_t i = 0; i < m_modules.size(); ++i) {
            const auto degrees = static_cast<float>(i + 1);
            m_modules.at(i)["a module"] = degrees;
            if (i % 2 != 0)
                m_modules.at(i)["the other module"] = degrees;
        }
    }

    float temperature() override
    {
        const SdkCall call("calls temperature()", "returns from temperature()");
        return static_cast<float>(degrees());
    }
    const std::unordered_map<std::string, float>& modulesTemperature() override
    {
        const SdkCall call("calls modulesTemperature()", "returns from modulesTemperature()");
        return m_modules.at(m_degrees);
    }
    void addObserver(Observer* observer) override { observers.add(observer); }
    void removeObserver(Observer* observer) override { observers.remove(observer); }

    /// It becomes one degree warmer.
    void warm()
    {
        ++m_degrees;
        observers.notify([](Observer& observer) { observer.onTemperatureChanged(); });
    }

    std::size_t degrees() const { return m_degrees + 1; }

    SdkObservers<Observer> observers;

private:
    std::array<std::unordered_map<std::string, float>, 4> m_modules; // for each number of degrees
    std::size_t m_degrees = 0;
};

enum class Do {
    Read,
    Notify,
    Reconnect, ///< the controls are announced to go, go when nobody uses them, and new ones are announced
    Vanish,    ///< the controls go unannounced
    Destroy,   ///< the owner destroys the adapter
};

class TemperatureScene final : public SceneOf<Do>
{
public:
    explicit TemperatureScene(std::vector<Do> deeds)
        : SceneOf(std::move(deeds))
    {
        m_offers.offer();
        m_temperatures = std::make_unique<SdkTemperatureControl>(m_offers.reached<sdk::ITemperatureControl>());
        m_asReceiversKnowIt = m_temperatures.get();
        QObject::connect(m_temperatures.get(), &SdkTemperatureControl::temperaturesChanged, [this] { hear(); });
    }

    void look() override { m_offers.expectObserversAlive(); }

    void lookAtTheEnd() override
    {
        if (m_temperatures) {
            if (!m_offers.now) {
                m_offers.offer();
                m_temperatures->onControlsAvailable();
            }
            expect(m_offers.now->observers.all().size() == 1, "the adapter is not registered once");
            const int heard = m_heard;
            m_offers.now->warm();
            expect(m_heard == heard + 1, "a notification is not heard once");
            const auto there = static_cast<double>(m_offers.now->degrees());
            expect(read() == there && m_temperatures->temperature() == there,
                   "the last temperature is not the instrument's");
            destroy();
        }
        if (m_offers.now)
            expect(m_offers.now->observers.all().empty(), "a destroyed adapter is still registered");
        m_offers.end();
    }

private:
    void hear()
    {
        ++m_heard;
        pause("tells a receiver");
        expect(!m_destroyed, "a receiver is told of an adapter that is gone");
        read();
    }

    // Gives the temperature that all the modules have.
    double read() const
    {
        std::vector<SdkTemperatureControl::ModuleTemperature> modules;
        {
            const PausesAtAllocations pauses;
            modules = m_asReceiversKnowIt->modulesTemperature();
        }
        expect(!modules.empty() && modules[0].temperature >= 1.0 && modules[0].name == QLatin1String("a module")
                   && modules.size() == 2 - static_cast<std::size_t>(modules[0].temperature) % 2
                   && modules.back().temperature == modules[0].temperature,
               "a reading is torn");
        return modules[0].temperature;
    }

    void destroy()
    {
        m_temperatures.reset();
        m_destroyed = true;
    }

    void perform(Do deed) override
    {
        switch (deed) {
        case Do::Read:
            read();
            expect(m_temperatures->temperature() >= 1.0, "a temperature that was read is lost");
            return;
        case Do::Notify:
            if (const auto control = m_offers.now) {
                pause("begins to notify");
                control->warm();
            }
            return;
        case Do::Reconnect:
            m_temperatures->onControlsAboutToBeReleased();
            m_offers.replace();
            return m_temperatures->onControlsAvailable();
        case Do::Vanish:
            return m_offers.release();
        case Do::Destroy:
            return destroy();
        }
    }

    Offers<Thermometer> m_offers;
    int m_heard = 0;
    bool m_destroyed = false;
    std::unique_ptr<SdkTemperatureControl> m_temperatures;
    const SdkTemperatureControl* m_asReceiversKnowIt = nullptr; // also while it is destroyed
};

} // namespace

std::vector<Scenario> scenarios()
{
    const auto scenario = [](std::string name, int preemptions, const std::vector<Do>& deeds) {
        return Scenario{.name = std::move(name), .preemptions = preemptions, .makeScene = [=] {
                            return std::make_unique<TemperatureScene>(deeds);
                        }};
    };
    return {
        scenario("read while the instrument notifies", 4, {Do::Read, Do::Notify}),
        scenario("read while the controls reconnect", 3, {Do::Read, Do::Reconnect}),
        scenario("the instrument notifies while the controls reconnect", 3, {Do::Notify, Do::Reconnect}),
        scenario("destroyed while the instrument notifies", 4, {Do::Destroy, Do::Notify}),
        scenario("read while the instrument notifies and the controls reconnect", 2,
                 {Do::Read, Do::Notify, Do::Reconnect}),
        scenario("read while the instrument notifies on two threads", 2, {Do::Read, Do::Notify, Do::Notify}),
        scenario("destroyed while the instrument notifies and the controls vanish", 2,
                 {Do::Destroy, Do::Notify, Do::Vanish}),
    };
}

} // namespace tov::assurance
