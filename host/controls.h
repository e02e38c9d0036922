#pragma once

#include "devices/controlkeys.h"
#include "service/memory/ifilememorycontrol.h"
#include "service/memory/imemoryoperationscontrol.h"
#include "service/memory/ipotentiometerscontrol.h"
#include "service/memory/iserialnumbercontrol.h"
#include "service/memory/isystemtermscontrol.h"
#include "service/memory/iusbidcontrol.h"
#include "service/tuning/sdkloleakagecontrol.h"
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
inline constexpr Control<devices::service::SdkLoLeakageControl> loLeakage{
    {"lo-leakage", devices::controlkeys::loLeakage}};
inline constexpr Control<devices::service::SdkYqSynthesisControl> yqSynthesis{
    {"yq-synthesis", devices::controlkeys::yqSynthesis}};
inline constexpr Control<devices::service::ISystemTermsControl> systemTerms{
    {"system-terms", devices::controlkeys::systemTerms}};

/// All of the above, in the order of registration.
inline constexpr std::array<ControlName, 8> all = {fileMemory,       potentiometers, usbId,       serialNumber,
                                                   memoryOperations, loLeakage,      yqSynthesis, systemTerms};

} // namespace controls

} // namespace tov::host
