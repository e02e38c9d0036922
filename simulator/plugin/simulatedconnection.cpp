#include "simulator/plugin/simulatedconnection.h"

#include "sdk/ifactorycorrectioncontrol.h"
#include "sdk/service/imemoryoperationscontrol.h"
#include "sdk/service/imemoryserialnumbercontrol.h"
#include "sdk/service/isystemtermscontrol.h"
#include "sdk/service/iyqfactorypowercalibrationcontrol.h"
#include "sdk/service/iyqifswcalibrationcontrol.h"

#include <QDeadlineTimer>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <array>
#include <stdexcept>
#include <string_view>
#include <thread>
#include <utility>

namespace tov::simulator {

namespace controls = devices::controls;
using namespace Qt::StringLiterals;
using provider::Result;

namespace {

/// An operation by the names under which its interface has it; "read" and "change" are all of a module's settings.
struct NamedOperation
{
    sdk::Key control;
    QLatin1StringView name;
    Operation operation;
};

constexpr auto operations = std::to_array<NamedOperation>({
    {controls::fileMemory.keys.sdk, "fileList"_L1, Operation::FileList},
    {controls::fileMemory.keys.sdk, "spaceInfo"_L1, Operation::FileSpace},
    {controls::fileMemory.keys.sdk, "readFile"_L1, Operation::FileRead},
    {controls::fileMemory.keys.sdk, "writeFile"_L1, Operation::FileWrite},
    {controls::fileMemory.keys.sdk, "deleteFile"_L1, Operation::FileDelete},
    {controls::memoryOperations.keys.sdk, "read"_L1, Operation::MemoryRead},
    {controls::memoryOperations.keys.sdk, "write"_L1, Operation::MemoryWrite},
    {controls::memoryOperations.keys.sdk, "erase"_L1, Operation::MemoryErase},
    {controls::memoryOperations.keys.sdk, "integrityCheck"_L1, Operation::MemoryCheck},
    {controls::potentiometers.keys.sdk, "readFromEeprom"_L1, Operation::PotentiometerReadEeprom},
    {controls::potentiometers.keys.sdk, "writeToRam"_L1, Operation::PotentiometerWriteRam},
    {controls::potentiometers.keys.sdk, "writeToEeprom"_L1, Operation::PotentiometerWriteEeprom},
    {controls::potentiometers.keys.sdk, "potentiometers"_L1, Operation::PotentiometerList},
    {controls::serialNumber.keys.sdk, "readSerialNumber"_L1, Operation::SerialNumberRead},
    {controls::serialNumber.keys.sdk, "writeSerialNumber"_L1, Operation::SerialNumberWrite},
    {controls::usbId.keys.sdk, "writeUsbId"_L1, Operation::UsbIdWrite},
    {controls::usbId.keys.sdk, "usbId"_L1, Operation::UsbIdRead},
    {controls::usbId.keys.sdk, "usbIds"_L1, Operation::UsbIdList},
    {controls::systemTerms.keys.sdk, "termsRecords"_L1, Operation::TermsRead},
    {controls::systemTerms.keys.sdk, "writeSystemTerms"_L1, Operation::TermsWrite},
    {controls::systemTerms.keys.sdk, "systemTermsFlag"_L1, Operation::TermsFlag},
    {controls::ifswCalibration.keys.sdk, "frequencyPlan"_L1, Operation::IfswPlan},
    {controls::ifswCalibration.keys.sdk, "saveCalibrationData"_L1, Operation::IfswSave},
    {controls::factoryPowerCalibration.keys.sdk, "frequencyPlan"_L1, Operation::FactoryPowerPlan},
    {controls::factoryPowerCalibration.keys.sdk, "saveCalibrationData"_L1, Operation::FactoryPowerSave},
    {controls::factoryCorrections.keys.sdk, "supportedCorrections"_L1, Operation::CorrectionsRead},
    {controls::factoryCorrections.keys.sdk, "setEnabled"_L1, Operation::CorrectionSwitch},
    {controls::memoryOperations.keys.sdk, "addObserver"_L1, Operation::MemoryObserve},
    {controls::serialNumber.keys.sdk, "addObserver"_L1, Operation::SerialNumberObserve},
    {controls::systemTerms.keys.sdk, "addObserver"_L1, Operation::TermsObserve},
    {controls::ifswCalibration.keys.sdk, "addObserver"_L1, Operation::IfswObserve},
    {controls::factoryPowerCalibration.keys.sdk, "addObserver"_L1, Operation::FactoryPowerObserve},
    {controls::factoryCorrections.keys.sdk, "addObserver"_L1, Operation::CorrectionsObserve},
    {controls::temperature.keys.sdk, "temperature"_L1, Operation::TemperatureRead},
    {controls::temperature.keys.sdk, "modulesTemperature"_L1, Operation::TemperatureReadModules},
    {controls::temperature.keys.sdk, "addObserver"_L1, Operation::TemperatureObserve},
    {controls::calibrationController1.keys.sdk, "addObserver"_L1, Operation::CalibrationController1Observe},
    {controls::calibrationController2.keys.sdk, "addObserver"_L1, Operation::CalibrationController2Observe},
    {controls::ulkSynthesis.keys.sdk, "read"_L1, Operation::UlkSynthesisRead},
    {controls::ulkSynthesis.keys.sdk, "change"_L1, Operation::UlkSynthesisChange},
    {controls::ulkPower.keys.sdk, "read"_L1, Operation::UlkPowerRead},
    {controls::ulkPower.keys.sdk, "change"_L1, Operation::UlkPowerChange},
    {controls::wn0807Synthesis.keys.sdk, "read"_L1, Operation::Wn0807SynthesisRead},
    {controls::wn0807Synthesis.keys.sdk, "change"_L1, Operation::Wn0807SynthesisChange},
    {controls::wn0807Power.keys.sdk, "read"_L1, Operation::Wn0807PowerRead},
    {controls::wn0807Power.keys.sdk, "change"_L1, Operation::Wn0807PowerChange},
    {controls::loLeakage.keys.sdk, "read"_L1, Operation::LoLeakageRead},
    {controls::loLeakage.keys.sdk, "change"_L1, Operation::LoLeakageChange},
    {controls::kz515Power.keys.sdk, "read"_L1, Operation::Kz515PowerRead},
    {controls::kz515Power.keys.sdk, "change"_L1, Operation::Kz515PowerChange},
    {controls::kz515Synthesis.keys.sdk, "read"_L1, Operation::Kz515SynthesisRead},
    {controls::kz515Synthesis.keys.sdk, "change"_L1, Operation::Kz515SynthesisChange},
    {controls::yqSynthesis.keys.sdk, "read"_L1, Operation::YqSynthesisRead},
    {controls::yqSynthesis.keys.sdk, "change"_L1, Operation::YqSynthesisChange},
});

/// The control of this kind as the instrument offers it; null when it does not.
template <typename SdkIface, typename... Types>
std::shared_ptr<SdkIface> offered(SimulatedInstrument& instrument, const devices::ControlKind<SdkIface, Types...>& kind)
{
    return std::static_pointer_cast<SdkIface>(instrument.findControl(kind.keys.sdk));
}

void exercise(CalibrationUnit& unit)
{
    using Status = CalibrationUnit::Status;
    const Status status = unit.status();
    const QString configuration = unit.configuration();
    unit.setStatus(status == Status::Ready ? Status::WarmingUp : Status::Ready);
    unit.setStatus(status);
    unit.setConfiguration(configuration + " changed");
    unit.setConfiguration(configuration);
    unit.beginSave(1000, std::chrono::milliseconds(500));
}

void exercise(sdk::IFactoryCorrectionControl& corrections)
{
    const unsigned int switchable = corrections.validCorrections() & corrections.modifiableCorrections();
    const unsigned int lowest = switchable & (~switchable + 1);
    const auto flag = static_cast<sdk::CorrectionFlag>(lowest);
    const bool enabled = (corrections.enabledCorrections() & lowest) != 0;
    corrections.setEnabled(flag, !enabled);
    corrections.setEnabled(flag, enabled);
}

// Does what each kind of control tells of, and leaves it as it was. Whether `key` is that of one that tells.
bool exercise(SimulatedInstrument& instrument, sdk::Key key)
{
    bool tells = false;
    const auto attempt = [&](const auto& kind, auto how) {
        if (kind.keys.sdk != key)
            return;
        const auto control = offered(instrument, kind);
        if (!control)
            throw std::runtime_error("the instrument does not offer this control now");
        tells = true;
        how(control);
    };
    attempt(controls::serialNumber, [](const auto& control) {
        control->readSerialNumber([=](unsigned int number, std::error_code error) {
            try {
                if (!error)
                    control->writeSerialNumber(number, [](std::error_code /*error*/) {});
            } catch (const std::runtime_error&) {
                return; // a fault, and nobody is there to tell
            }
        });
    });
    attempt(controls::memoryOperations,
            [](const auto& control) { control->integrityCheck([](std::error_code /*error*/) {}); });
    attempt(controls::systemTerms, [&](const auto& control) {
        const auto stored = instrument.storedTerms();
        if (!stored)
            throw std::runtime_error("there are no system terms, which could be written again");
        control->writeSystemTerms(stored->secondsSinceEpoch, stored->parameter, stored->records, stored->terms);
    });
    attempt(controls::ifswCalibration, [&](const auto& control) {
        control->saveCalibrationData(instrument.storedIfswCalibration().value_or(StoredIfswCalibration()).data);
    });
    attempt(controls::factoryPowerCalibration, [&](const auto& control) {
        const auto stored = instrument.storedFactoryPowerCalibration().value_or(StoredFactoryPowerCalibration());
        control->saveCalibrationData(stored.time, stored.parameter, stored.points);
    });
    attempt(controls::factoryCorrections, [](const auto& control) { exercise(*control); });
    attempt(controls::temperature, [&](const auto& /*control*/) { instrument.passTime(std::chrono::minutes(1)); });
    for (const auto& controller : {controls::calibrationController1, controls::calibrationController2})
        attempt(controller, [&](const auto& /*control*/) { exercise(instrument.calibrationUnit(key)); });
    return tells;
}

} // namespace

SimulatedConnection::SimulatedConnection(const Configuration& configuration)
    : m_instrument(std::make_shared<SimulatedInstrument>(configuration))
{
}

SimulatedConnection::~SimulatedConnection()
{
    m_instrument->releaseControls();
}

Result<void> SimulatedConnection::keepIn(const QString& file, std::chrono::seconds patience)
try {
    // Under whatever name it is used, it is one file.
    const QFileInfo given(file);
    m_file = given.isSymLink() && given.exists() ? given.canonicalFilePath() : file;
    if (auto locked = lock(patience); !locked)
        return locked;
    if (QFile::exists(m_file))
        m_instrument->load(m_file);
    return {};
} catch (const std::runtime_error& error) {
    return std::unexpected(QString::fromUtf8(error.what()));
}

Result<void> SimulatedConnection::lock(std::chrono::seconds patience)
{
    // A lock file that a killed program left empty is only known to be nobody's after this time; one whose
    // owner lives is never taken away.
    constexpr int ownerlessAfter = 1000; // ms
    constexpr std::chrono::milliseconds between(10);
    m_lock.emplace(m_file + ".lock");
    m_lock->setStaleLockTime(ownerlessAfter);
    const QDeadlineTimer deadline(patience);
    while (!m_lock->tryLock(0)) { // by itself it would ask less and less often
        if (m_lock->error() == QLockFile::PermissionError && QFileInfo(m_file).isReadable()) {
            m_lock.reset();
            return {};
        }
        if (m_lock->error() != QLockFile::LockFailedError)
            return std::unexpected(m_file + ": the state cannot be locked; is its folder there and writable?");
        if (deadline.hasExpired())
            return std::unexpected(m_file + ": another command uses this state; try again when it has ended");
        std::this_thread::sleep_for(between);
    }
    return {};
}

Result<void> SimulatedConnection::keep()
try {
    if (!m_file.isEmpty())
        m_instrument->save(m_file);
    return {};
} catch (const std::runtime_error& error) {
    return std::unexpected(QString::fromUtf8(error.what()));
}

void SimulatedConnection::setListener(provider::IControlsListener* listener)
{
    const std::lock_guard guard(m_mutex);
    m_listener = listener;
}

std::vector<provider::ITestHooks::Ability> SimulatedConnection::abilities() const
{
    return {Ability::ReleaseAndOffer, Ability::Notify, Ability::Answer, Ability::PassTime, Ability::WaitUntilQuiet};
}

bool SimulatedConnection::isOffering() const
{
    return std::ranges::any_of(m_instrument->controlKeys(),
                               [this](sdk::Key key) { return m_instrument->findControl(key) != nullptr; });
}

Result<void> SimulatedConnection::releaseControls()
{
    const std::lock_guard guard(m_mutex);
    if (!isOffering() || m_going->exchange(true))
        return {};
    // They go with the last hold, wherever that is let go of.
    std::shared_ptr<void> hold(nullptr, [instrument = m_instrument, going = m_going](void* /*none*/) {
        instrument->releaseControls();
        *going = false;
    });
    if (m_listener != nullptr)
        m_listener->onControlsAboutToBeReleased(std::move(hold));
    return {};
}

Result<void> SimulatedConnection::offerControls()
{
    const std::lock_guard guard(m_mutex);
    if (*m_going)
        return std::unexpected(u"the controls are still going"_s);
    if (isOffering())
        return {};
    m_instrument->offerControls();
    if (m_listener != nullptr)
        m_listener->onControlsOffered();
    return {};
}

Result<void> SimulatedConnection::notify(sdk::Key control)
try {
    if (!exercise(*m_instrument, control))
        return std::unexpected(u"this control notifies nobody"_s);
    return {};
} catch (const std::runtime_error& error) { // a fault, or why it cannot notify now
    return std::unexpected(QString::fromUtf8(error.what()));
}

Result<void> SimulatedConnection::misbehave(sdk::Key control, const QString& operation, const Misbehaviour& how)
{
    const auto found = std::ranges::find_if(
        operations, [&](const NamedOperation& one) { return one.control == control && one.name == operation; });
    if (found == operations.end())
        return std::unexpected(u"there is no operation '%1' that can be made to misbehave"_s.arg(operation));

    const bool hasCallback = found->operation < Operation::PotentiometerList;
    if (!hasCallback && how.answer != Answer::AsUsual && how.answer != Answer::Throwing)
        return std::unexpected(u"'%1' is not answered by a callback; it can only throw"_s.arg(operation));
    Faults& faults = m_instrument->faults();
    faults.heal(found->operation);
    faults.spare(found->operation, how.after);
    switch (how.answer) {
    case Answer::AsUsual:
        break;
    case Answer::WithError:
        faults.answerWith(found->operation, std::make_error_code(std::errc::io_error));
        break;
    case Answer::Late:
        faults.answerLate(found->operation, how.delay);
        break;
    case Answer::Throwing:
        faults.throwFrom(found->operation);
        break;
    case Answer::ReleasingTheControls:
        faults.releaseControlsDuring(found->operation);
        break;
    }
    return {};
}

Result<void> SimulatedConnection::passTime(std::chrono::milliseconds time)
{
    m_instrument->passTime(time);
    return {};
}

Result<void> SimulatedConnection::waitUntilQuiet()
{
    m_instrument->waitUntilQuiet();
    return {};
}

} // namespace tov::simulator
