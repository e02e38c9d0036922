#include "simulator/simulatedinstrument.h"

#include "simulator/calibration/simulatedcalibrationcontroller.h"
#include "simulator/calibration/simulatedfactorycorrectioncontrol.h"
#include "simulator/calibration/simulatedyqfactorypowercalibrationcontrol.h"
#include "simulator/calibration/simulatedyqifswcalibrationcontrol.h"
#include "simulator/memory/simulatedfilememorycontrol.h"
#include "simulator/memory/simulatedmemoryoperationscontrol.h"
#include "simulator/memory/simulatedmemoryusbidcontrol.h"
#include "simulator/memory/simulatedpotentiometerscontrol.h"
#include "simulator/memory/simulatedserialnumbercontrol.h"
#include "simulator/memory/simulatedsystemtermscontrol.h"
#include "simulator/monitoring/simulatedtemperaturecontrol.h"
#include "simulator/support/machine.h"
#include "simulator/support/statefile.h"
#include "simulator/tuning/simulatedkz515powercontrol.h"
#include "simulator/tuning/simulatedkz515synthesiscontrol.h"
#include "simulator/tuning/simulatedloleakagecontrol.h"
#include "simulator/tuning/simulatedulkpowercontrol.h"
#include "simulator/tuning/simulatedulksynthesiscontrol.h"
#include "simulator/tuning/simulatedwn0807powermodulecontrol.h"
#include "simulator/tuning/simulatedwn0807synthesiscontrol.h"
#include "simulator/tuning/simulatedyqsynthesiscontrol.h"

#include <QCborMap>
#include <QCborValue>
#include <QFile>

#include <algorithm>
#include <iterator>
#include <stdexcept>
#include <utility>

namespace tov::simulator {

namespace controls = devices::controls;

namespace {

// Whether all of `part` is in `whole`, to the bit.
bool contains(const QCborMap& whole, const QCborMap& part)
{
    return std::ranges::all_of(part.keys(), [&](const QCborValue& key) {
        const QCborValue wanted = part[key];
        const QCborValue found = whole[key];
        return wanted.isMap() ? found.isMap() && contains(found.toMap(), wanted.toMap())
                              : found.toCbor() == wanted.toCbor(); // what is not a number is like itself
    });
}

} // namespace

// The control is erased from its interface pointer, which is what a user of the key casts it back to.
template <typename Control, typename SdkIface, typename... Types, typename State, typename... Shared>
void SimulatedInstrument::addSlot(const devices::ControlKind<SdkIface, Types...>& kind,
                                  const std::shared_ptr<State>& state, const Shared&... shared)
{
    m_slots.push_back({.key = kind.keys.sdk,
                       .name = QString::fromUtf8(kind.name),
                       .state = state,
                       .makeControl = [=]() -> std::shared_ptr<void> {
                           return std::shared_ptr<SdkIface>(std::make_shared<Control>(shared..., state));
                       },
                       .control = nullptr});
}

SimulatedInstrument::SimulatedInstrument(const Configuration& configuration)
    : m_machine(std::make_shared<Machine>(configuration.timing, [this] { releaseControls(); }))
    , m_files(std::make_shared<FileMemoryState>(configuration.fileCapacity))
    , m_memory(std::make_shared<MemoryState>(configuration.memorySize))
    , m_potentiometers(std::make_shared<PotentiometersState>())
    , m_terms(std::make_shared<SystemTermsState>())
    , m_ifswCalibration(std::make_shared<IfswCalibrationState>())
    , m_factoryPowerCalibration(std::make_shared<FactoryPowerCalibrationState>())
    , m_factoryCorrections(std::make_shared<FactoryCorrectionState>(m_machine))
    , m_temperatures(std::make_shared<TemperatureState>(m_machine, configuration.timing.seed))
    , m_calibrationUnit1(std::make_shared<CalibrationUnitState>(m_machine))
    , m_calibrationUnit2(std::make_shared<CalibrationUnitState>(m_machine))
{
    addSlot<SimulatedFileMemoryControl>(controls::fileMemory, m_files, m_machine);
    addSlot<SimulatedPotentiometersControl>(controls::potentiometers, m_potentiometers, m_machine);
    addSlot<SimulatedMemoryUsbIdControl>(controls::usbId, std::make_shared<UsbIdState>(), m_machine);
    addSlot<SimulatedSerialNumberControl>(controls::serialNumber, std::make_shared<SerialNumberState>(), m_machine);
    addSlot<SimulatedMemoryOperationsControl>(controls::memoryOperations, m_memory, m_machine);
    addSlot<SimulatedUlkSynthesisControl>(controls::ulkSynthesis, std::make_shared<UlkSynthesisState>(), m_machine);
    addSlot<SimulatedUlkPowerControl>(controls::ulkPower, std::make_shared<UlkPowerState>(), m_machine);
    addSlot<SimulatedWn0807SynthesisControl>(controls::wn0807Synthesis, std::make_shared<Wn0807SynthesisState>(),
                                             m_machine);
    addSlot<SimulatedWn0807PowerModuleControl>(controls::wn0807Power, std::make_shared<Wn0807PowerState>(), m_machine);
    addSlot<SimulatedLoLeakageControl>(controls::loLeakage, std::make_shared<LoLeakageState>(), m_machine);
    addSlot<SimulatedKz515PowerControl>(controls::kz515Power, std::make_shared<Kz515PowerState>(), m_machine);
    addSlot<SimulatedKz515SynthesisControl>(controls::kz515Synthesis, std::make_shared<Kz515SynthesisState>(),
                                            m_machine);
    addSlot<SimulatedYqSynthesisControl>(controls::yqSynthesis, std::make_shared<YqSynthesisState>(), m_machine);
    addSlot<SimulatedSystemTermsControl>(controls::systemTerms, m_terms, m_machine);
    addSlot<SimulatedYqIfswCalibrationControl>(controls::ifswCalibration, m_ifswCalibration, m_machine);
    addSlot<SimulatedYqFactoryPowerCalibrationControl>(controls::factoryPowerCalibration, m_factoryPowerCalibration,
                                                       m_machine);
    addSlot<SimulatedFactoryCorrectionControl>(controls::factoryCorrections, m_factoryCorrections, m_machine);
    addSlot<SimulatedTemperatureControl>(controls::temperature, m_temperatures, m_machine);
    addSlot<SimulatedCalibrationController>(controls::calibrationController1, m_calibrationUnit1,
                                            Operation::CalibrationController1Observe);
    addSlot<SimulatedCalibrationController>(controls::calibrationController2, m_calibrationUnit2,
                                            Operation::CalibrationController2Observe);
    offerControls();
}

SimulatedInstrument::~SimulatedInstrument()
{
    // Controls that are still locked go on answering; nothing comes back to this object.
    m_machine->stop();
}

std::shared_ptr<void> SimulatedInstrument::findControl(sdk::Key key)
{
    const std::lock_guard guard(m_mutex);
    const auto found = std::ranges::find(m_slots, key, &Slot::key);
    return found != m_slots.end() ? found->control : nullptr;
}

std::vector<sdk::Key> SimulatedInstrument::controlKeys() const
{
    const std::lock_guard guard(m_mutex);
    std::vector<sdk::Key> keys;
    std::ranges::transform(m_slots, std::back_inserter(keys), &Slot::key);
    return keys;
}

void SimulatedInstrument::releaseControls()
{
    std::vector<std::shared_ptr<void>> released;
    const std::lock_guard guard(m_mutex);
    released.reserve(m_slots.size());
    for (Slot& slot : m_slots)
        released.push_back(std::exchange(slot.control, nullptr));
    m_offering = false;
}

void SimulatedInstrument::offerControls()
{
    const std::lock_guard guard(m_mutex);
    m_offering = true;
    for (Slot& slot : m_slots)
        offer(slot);
}

void SimulatedInstrument::unfitControl(sdk::Key key)
{
    std::shared_ptr<void> released;
    const std::lock_guard guard(m_mutex);
    Slot& unfitted = slot(key);
    unfitted.fitted = false;
    released = std::exchange(unfitted.control, nullptr);
}

void SimulatedInstrument::fitControl(sdk::Key key)
{
    const std::lock_guard guard(m_mutex);
    Slot& fitted = slot(key);
    fitted.fitted = true;
    offer(fitted);
}

Faults& SimulatedInstrument::faults() noexcept
{
    return m_machine->faults();
}

void SimulatedInstrument::setFileStoreAvailable(bool available)
{
    m_files->available = available;
}

void SimulatedInstrument::damageMemory(std::size_t offset)
{
    m_memory->damage(offset);
}

int SimulatedInstrument::potentiometerInRam(std::size_t index) const
{
    const auto value = m_potentiometers->readRam(index);
    if (!value)
        throw std::out_of_range(value.error().message());
    return *value;
}

std::optional<StoredTerms> SimulatedInstrument::storedTerms() const
{
    return m_terms->stored();
}

std::optional<StoredIfswCalibration> SimulatedInstrument::storedIfswCalibration() const
{
    return m_ifswCalibration->stored();
}

std::optional<StoredFactoryPowerCalibration> SimulatedInstrument::storedFactoryPowerCalibration() const
{
    return m_factoryPowerCalibration->stored();
}

void SimulatedInstrument::setCorrectionValid(sdk::CorrectionFlag flag, bool valid)
{
    m_factoryCorrections->setValid(flag, valid);
}

CalibrationUnit& SimulatedInstrument::calibrationUnit(sdk::Key key)
{
    if (key == controls::calibrationController1.keys.sdk)
        return *m_calibrationUnit1;
    if (key == controls::calibrationController2.keys.sdk)
        return *m_calibrationUnit2;
    throw std::out_of_range("the simulated instrument has no calibration controller of this key");
}

void SimulatedInstrument::passTime(std::chrono::milliseconds time)
{
    m_temperatures->passTime(time);
}

void SimulatedInstrument::waitUntilQuiet()
{
    m_machine->waitUntilQuiet();
}

void SimulatedInstrument::save(const QString& path) const
{
    const QCborMap all = state();
    if (!QFile::exists(path) || readStateFile(path) != all)
        writeStateFile(path, all);
}

void SimulatedInstrument::load(const QString& path)
{
    const QCborMap loaded = readStateFile(path);
    const QCborMap before = state();
    restore(loaded);
    if (!contains(state(), loaded)) {
        restore(before);
        throw std::runtime_error(
            (path + ": this state is damaged: no instrument can have what it holds").toStdString());
    }
}

QCborMap SimulatedInstrument::state() const
{
    const std::lock_guard guard(m_mutex);
    QCborMap all;
    for (const Slot& slot : m_slots)
        all.insert(slot.name, slot.state->save());
    return all;
}

void SimulatedInstrument::restore(const QCborMap& all)
{
    const std::lock_guard guard(m_mutex);
    for (const Slot& slot : m_slots)
        if (all.contains(slot.name))
            slot.state->restore(all[slot.name].toMap());
}

SimulatedInstrument::Slot& SimulatedInstrument::slot(sdk::Key key)
{
    const auto found = std::ranges::find(m_slots, key, &Slot::key);
    if (found == m_slots.end())
        throw std::out_of_range("the simulated instrument has no control of this key");
    return *found;
}

void SimulatedInstrument::offer(Slot& slot) const
{
    if (m_offering && slot.fitted && !slot.control)
        slot.control = slot.makeControl();
}

} // namespace tov::simulator
