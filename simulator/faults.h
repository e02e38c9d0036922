#pragma once

#include <chrono>
#include <map>
#include <mutex>
#include <optional>
#include <system_error>

namespace tov::simulator {

/// The operations of the simulated instrument that may be made to misbehave. Those from `PotentiometerList` on do
/// not answer by a callback and can only throw.
enum class Operation {
    FileList,                 ///< `IFileMemoryControl::fileList()`
    FileSpace,                ///< `IFileMemoryControl::spaceInfo()`
    FileRead,                 ///< `IFileMemoryControl::readFile()`
    FileWrite,                ///< `IFileMemoryControl::writeFile()`
    FileDelete,               ///< `IFileMemoryControl::deleteFile()`
    MemoryRead,               ///< `IMemoryOperationsControl::read()`
    MemoryWrite,              ///< `IMemoryOperationsControl::write()`
    MemoryErase,              ///< `IMemoryOperationsControl::erase()`
    MemoryCheck,              ///< `IMemoryOperationsControl::integrityCheck()`
    PotentiometerReadEeprom,  ///< `IPotentiometersControl::readFromEeprom()`
    PotentiometerWriteRam,    ///< `IPotentiometersControl::writeToRam()`
    PotentiometerWriteEeprom, ///< `IPotentiometersControl::writeToEeprom()`
    SerialNumberRead,         ///< `IMemorySerialNumberControl::readSerialNumber()`
    SerialNumberWrite,        ///< `IMemorySerialNumberControl::writeSerialNumber()`
    UsbIdWrite,               ///< `IMemoryUsbIdControl::writeUsbId()`

    PotentiometerList, ///< `IPotentiometersControl::potentiometers()`
    UsbIdRead,         ///< `IMemoryUsbIdControl::usbId()`
    UsbIdList,         ///< `IMemoryUsbIdControl::usbIds()`
    TermsRead,         ///< `ISystemTermsControl::termsRecords()`
    TermsWrite,        ///< `ISystemTermsControl::writeSystemTerms()`, with records and without
    TermsFlag,         ///< `ISystemTermsControl::systemTermsFlag()`
    IfswPlan,          ///< `IYqIfswCalibrationControl::frequencyPlan()`
    IfswSave,          ///< `IYqIfswCalibrationControl::saveCalibrationData()`
    FactoryPowerPlan,  ///< `IYqFactoryPowerCalibrationControl::frequencyPlan()`
    FactoryPowerSave,  ///< `IYqFactoryPowerCalibrationControl::saveCalibrationData()`
    CorrectionsRead,   ///< the four queries of `IFactoryCorrectionControl`
    CorrectionSwitch,  ///< `IFactoryCorrectionControl::setEnabled()`

    MemoryObserve,                 ///< `IMemoryOperationsControl::addObserver()`
    SerialNumberObserve,           ///< `IMemorySerialNumberControl::addObserver()`
    TermsObserve,                  ///< `ISystemTermsControl::addObserver()`
    IfswObserve,                   ///< `IYqIfswCalibrationControl::addObserver()`
    FactoryPowerObserve,           ///< `IYqFactoryPowerCalibrationControl::addObserver()`
    CorrectionsObserve,            ///< `IFactoryCorrectionControl::addObserver()`
    TemperatureRead,               ///< `ITemperatureControl::temperature()`
    TemperatureReadModules,        ///< `ITemperatureControl::modulesTemperature()`
    TemperatureObserve,            ///< `ITemperatureControl::addObserver()`
    CalibrationController1Observe, ///< `ICalibrationController::addObserver()` of the first controller
    CalibrationController2Observe, ///< `ICalibrationController::addObserver()` of the second controller

    UlkSynthesisRead,      ///< reading any setting of the Ulk synthesis module
    UlkSynthesisChange,    ///< changing or resetting any, or loading a table
    UlkPowerRead,          ///< reading any setting of the Ulk power module
    UlkPowerChange,        ///< changing or resetting any, or loading a table
    Wn0807SynthesisRead,   ///< reading any setting of the Wn0807 synthesis module
    Wn0807SynthesisChange, ///< changing or resetting any, or loading a table
    Wn0807PowerRead,       ///< reading any setting of the Wn0807 power module
    Wn0807PowerChange,     ///< changing or resetting any, or loading a table
    LoLeakageRead,         ///< reading any setting of the LO leakage
    LoLeakageChange,       ///< changing or resetting any, or loading a table
    Kz515PowerRead,        ///< reading any setting of the Kz515 power module
    Kz515PowerChange,      ///< changing or resetting any, or loading a table
    Kz515SynthesisRead,    ///< reading any setting of the Kz515 synthesis module
    Kz515SynthesisChange,  ///< changing or resetting any, or loading a table
    YqSynthesisRead,       ///< reading any setting of the Yq synthesis module
    YqSynthesisChange,     ///< changing or resetting any, or loading a table
};

/// What is wrong with an operation.
struct Fault
{
    std::optional<std::error_code> error;           ///< what it answers with, if that is forced
    std::optional<std::chrono::microseconds> delay; ///< how late it answers, whatever the timing says
    bool throws = false;                            ///< whether it throws instead
    bool releasesControls = false;                  ///< whether it releases the controls just before it answers
    unsigned int spared = 0;                        ///< how many calls go well before any of that happens
};

/// What is wrong with the instrument, operation by operation: each verb holds for every later call until
/// `heal()`, and several may hold at the same time.
///
/// Thread: *any thread*.
class Faults
{
public:
    /// Answers with `error` instead of doing anything. An error of the number 0 is done and answered with a
    /// value, but keeps its category.
    void answerWith(Operation operation, std::error_code error);

    /// Answers after `delay`, on the simulator's own thread.
    void answerLate(Operation operation, std::chrono::microseconds delay);

    /// Throws `std::runtime_error` instead of returning, and never answers.
    void throwFrom(Operation operation);

    /// Releases the instrument's controls just before it answers; the call that waits still completes.
    void releaseControlsDuring(Operation operation);

    /// Lets the next `calls` calls go well; what is wrong with the operation begins with the one after them.
    void spare(Operation operation, unsigned int calls);

    /// Takes back all of the above.
    void heal(Operation operation);

    /// What is wrong with the call of `operation` that begins now.
    Fault next(Operation operation);

private:
    template <typename Change>
    void change(Operation operation, Change change);

    std::mutex m_mutex; // guards all below
    std::map<Operation, Fault> m_faults;
};

} // namespace tov::simulator
