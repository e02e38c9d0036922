#pragma once

#include "sdk/ivna.h"

#include <functional>
#include <memory>
#include <mutex>
#include <vector>

namespace tov::simulator {

/// An instrument without hardware, to develop and test applications against.
///
/// It offers every control that it is fitted with from the start. What its controls set belongs to the
/// instrument: it survives when the controls are released and offered again.
///
/// Thread: *any thread* may call any operation at any time, while other threads use controls too. The
/// instrument must outlive what an application creates from it; a control that is still locked may
/// outlive the instrument.
class SimulatedInstrument final : public sdk::IVna
{
public:
    /// An instrument that is fitted with every control and offers them all.
    SimulatedInstrument();
    ~SimulatedInstrument() override;

    SimulatedInstrument(const SimulatedInstrument&) = delete;
    SimulatedInstrument& operator=(const SimulatedInstrument&) = delete;

    /// The control that `key` names; empty while it is released, when it is unfitted, and for a key
    /// that no instrument of this kind has.
    std::shared_ptr<void> findControl(sdk::Key key) override;

    /// Keys of every control that such an instrument can be fitted with.
    std::vector<sdk::Key> controlKeys() const;

    /// Lets go of every control, as when the connection is lost: a caller that is inside a control
    /// keeps what it locked until it returns, everybody else finds nothing. Again: does nothing.
    void releaseControls();

    /// Offers every fitted control again, each as a new object. Does nothing while they are offered.
    void offerControls();

    /// Makes the instrument one that lacks the control `key`; it is released if it is offered.
    /// Throws `std::out_of_range` for a key that is not among `controlKeys()`.
    void unfitControl(sdk::Key key);

    /// Undoes `unfitControl()`: the control is offered as a new object, now or with the others.
    /// Throws `std::out_of_range` for a key that is not among `controlKeys()`.
    void fitControl(sdk::Key key);

private:
    struct Slot
    {
        sdk::Key key;
        std::function<std::shared_ptr<void>()> makeControl;
        bool fitted = true;
        std::shared_ptr<void> control; // what is offered now, if anything
    };

    template <typename SdkIface, typename Control, typename State>
    static Slot makeSlot(sdk::Key key);

    Slot& slot(sdk::Key key);
    void offer(Slot& slot) const;

    mutable std::mutex m_mutex; // guards all below; controls are destroyed outside it
    bool m_offering = false;
    std::vector<Slot> m_slots;
};

} // namespace tov::simulator
