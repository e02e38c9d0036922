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
    std::string_view name;
    devices::ControlKeys keys;
};

/// A kind of control together with the type that the registry hands out for it.
template <typename Exposed>
struct Control : ControlName
{
};

/// Every kind of control, with the name that the console uses.
namespace controls {

inline constexpr Control<devices::service::IFileMemoryControl> fileMemory{
    {"file-memory", devices::controlkeys::fileMemory}};
inline constexpr Control<devices::service::IPotentiometersControl> potentiometers{
    {"potentiometers", devices::controlkeys::potentiometers}};
inline constexpr Control<devices::service::IUsbIdControl> usbId{{"usb-id", devices::controlkeys::usbId}};
inline constexpr Control<devices::service::ISerialNumberControl> serialNumber{
    {"serial-number", devices::controlkeys::serialNumber}};
inline constexpr Control<devices::service::IMemoryOperationsControl> memoryOperations{
    {"memory-operations", devices::controlkeys::memoryOperations}};
inline constexpr Control<devices::service::SdkUlkSynthesisControl> ulkSynthesis{
    {"ulk-synthesis", devices::controlkeys::ulkSynthesis}};
inline constexpr Control<devices::service::SdkUlkPowerControl> ulkPower{{"ulk-power", devices::controlkeys::ulkPower}};
inline constexpr Control<devices::service::SdkWn0807SynthesisControl> wn0807Synthesis{
    {"wn0807-synthesis", devices::controlkeys::wn0807Synthesis}};
inline constexpr Control<devices::service::SdkWn0807PowerControl> wn0807Power{
    {"wn0807-power", devices::controlkeys::wn0807Power}};
inline constexpr Control<devices::service::SdkLoLeakageControl> loLeakage{
    {"lo-leakage", devices::controlkeys::loLeakage}};
inline constexpr Control<devices::service::SdkKz515PowerControl> kz515Power{
    {"kz515-power", devices::controlkeys::kz515Power}};
inline constexpr Control<devices::service::SdkKz515SynthesisControl> kz515Synthesis{
    {"kz515-synthesis", devices::controlkeys::kz515Synthesis}};
inline constexpr Control<devices::service::SdkYqSynthesisControl> yqSynthesis{
    {"yq-synthesis", devices::controlkeys::yqSynthesis}};
inline constexpr Control<devices::service::ISystemTermsControl> systemTerms{
    {"system-terms", devices::controlkeys::systemTerms}};

inline constexpr Control<devices::service::SdkYqIfswCalibrationControl> ifswCalibration{
    {"ifsw-calibration", devices::controlkeys::ifswCalibration}};
inline constexpr Control<devices::service::SdkYqFactoryPowerCalibrationControl> factoryPowerCalibration{
    {"factory-power-calibration", devices::controlkeys::factoryPowerCalibration}};
inline constexpr Control<devices::service::SdkFactoryCorrectionControl> factoryCorrections{
    {"factory-corrections", devices::controlkeys::factoryCorrections}};
inline constexpr Control<devices::service::SdkTemperatureControl> temperature{
    {"temperature", devices::controlkeys::temperature}};
inline constexpr Control<devices::service::SdkCalibrationControlHandle> calibrationController1{
    {"calibration-controller-1", devices::controlkeys::calibrationController1}};
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
