#pragma once

#include "devices/controlkeys.h"
#include "service/calibration/sdkcalibrationcontrolhandle.h"
#include "service/calibration/sdkfactorycorrectioncontrol.h"
#include "service/calibration/sdkyqfactorypowercalibrationcontrol.h"
#include "service/calibration/sdkyqifswcalibrationcontrol.h"
#include "service/memory/ifilememorycontrol.h"
#include "service/memory/imemoryoperationscontrol.h"
#include "service/memory/ipotentiometerscontrol.h"
#include "service/memory/iserialnumbercontrol.h"
#include "service/memory/isystemtermscontrol.h"
#include "service/memory/iusbidcontrol.h"
#include "service/monitoring/sdktemperaturecontrol.h"
#include "service/tuning/sdkkz515powercontrol.h"
#include "service/tuning/sdkkz515synthesiscontrol.h"
#include "service/tuning/sdkloleakagecontrol.h"
#include "service/tuning/sdkulkpowercontrol.h"
#include "service/tuning/sdkulksynthesiscontrol.h"
#include "service/tuning/sdkwn0807powercontrol.h"
#include "service/tuning/sdkwn0807synthesiscontrol.h"
#include "service/tuning/sdkyqsynthesiscontrol.h"

#include <array>
#include <string_view>

namespace tov::host {

/// One kind of control as people and programs name it.
struct ControlName
{
    std::string_view name;     ///< as the console spells it
    devices::ControlKeys keys; ///< what the registry and the instrument call it
};

/// A kind of control together with the type that the registry hands out for it.
template <typename Exposed>
struct Control : ControlName
{
};

/// Every kind of control, with the name that the console uses.
namespace controls {

/// The small file store in the instrument's memory.
inline constexpr Control<devices::service::IFileMemoryControl> fileMemory{
    {"file-memory", devices::controlkeys::fileMemory}};

/// The digital potentiometers.
inline constexpr Control<devices::service::IPotentiometersControl> potentiometers{
    {"potentiometers", devices::controlkeys::potentiometers}};

/// The USB identifier in the instrument's memory.
inline constexpr Control<devices::service::IUsbIdControl> usbId{{"usb-id", devices::controlkeys::usbId}};

/// The serial number in the instrument's memory.
inline constexpr Control<devices::service::ISerialNumberControl> serialNumber{
    {"serial-number", devices::controlkeys::serialNumber}};

/// Operations on the instrument's memory as a whole.
inline constexpr Control<devices::service::IMemoryOperationsControl> memoryOperations{
    {"memory-operations", devices::controlkeys::memoryOperations}};

/// Synthesis settings of the Ulk module.
inline constexpr Control<devices::service::SdkUlkSynthesisControl> ulkSynthesis{
    {"ulk-synthesis", devices::controlkeys::ulkSynthesis}};

/// Power settings of the Ulk module.
inline constexpr Control<devices::service::SdkUlkPowerControl> ulkPower{{"ulk-power", devices::controlkeys::ulkPower}};

/// Synthesis settings of the Wn0807 module.
inline constexpr Control<devices::service::SdkWn0807SynthesisControl> wn0807Synthesis{
    {"wn0807-synthesis", devices::controlkeys::wn0807Synthesis}};

/// Power settings of the Wn0807 module.
inline constexpr Control<devices::service::SdkWn0807PowerControl> wn0807Power{
    {"wn0807-power", devices::controlkeys::wn0807Power}};

/// The LO leakage function.
inline constexpr Control<devices::service::SdkLoLeakageControl> loLeakage{
    {"lo-leakage", devices::controlkeys::loLeakage}};

/// Power chain of the Kz515 module.
inline constexpr Control<devices::service::SdkKz515PowerControl> kz515Power{
    {"kz515-power", devices::controlkeys::kz515Power}};

/// Reference frequency of the Kz515 module.
inline constexpr Control<devices::service::SdkKz515SynthesisControl> kz515Synthesis{
    {"kz515-synthesis", devices::controlkeys::kz515Synthesis}};

/// Intermediate-frequency (IF) settings of the Yq module.
inline constexpr Control<devices::service::SdkYqSynthesisControl> yqSynthesis{
    {"yq-synthesis", devices::controlkeys::yqSynthesis}};

/// The system error terms that the instrument stores.
inline constexpr Control<devices::service::ISystemTermsControl> systemTerms{
    {"system-terms", devices::controlkeys::systemTerms}};

/// The calibration of the Yq module's IF switch.
inline constexpr Control<devices::service::SdkYqIfswCalibrationControl> ifswCalibration{
    {"ifsw-calibration", devices::controlkeys::ifswCalibration}};

/// The factory power calibration of the Yq module.
inline constexpr Control<devices::service::SdkYqFactoryPowerCalibrationControl> factoryPowerCalibration{
    {"factory-power-calibration", devices::controlkeys::factoryPowerCalibration}};

/// The factory corrections.
inline constexpr Control<devices::service::SdkFactoryCorrectionControl> factoryCorrections{
    {"factory-corrections", devices::controlkeys::factoryCorrections}};

/// The temperatures of the instrument and of its modules.
inline constexpr Control<devices::service::SdkTemperatureControl> temperature{
    {"temperature", devices::controlkeys::temperature}};

/// The first of the two calibration controllers.
inline constexpr Control<devices::service::SdkCalibrationControlHandle> calibrationController1{
    {"calibration-controller-1", devices::controlkeys::calibrationController1}};

/// The second of the two calibration controllers.
inline constexpr Control<devices::service::SdkCalibrationControlHandle> calibrationController2{
    {"calibration-controller-2", devices::controlkeys::calibrationController2}};

/// All of the above, in the order of registration.
inline constexpr auto all = std::to_array<ControlName>({
    fileMemory,
    potentiometers,
    usbId,
    serialNumber,
    memoryOperations,
    ulkSynthesis,
    ulkPower,
    wn0807Synthesis,
    wn0807Power,
    loLeakage,
    kz515Power,
    kz515Synthesis,
    yqSynthesis,
    systemTerms,
    ifswCalibration,
    factoryPowerCalibration,
    factoryCorrections,
    temperature,
    calibrationController1,
    calibrationController2,
});

} // namespace controls

} // namespace tov::host
