#pragma once

#include "sdk/itemperaturecontrol.h"
#include "sdk/service/calibrations/icalibrationcontroller.h"
#include "sdk/service/ifilememorycontrol.h"
#include "sdk/service/imemoryserialnumbercontrol.h"
#include "sdk/service/iyqifswcalibrationcontrol.h"
#include "tests/conformance/mutants/later.h"
#include "tests/conformance/mutants/registrations.h"

#include <QCoreApplication>
#include <QMetaObject>
#include <QThread>

#include <atomic>
#include <chrono>
#include <functional>
#include <memory>
#include <mutex>
#include <new>
#include <stdexcept>
#include <string>
#include <system_error>
#include <unordered_map>
#include <utility>
#include <vector>

namespace tov::testing {

/// Stands before the interface in an object, so that pointers to the two differ.
class Forerunner
{
public:
    Forerunner() = default;
    Forerunner(const Forerunner&) = delete;
    Forerunner& operator=(const Forerunner&) = delete;
    virtual ~Forerunner() = default;
};

/// What the mutants of one connection share.
struct Means
{
    Broken broken;
    bool tellsInside = false; ///< observers are told inside `addObserver()`
    std::chrono::milliseconds late{0};
    std::atomic<bool> addObserverThrows = false;
    Later later;
};

/// The serial number of another instrument, with observers of its own, who are told on a thread of its own.
class MutantSerialNumber final : public Forerunner,
                                 public sdk::service::IMemorySerialNumberControl,
                                 private sdk::service::IMemorySerialNumberControl::Observer
{
public:
    using Observer = sdk::service::IMemorySerialNumberControl::Observer;
    using Answer = std::function<void(unsigned int, std::error_code)>;

    MutantSerialNumber(std::shared_ptr<sdk::service::IMemorySerialNumberControl> inner, std::shared_ptr<Means> means)
        : m_inner(std::move(inner))
        , m_means(std::move(means))
        , m_state(std::make_shared<State>(m_means->broken))
    {
        m_inner->addObserver(this);
    }
    ~MutantSerialNumber() override
    {
        m_inner->removeObserver(this);
        m_state->registrations.close();
    }

    void readSerialNumber(Answer answer) override
    {
        {
            const auto lock = m_state->lockIf(m_means->broken.is("OBSERVER-9"));
        }
        if (m_state->reading++ > 0 && m_means->broken.is("OPS-1")) {
            --m_state->reading;
            return answer(0, std::make_error_code(std::errc::device_or_resource_busy));
        }
        try {
            m_inner->readSerialNumber(mutated(answer));
        } catch (const std::exception&) {
            --m_state->reading;
            if (m_means->broken.is("CALLBACK-5"))
                answer(0, std::make_error_code(std::errc::io_error));
            throw;
        }
    }

    void writeSerialNumber(unsigned int serialNumber, std::function<void(std::error_code)> answer) override
    {
        m_inner->writeSerialNumber(serialNumber, std::move(answer));
    }

    void addObserver(Observer* observer) override
    {
        if (m_means->addObserverThrows) {
            if (m_means->broken.is("OBSERVER-5"))
                m_state->registrations.add(observer);
            throw std::runtime_error("cannot register");
        }
        const bool tooEarly = m_means->broken.is("OBSERVER-7");
        if (tooEarly)
            observer->onSerialNumberEvent(0, 0);
        m_state->registrations.add(observer);
        if (m_means->tellsInside && !tooEarly)
            observer->onSerialNumberEvent(0, 0);
    }
    void removeObserver(Observer* observer) override { m_state->registrations.remove(observer); }

    // On the caller's thread.
    void tell()
    {
        m_state->registrations.tell([](Observer& observer) { observer.onSerialNumberEvent(0, 0); });
    }

private:
    // What answers that wait and notifications that are on their way keep.
    struct State
    {
        explicit State(const Broken& broken)
            : registrations(broken)
        {
        }

        std::unique_lock<std::mutex> lockIf(bool really)
        {
            std::unique_lock lock(telling, std::defer_lock);
            if (really)
                lock.lock();
            return lock;
        }

        Registrations<Observer> registrations;
        std::mutex telling;
        std::atomic<int> reading = 0;
    };

    void onSerialNumberEvent(unsigned int a, unsigned int b) override
    {
        const std::chrono::milliseconds delay(m_means->broken.is("OBSERVER-3") ? 20 : 0);
        m_means->later.run(delay, [=, state = m_state, locks = m_means->broken.is("OBSERVER-9")] {
            const auto lock = state->lockIf(locks);
            state->registrations.tell([=](Observer& observer) { observer.onSerialNumberEvent(a, b); });
        });
    }

    Answer mutated(const Answer& answer) const
    {
        return [answer, means = m_means, state = m_state,
                onMainThread = QThread::currentThread()
                               == QCoreApplication::instance()->thread()](unsigned int number, std::error_code error) {
            --state->reading;
            const Broken& broken = means->broken;
            if (broken.is("CALLBACK-1"))
                answer(number, error);
            if (broken.is("CALLBACK-2"))
                return insist(answer, number, error);
            if (broken.is("CALLBACK-3"))
                return means->later.run(means->late, [=] { answer(number, error); });
            if (broken.is("CALLBACK-4") && onMainThread) {
                QMetaObject::invokeMethod(
                    QCoreApplication::instance(), [=] { answer(number, error); }, Qt::QueuedConnection);
                return;
            }
            if (broken.is("CALLBACK-6") && error)
                error = std::error_code(0, error.category());
            answer(number, error);
        };
    }

    static void insist(const Answer& answer, unsigned int number, std::error_code error)
    {
        constexpr int attempts = 3;
        try {
            answer(number, error);
        } catch (const std::bad_alloc&) {
            for (int attempt = 0; attempt < attempts; ++attempt)
                answer(number, error);
        }
    }

    const std::shared_ptr<sdk::service::IMemorySerialNumberControl> m_inner;
    const std::shared_ptr<Means> m_means;
    const std::shared_ptr<State> m_state;
};

/// Errors whose texts are in another encoding.
class OldEncoding final : public std::error_category
{
public:
    const char* name() const noexcept override { return "old encoding"; }
    std::string message(int /*number*/) const override
    {
        return "Speicher \xfc"
               "berlastet";
    }

    static std::error_code of(std::error_code error)
    {
        static const OldEncoding category;
        return {error.value(), category};
    }
};

class MutantFileMemory final : public sdk::service::IFileMemoryControl
{
public:
    MutantFileMemory(std::shared_ptr<IFileMemoryControl> inner, std::shared_ptr<Means> means)
        : m_inner(std::move(inner))
        , m_means(std::move(means))
    {
    }

    bool isAvailable() override
    {
        if (*m_waiting > 0 && m_means->broken.is("OPS-4"))
            throw std::logic_error("busy");
        return m_inner->isAvailable();
    }

    void fileList(std::function<void(std::vector<FileInfo>, std::error_code)> answer) override
    {
        m_inner->fileList(mutated<std::vector<FileInfo>>(std::move(answer)));
    }
    void spaceInfo(std::function<void(SpaceInfo, std::error_code)> answer) override
    {
        m_inner->spaceInfo(mutated<SpaceInfo>(std::move(answer)));
    }
    void readFile(FileInfo file, std::function<void(std::vector<unsigned char>, std::error_code)> answer) override
    {
        m_inner->readFile(std::move(file), mutated<std::vector<unsigned char>>(std::move(answer)));
    }
    void writeFile(std::string name, std::vector<unsigned char> data,
                   std::function<void(std::error_code)> answer) override
    {
        m_inner->writeFile(std::move(name), std::move(data), std::move(answer));
    }
    void deleteFile(FileInfo file, std::function<void(std::error_code)> answer) override
    {
        m_inner->deleteFile(std::move(file), std::move(answer));
    }

private:
    // Answers a little later, so that there is a time when it waits.
    template <typename Value>
    std::function<void(Value, std::error_code)> mutated(std::function<void(Value, std::error_code)> answer) const
    {
        ++*m_waiting;
        return [answer = std::move(answer), means = m_means, waiting = m_waiting](Value value, std::error_code error) {
            if (error && means->broken.is("CALLBACK-7"))
                error = OldEncoding::of(error);
            means->later.run(std::chrono::milliseconds(5), [=] {
                --*waiting;
                answer(value, error);
            });
        };
    }

    const std::shared_ptr<IFileMemoryControl> m_inner;
    const std::shared_ptr<Means> m_means;
    const std::shared_ptr<std::atomic<int>> m_waiting = std::make_shared<std::atomic<int>>(0);
};

class MutantTemperature final : public sdk::ITemperatureControl
{
public:
    MutantTemperature(std::shared_ptr<ITemperatureControl> inner, std::shared_ptr<Means> means)
        : m_inner(std::move(inner))
        , m_means(std::move(means))
    {
    }

    float temperature() override { return m_inner->temperature(); }
    const std::unordered_map<std::string, float>& modulesTemperature() override
    {
        const auto& readings = m_inner->modulesTemperature();
        if (!m_means->broken.is("OPS-3"))
            return readings;
        const std::lock_guard guard(m_mutex);
        if (m_shared.empty())
            m_shared = readings;
        for (auto& [name, temperature] : m_shared) // whoever looks at it now sees that
            temperature += 1.0F;
        return m_shared;
    }
    void addObserver(Observer* observer) override { m_inner->addObserver(observer); }
    void removeObserver(Observer* observer) override { m_inner->removeObserver(observer); }

private:
    const std::shared_ptr<ITemperatureControl> m_inner;
    const std::shared_ptr<Means> m_means;
    std::mutex m_mutex; // guards changes of m_shared
    std::unordered_map<std::string, float> m_shared;
};

class MutantCalibrationController final : public sdk::service::calibrations::ICalibrationController
{
public:
    MutantCalibrationController(std::shared_ptr<ICalibrationController> inner, std::shared_ptr<Means> means)
        : m_inner(std::move(inner))
        , m_means(std::move(means))
    {
    }

    void addObserver(Observer* observer) override
    {
        if (m_registered++ > 0 && m_means->broken.is("OBSERVER-10"))
            throw std::runtime_error("registered before");
        m_inner->addObserver(observer);
    }
    void removeObserver(Observer* observer) override { m_inner->removeObserver(observer); }

private:
    const std::shared_ptr<ICalibrationController> m_inner;
    const std::shared_ptr<Means> m_means;
    std::atomic<int> m_registered = 0;
};

/// The calibration of the IF switch of another instrument, with observers of its own.
class MutantIfswCalibration final : public sdk::service::IYqIfswCalibrationControl,
                                    private sdk::service::IYqIfswCalibrationControl::Observer
{
public:
    using Observer = sdk::service::IYqIfswCalibrationControl::Observer;

    MutantIfswCalibration(std::shared_ptr<IYqIfswCalibrationControl> inner, const std::shared_ptr<Means>& means)
        : m_inner(std::move(inner))
        , m_registrations(std::make_shared<Registrations<Observer>>(means->broken))
    {
        m_inner->addObserver(this);
    }
    ~MutantIfswCalibration() override
    {
        m_inner->removeObserver(this);
        m_registrations->close();
    }

    void addObserver(Observer* observer) override { m_registrations->add(observer); }
    void removeObserver(Observer* observer) override { m_registrations->remove(observer); }
    sdk::FrequencyPlan frequencyPlan() override { return m_inner->frequencyPlan(); }
    void saveCalibrationData(CalibrationData data) override { m_inner->saveCalibrationData(std::move(data)); }

private:
    // The last owner of this control may let go of it meanwhile.
    void tell(const std::function<void(Observer&)>& notification) const
    {
        const auto kept = m_registrations;
        kept->tell(notification);
    }

    void onFirstEvent() override { tell(&Observer::onFirstEvent); }
    void onSecondEvent() override { tell(&Observer::onSecondEvent); }
    void onThirdEvent() override { tell(&Observer::onThirdEvent); }
    void onStateChanged(int state) override
    {
        tell([=](Observer& observer) { observer.onStateChanged(state); });
    }

    const std::shared_ptr<IYqIfswCalibrationControl> m_inner;
    const std::shared_ptr<Registrations<Observer>> m_registrations;
};

} // namespace tov::testing
