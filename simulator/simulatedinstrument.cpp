#include "simulator/simulatedinstrument.h"

#include "devices/controlkeys.h"
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

#include <QFile>

#include <algorithm>
#include <iterator>
#include <stdexcept>
#include <utility>

namespace tov::simulator {

namespace controlkeys = devices::controlkeys;

// The control is erased from its interface pointer, which is what a user of the key casts it back to.
template <typename SdkIface, typename Control, typename State, typename... Shared>
void SimulatedInstrument::addSlot(sdk::Key key, const QString& name, const std::shared_ptr<State>& state,
                                  const Shared&... shared)
{
    m_slots.push_back({.key = key,
                       .name = name,
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
    using namespace sdk::service;
    using calibrations::ICalibrationController;

    addSlot<IFileMemoryControl, SimulatedFileMemoryControl>(controlkeys::fileMemory.sdk, "file memory", m_files,
                                                            m_machine);
    addSlot<IPotentiometersControl, SimulatedPotentiometersControl>(controlkeys::potentiometers.sdk, "potentiometers",
                                                                    m_potentiometers, m_machine);
    addSlot<IMemoryUsbIdControl, SimulatedMemoryUsbIdControl>(controlkeys::usbId.sdk, "USB identifier",
                                                              std::make_shared<UsbIdState>(), m_machine);
    addSlot<IMemorySerialNumberControl, SimulatedSerialNumberControl>(controlkeys::serialNumber.sdk, "serial number",
                                                                      std::make_shared<SerialNumberState>(), m_machine);
    addSlot<IMemoryOperationsControl, SimulatedMemoryOperationsControl>(controlkeys::memoryOperations.sdk, "memory",
                                                                        m_memory, m_machine);
    addSlot<IUlkSynthesisControl, SimulatedUlkSynthesisControl>(controlkeys::ulkSynthesis.sdk, "Ulk synthesis",
                                                                std::make_shared<UlkSynthesisState>());
    addSlot<IUlkPowerControl, SimulatedUlkPowerControl>(controlkeys::ulkPower.sdk, "Ulk power",
                                                        std::make_shared<UlkPowerState>());
    addSlot<IWn0807SynthesisControl, SimulatedWn0807SynthesisControl>(
        controlkeys::wn0807Synthesis.sdk, "Wn0807 synthesis", std::make_shared<Wn0807SynthesisState>());
    addSlot<IWn0807PowerModuleControl, SimulatedWn0807PowerModuleControl>(controlkeys::wn0807Power.sdk, "Wn0807 power",
                                                                          std::make_shared<Wn0807PowerState>());
    addSlot<ILoLeakageControl, SimulatedLoLeakageControl>(controlkeys::loLeakage.sdk, "LO leakage",
                                                          std::make_shared<LoLeakageState>());
    addSlot<IKZ515PowerControl, SimulatedKz515PowerControl>(controlkeys::kz515Power.sdk, "Kz515 power",
                                                            std::make_shared<Kz515PowerState>());
    addSlot<IKZ515SynthesisControl, SimulatedKz515SynthesisControl>(controlkeys::kz515Synthesis.sdk, "Kz515 synthesis",
                                                                    std::make_shared<Kz515SynthesisState>());
    addSlot<IYqSynthesisControl, SimulatedYqSynthesisControl>(controlkeys::yqSynthesis.sdk, "Yq synthesis",
                                                              std::make_shared<YqSynthesisState>());
    addSlot<ISystemTermsControl, SimulatedSystemTermsControl>(controlkeys::systemTerms.sdk, "system terms", m_terms,
                                                              m_machine);
    addSlot<IYqIfswCalibrationControl, SimulatedYqIfswCalibrationControl>(
        controlkeys::ifswCalibration.sdk, "IF-switch calibration", m_ifswCalibration, m_machine);
    addSlot<IYqFactoryPowerCalibrationControl, SimulatedYqFactoryPowerCalibrationControl>(
        controlkeys::factoryPowerCalibration.sdk, "factory power calibration", m_factoryPowerCalibration, m_machine);
    addSlot<sdk::IFactoryCorrectionControl, SimulatedFactoryCorrectionControl>(
        controlkeys::factoryCorrections.sdk, "factory corrections", m_factoryCorrections, m_machine);
    addSlot<sdk::ITemperatureControl, SimulatedTemperatureControl>(controlkeys::temperature.sdk, "temperatures",
                                                                   m_temperatures);
    addSlot<ICalibrationController, SimulatedCalibrationController>(controlkeys::calibrationController1.sdk,
                                                                    "calibration unit 1", m_calibrationUnit1);
    addSlot<ICalibrationController, SimulatedCalibrationController>(controlkeys::calibrationController2.sdk,
                                                                    "calibration unit 2", m_calibrationUnit2);
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
    if (key == controlkeys::calibrationController1.sdk)
        return *m_calibrationUnit1;
    if (key == controlkeys::calibrationController2.sdk)
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
    QCborMap all;
    {
        const std::lock_guard guard(m_mutex);
        for (const Slot& slot : m_slots)
            all.insert(slot.name, slot.state->save());
    }
    if (!QFile::exists(path) || readStateFile(path) != all)
        writeStateFile(path, all);
}

void SimulatedInstrument::load(const QString& path)
{
    const QCborMap all = readStateFile(path);
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
