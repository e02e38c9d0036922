#pragma once

// The two calibrations, and the table of their observers by itself.

#include "pausingsdk.h"
#include "service/calibration/calibrationobserveradapter.h"
#include "service/calibration/sdkyqfactorypowercalibrationcontrol.h"
#include "service/calibration/sdkyqifswcalibrationcontrol.h"
#include "service/support/observertable.h"

namespace tov::assurance {

/// The instrument's side of a calibration. Its registrations run `afterwards` when they have done it.
template <typename SdkIface>
class PausingCalibration : public SdkIface
{
public:
    using Observer = typename SdkIface::Observer;

    void addObserver(Observer* observer) override
    {
        observers.add(observer);
        runAfterwards();
    }
    void removeObserver(Observer* observer) override
    {
        observers.remove(observer);
        runAfterwards();
    }
    sdk::FrequencyPlan frequencyPlan() override { return {}; }

    SdkObservers<Observer> observers;

    /// What the instrument does on this thread inside its next registration or removal.
    inline static thread_local std::function<void()> s_afterwards;

private:
    static void runAfterwards()
    {
        if (const auto next = std::exchange(s_afterwards, nullptr))
            next();
    }
};

struct Ifsw
{
    using Adapter = devices::service::SdkYqIfswCalibrationControl;
    using Sdk = sdk::service::IYqIfswCalibrationControl;
    class Control final : public PausingCalibration<Sdk>
    {
        void saveCalibrationData(CalibrationData /*data*/) override {}
    };
    static constexpr const char* name = "IF switch";
};

struct FactoryPower
{
    using Adapter = devices::service::SdkYqFactoryPowerCalibrationControl;
    using Sdk = sdk::service::IYqFactoryPowerCalibrationControl;
    class Control final : public PausingCalibration<Sdk>
    {
        void saveCalibrationData(std::chrono::sys_seconds /*time*/, double /*parameter*/,
                                 std::vector<PowerCalPoint> /*points*/) override
        {
        }
    };
    static constexpr const char* name = "factory power";
};

/// A value that may be used under a lock only.
template <typename Value>
class Guarded
{
public:
    Guarded() = default;
    explicit(false) Guarded(Value value)
        : m_value(value)
    {
    }

    explicit(false) operator Value() const { return guarded(); }
    Guarded& operator=(Value value)
    {
        guarded() = value;
        return *this;
    }
    Value operator++(int) { return guarded()++; }
    Value operator--() { return --guarded(); }

private:
    Value& guarded() const
    {
        expect(!isOnStage() || holdsALock(), "the table is used without its lock");
        return m_value;
    }

    mutable Value m_value{};
};

/// The table alone, with registrations that may be used under its lock only.
struct BareTable
{
    using Sdk = Ifsw::Sdk;
    using Control = Ifsw::Control;

    class Adapter
    {
    public:
        using Observer = Ifsw::Adapter::Observer;

        explicit Adapter(devices::ReacquiringControl<Sdk> control)
            : m_control(std::move(control))
        {
        }

        void addObserver(Observer* observer) { table().add(observer); }
        void removeObserver(Observer* observer) { table().remove(observer); }
        void onControlsAboutToBeReleased() { table().detachAll(); }
        void onControlsAvailable() { table().attachAll(); }

    private:
        struct Registered final : devices::service::CalibrationObserverAdapter<Sdk::Observer, Observer>
        {
            using CalibrationObserverAdapter::CalibrationObserverAdapter;

            Guarded<bool> attached = true;
            Guarded<int> underWay = 0;
            Guarded<std::thread::id> caller;
            Guarded<bool> uncertain = false;
            Guarded<bool> isNew = true;
        };
        using Table = devices::service::ObserverTable<Sdk, Observer, Registered>;

        Table table() { return Table(m_control, m_mutex, m_entries); }

        devices::ReacquiringControl<Sdk> m_control;
        std::mutex m_mutex; // guards all below
        Table::Entries m_entries;
    };
    static constexpr const char* name = "table";
};

} // namespace tov::assurance
