#pragma once

#include "conformance/bench/bench.h"

#include <atomic>
#include <exception>
#include <functional>
#include <memory>
#include <string>

namespace tov::conformance {

/// An observer of a control, whatever its kind. When nothing may reach it any more it is poisoned, and kept until the
/// program ends: so what reaches it is seen, and does no harm.
///
/// Thread: *any thread*.
class Ear
{
public:
    Ear(const Ear&) = delete;
    Ear& operator=(const Ear&) = delete;
    virtual ~Ear() = default;

    /// Registers with a control of its kind, and removes from it.
    virtual void addTo(const std::shared_ptr<void>& control) = 0;
    virtual void removeFrom(const std::shared_ptr<void>& control) = 0;

    /// What is done at each notification until it is poisoned; set before it is registered.
    std::function<void()> whenTold;

    void poison() { m_poisoned = true; }

    bool isBeingTold() const { return m_inside != 0; }
    int told() const { return m_told; }
    int toldTooLate() const { return m_toldTooLate; }

    /// How often any was told.
    static int allTold() { return s_told; }

protected:
    Ear() = default;

    void hear()
    {
        ++m_inside;
        ++m_told;
        ++s_told;
        if (m_poisoned)
            ++m_toldTooLate;
        else if (whenTold)
            whenTold();
        --m_inside;
    }

private:
    inline static std::atomic<int> s_told = 0;

    std::atomic<int> m_inside = 0;
    std::atomic<int> m_told = 0;
    std::atomic<int> m_toldTooLate = 0;
    std::atomic<bool> m_poisoned = false;
};

/// A new one that can observe `control`, which must be observable.
Ear& makeEar(const devices::ControlName& control);

/// Registers an ear as long as it lives; then poisons it, too. What the ear does when it is told lives longer.
class Registered
{
public:
    Registered(Ear& ear, std::shared_ptr<void> control);
    Registered(const Registered&) = delete;
    Registered& operator=(const Registered&) = delete;
    ~Registered();

private:
    Ear& m_ear;
    const std::shared_ptr<void> m_control;
    const int m_exceptions = std::uncaught_exceptions();
};

/// Waits until the ear has been told more often than `before`. Throws `NotApplicable` when it is not.
void expectTold(const Bench& bench, const Ear& ear, const devices::ControlName& control, int before = 0);

/// Which controls a check is about.
using WhichControls = std::function<bool(const devices::ControlName&)>;
bool isObservable(const devices::ControlName& control);
bool isCalibration(const devices::ControlName& control);           ///< of the IF switch or of the factory power
bool isCalibrationController(const devices::ControlName& control); ///< which has watchers

/// Does `work` with each of these controls that may be looked at, and says with which. They must be observable.
Seen forEachObservable(Bench& bench, const WhichControls& which,
                       const std::function<void(const devices::ControlName&, std::shared_ptr<void> control)>& work);

} // namespace tov::conformance
