#pragma once

#include "devices/cxx23.h"
#include "sdk/key.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <tuple>
#include <utility>

namespace sdk {
class IFactoryCorrectionControl;
class ITemperatureControl;
} // namespace sdk

namespace sdk::service {
class IFileMemoryControl;
class IKZ515PowerControl;
class IKZ515SynthesisControl;
class ILoLeakageControl;
class IMemoryOperationsControl;
class IMemorySerialNumberControl;
class IMemoryUsbIdControl;
class IPotentiometersControl;
class ISystemTermsControl;
class IUlkPowerControl;
class IUlkSynthesisControl;
class IWn0807PowerModuleControl;
class IWn0807SynthesisControl;
class IYqFactoryPowerCalibrationControl;
class IYqIfswCalibrationControl;
class IYqSynthesisControl;
} // namespace sdk::service

namespace sdk::service::calibrations {
class ICalibrationController;
} // namespace sdk::service::calibrations

namespace tov::devices::service {
class IFileMemoryControl;
class IMemoryOperationsControl;
class IPotentiometersControl;
class ISerialNumberControl;
class ISystemTermsControl;
class IUsbIdControl;
class SdkCalibrationControlHandle;
class SdkFactoryCorrectionControl;
class SdkFileMemoryControl;
class SdkKz515PowerControl;
class SdkKz515SynthesisControl;
class SdkLoLeakageControl;
class SdkMemoryOperationsControl;
class SdkMemoryUsbId;
class SdkPotentiometersControl;
class SdkSerialNumberControl;
class SdkSystemTermsControl;
class SdkTemperatureControl;
class SdkUlkPowerControl;
class SdkUlkSynthesisControl;
class SdkWn0807PowerControl;
class SdkWn0807SynthesisControl;
class SdkYqFactoryPowerCalibrationControl;
class SdkYqIfswCalibrationControl;
class SdkYqSynthesisControl;
} // namespace tov::devices::service

namespace tov::devices {

/// The two keys of one kind of control: what the application's registry and what the instrument call it. They are fixed
/// for ever and not derived from anything.
struct ControlKeys
{
    std::uint64_t registry = 0; ///< key in the application's `ControlRegistry`
    sdk::Key sdk;               ///< key for `sdk::IVna::findControl()`

    /// Whether both are those of the same kind.
    friend bool operator==(const ControlKeys&, const ControlKeys&) = default;
};

/// One kind of control as people and programs name it.
struct ControlName
{
    std::string_view name; ///< as the console spells it
    ControlKeys keys;      ///< what the registry and the instrument call it

    /// Whether both are the same kind.
    friend bool operator==(const ControlName&, const ControlName&) = default;
};

/// A kind of control together with the type of it: the `std::any` that the registry gives holds a
/// `std::shared_ptr<Exposed>`, exactly.
template <typename Exposed>
struct Control : ControlName
{
};

/// All about a kind of control: the instrument offers it as a `SdkIface`, on which an `Adapter` is built.
template <typename SdkIface, typename Exposed, typename Adapter = Exposed>
struct ControlKind : Control<Exposed>
{
};

/// Every kind of control.
namespace controls {

/// The small file store in the instrument's memory.
inline constexpr ControlKind<sdk::service::IFileMemoryControl, service::IFileMemoryControl,
                             service::SdkFileMemoryControl>
    fileMemory{"file-memory", {0xE85F16739B17B339, {0xF667DF356DF31CE4}}};

/// The digital potentiometers.
inline constexpr ControlKind<sdk::service::IPotentiometersControl, service::IPotentiometersControl,
                             service::SdkPotentiometersControl>
    potentiometers{"potentiometers", {0xC51B6FB2AE2584D2, {0x88798A0EA0BFE22B}}};

/// The USB identifier in the instrument's memory.
inline constexpr ControlKind<sdk::service::IMemoryUsbIdControl, service::IUsbIdControl, service::SdkMemoryUsbId> usbId{
    "usb-id", {0xEC20F733872B6AC0, {0x8BBA7F494AD7C259}}};

/// The serial number in the instrument's memory.
inline constexpr ControlKind<sdk::service::IMemorySerialNumberControl, service::ISerialNumberControl,
                             service::SdkSerialNumberControl>
    serialNumber{"serial-number", {0x2E23977C2578988D, {0x5C028B97CC332087}}};

/// Operations on the instrument's memory as a whole.
inline constexpr ControlKind<sdk::service::IMemoryOperationsControl, service::IMemoryOperationsControl,
                             service::SdkMemoryOperationsControl>
    memoryOperations{"memory-operations", {0x5664961726404671, {0x5D412BFD18B02258}}};

/// Synthesis settings of the Ulk module.
inline constexpr ControlKind<sdk::service::IUlkSynthesisControl, service::SdkUlkSynthesisControl> ulkSynthesis{
    "ulk-synthesis", {0xB6C338D276CE98FB, {0x7922B1012A0983AF}}};

/// Power settings of the Ulk module.
inline constexpr ControlKind<sdk::service::IUlkPowerControl, service::SdkUlkPowerControl> ulkPower{
    "ulk-power", {0x897C141E29E7E690, {0x3C96BF415FCCAE8A}}};

/// Synthesis settings of the Wn0807 module.
inline constexpr ControlKind<sdk::service::IWn0807SynthesisControl, service::SdkWn0807SynthesisControl> wn0807Synthesis{
    "wn0807-synthesis", {0x2B979D4013CDEECD, {0x71DB0E7EC9BF38C7}}};

/// Power settings of the Wn0807 module.
inline constexpr ControlKind<sdk::service::IWn0807PowerModuleControl, service::SdkWn0807PowerControl> wn0807Power{
    "wn0807-power", {0xDBAEBEE9402174AE, {0x2601FD095CF599F2}}};

/// The LO leakage function.
inline constexpr ControlKind<sdk::service::ILoLeakageControl, service::SdkLoLeakageControl> loLeakage{
    "lo-leakage", {0x39CE7F28FB8C58BD, {0x33F09CC532B7707A}}};

/// Power chain of the Kz515 module.
inline constexpr ControlKind<sdk::service::IKZ515PowerControl, service::SdkKz515PowerControl> kz515Power{
    "kz515-power", {0xEAF356A0B2EF79A5, {0x2F10DDD457C35149}}};

/// Reference frequency of the Kz515 module.
inline constexpr ControlKind<sdk::service::IKZ515SynthesisControl, service::SdkKz515SynthesisControl> kz515Synthesis{
    "kz515-synthesis", {0x374B2CB5EF097BEE, {0x53C0E0BA0DE251E0}}};

/// Intermediate-frequency (IF) settings of the Yq module.
inline constexpr ControlKind<sdk::service::IYqSynthesisControl, service::SdkYqSynthesisControl> yqSynthesis{
    "yq-synthesis", {0xA045AB34EA41DF44, {0xF636764463DEE854}}};

/// The system error terms that the instrument stores.
inline constexpr ControlKind<sdk::service::ISystemTermsControl, service::ISystemTermsControl,
                             service::SdkSystemTermsControl>
    systemTerms{"system-terms", {0x10B13A8FE293BF50, {0x1E7084D947290478}}};

/// The calibration of the Yq module's IF switch.
inline constexpr ControlKind<sdk::service::IYqIfswCalibrationControl, service::SdkYqIfswCalibrationControl>
    ifswCalibration{"ifsw-calibration", {0x2AB54BEB7022049E, {0xA8C748BB3B2C656F}}};

/// The factory power calibration of the Yq module.
inline constexpr ControlKind<sdk::service::IYqFactoryPowerCalibrationControl,
                             service::SdkYqFactoryPowerCalibrationControl>
    factoryPowerCalibration{"factory-power-calibration", {0xA95918A8462C534C, {0x4797D9E37C985D85}}};

/// The factory corrections.
inline constexpr ControlKind<sdk::IFactoryCorrectionControl, service::SdkFactoryCorrectionControl> factoryCorrections{
    "factory-corrections", {0x1A94C41B6C234D42, {0xC425CF06760CA2B4}}};

/// The temperatures of the instrument and of its modules.
inline constexpr ControlKind<sdk::ITemperatureControl, service::SdkTemperatureControl> temperature{
    "temperature", {0xEBA4BA7306E6B9A2, {0xDDCECFEBDB4F5570}}};

/// The first of the two calibration controllers.
inline constexpr ControlKind<sdk::service::calibrations::ICalibrationController, service::SdkCalibrationControlHandle>
    calibrationController1{"calibration-controller-1", {0x6DD4C2F3A3D1AAAB, {0x94A0057F903ADBEC}}};

/// The second of the two calibration controllers.
inline constexpr ControlKind<sdk::service::calibrations::ICalibrationController, service::SdkCalibrationControlHandle>
    calibrationController2{"calibration-controller-2", {0x0B8EE0A3CE2543AB, {0x41A4A601B7307494}}};

/// All of the above, typed, in the order of registration.
inline constexpr std::tuple kinds{
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
};

/// Names and keys of what a tuple of kinds holds.
template <typename Kinds, std::size_t... index>
constexpr auto namesOf(const Kinds& each, std::index_sequence<index...> /*all*/)
{
    return std::to_array<ControlName>({std::get<index>(each)...});
}

/// Names and keys of all of them, in the same order.
inline constexpr auto all = namesOf(kinds, std::make_index_sequence<std::tuple_size_v<decltype(kinds)>>());

/// The kind of this name; null when there is none.
constexpr const ControlName* find(std::string_view name)
{
    for (const ControlName& each : all)
        if (each.name == name)
            return &each;
    return nullptr;
}

} // namespace controls

} // namespace tov::devices
