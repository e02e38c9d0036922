#pragma once

#include "devices/controls.h"
#include "sdk/correctionflag.h"
#include "sdk/ivna.h"
#include "simulator/calibrationunit.h"
#include "simulator/faults.h"
#include "simulator/storeddata.h"
#include "simulator/timing.h"

#include <QString>

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

class QCborMap;

namespace tov::simulator {

class CalibrationUnitState;
class ControlState;
class FactoryCorrectionState;
class FileMemoryState;
class Machine;
class MemoryState;
class PotentiometersState;
class TemperatureState;
/// What the instrument was given last, if anything was; its own.
template <typename Stored>
class LastStored;

/// What a simulated instrument is like when it is new; `SimulatedInstrument::load()` brings sizes of its own.
struct Configuration
{
    Timing timing;                              ///< when and where its operations answer
    std::uint64_t fileCapacity = 256ULL * 1024; ///< room for the contents of all files, in bytes
    std::size_t memorySize = 64ULL * 1024;      ///< size of the memory, in bytes
};

/// An instrument without hardware, to develop and test applications against.
///
/// It offers every control that it is fitted with from the start. What its controls set belongs to the
/// instrument: it survives when the controls are released and offered again, and can be kept in a file.
/// Operations that answer by a callback answer as `Configuration::timing` says; notifications come on a thread
/// of the simulator's own.
///
/// Thread: *any thread* may call any operation at any time, while other threads use controls too. The
/// instrument must outlive what an application creates from it, and is not destroyed on its own thread. A
/// control that is still locked may outlive it.
class SimulatedInstrument final : public sdk::IVna
{
public:
    /// An instrument that is fitted with every control and offers them all.
    explicit SimulatedInstrument(const Configuration& configuration = {});
    SimulatedInstrument(const SimulatedInstrument&) = delete;
    SimulatedInstrument& operator=(const SimulatedInstrument&) = delete;

    /// Answers and tells at once what is still waiting; a control that is still locked answers at once from then on.
    ~SimulatedInstrument() override;

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

    /// Makes single operations misbehave.
    Faults& faults() noexcept;

    /// Makes the file store one that is there but cannot be used, and usable again.
    void setFileStoreAvailable(bool available);

    /// Makes the byte at `offset` of the memory the opposite of what was written, which its integrity check then finds.
    /// Throws `std::out_of_range`.
    void damageMemory(std::size_t offset);

    /// The value in RAM of the potentiometer at `index`, which no control reads. Throws `std::out_of_range`.
    int potentiometerInRam(std::size_t index) const;

    /// The system error terms that were written last, if any were.
    std::optional<StoredTerms> storedTerms() const;

    /// What was saved last as the IF-switch calibration, if anything was.
    std::optional<StoredIfswCalibration> storedIfswCalibration() const;

    /// What was saved last as the factory power calibration, if anything was.
    std::optional<StoredFactoryPowerCalibration> storedFactoryPowerCalibration() const;

    /// Makes the data of a factory correction valid or not.
    void setCorrectionValid(sdk::CorrectionFlag flag, bool valid);

    /// The calibration unit at the controller `key`. Throws `std::out_of_range` for a key that is none of theirs.
    CalibrationUnit& calibrationUnit(sdk::Key key);

    /// Lets time pass for the temperatures of the modules.
    void passTime(std::chrono::milliseconds time);

    /// Waits until everything that waits is answered and every notification is delivered. Not in a notification.
    void waitUntilQuiet();

    /// Keeps everything that the controls set in the file at `path`, which afterwards is the old one or the new
    /// one, whole; it is not touched when it holds the same already. Throws `std::runtime_error`, which says what
    /// went wrong, also for a file that is there and is none of `save()`.
    void save(const QString& path) const;

    /// Takes over what `save()` kept. Throws `std::runtime_error` for a file that cannot be read, is of another
    /// kind or version, is damaged, or holds what no instrument can have; neither it nor the instrument is changed
    /// then.
    void load(const QString& path);

private:
    struct Slot
    {
        sdk::Key key;
        QString name; // in the file
        std::shared_ptr<ControlState> state;
        std::function<std::shared_ptr<void>()> makeControl;
        bool fitted = true;
        std::shared_ptr<void> control; // what is offered now, if anything
    };

    template <typename Control, typename SdkIface, typename... Types, typename State, typename... Shared>
    void addSlot(const devices::ControlKind<SdkIface, Types...>& kind, const std::shared_ptr<State>& state,
                 const Shared&... shared);

    Slot& slot(sdk::Key key);
    void offer(Slot& slot) const;
    QCborMap state() const;
    void restore(const QCborMap& all);

    const std::shared_ptr<Machine> m_machine;
    const std::shared_ptr<FileMemoryState> m_files;
    const std::shared_ptr<MemoryState> m_memory;
    const std::shared_ptr<PotentiometersState> m_potentiometers;
    const std::shared_ptr<LastStored<StoredTerms>> m_terms;
    const std::shared_ptr<LastStored<StoredIfswCalibration>> m_ifswCalibration;
    const std::shared_ptr<LastStored<StoredFactoryPowerCalibration>> m_factoryPowerCalibration;
    const std::shared_ptr<FactoryCorrectionState> m_factoryCorrections;
    const std::shared_ptr<TemperatureState> m_temperatures;
    const std::shared_ptr<CalibrationUnitState> m_calibrationUnit1;
    const std::shared_ptr<CalibrationUnitState> m_calibrationUnit2;

    mutable std::mutex m_mutex; // guards all below; controls are destroyed outside it
    bool m_offering = false;
    std::vector<Slot> m_slots;
};

} // namespace tov::simulator
