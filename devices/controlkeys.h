#pragma once

#include "sdk/key.h"

#include <cstdint>

namespace tov::devices {

/// The two keys of one kind of control: what the application's registry and what the instrument call it.
struct ControlKeys
{
    std::uint64_t registry = 0; ///< key in the application's `ControlRegistry`
    sdk::Key sdk;               ///< key for `sdk::IVna::findControl()`
};

/// The keys of every kind of control, fixed for ever and not derived from anything. With each goes the type of the
/// control: the `std::any` that the registry gives holds a `std::shared_ptr` of exactly this type.
namespace controlkeys {

/// File memory: `service::IFileMemoryControl`.
inline constexpr ControlKeys fileMemory{0xE85F16739B17B339, {0xF667DF356DF31CE4}};

/// Potentiometers: `service::IPotentiometersControl`.
inline constexpr ControlKeys potentiometers{0xC51B6FB2AE2584D2, {0x88798A0EA0BFE22B}};

/// USB identifier: `service::IUsbIdControl`.
inline constexpr ControlKeys usbId{0xEC20F733872B6AC0, {0x8BBA7F494AD7C259}};

/// Serial number: `service::ISerialNumberControl`.
inline constexpr ControlKeys serialNumber{0x2E23977C2578988D, {0x5C028B97CC332087}};

/// Operations on the whole memory: `service::IMemoryOperationsControl`.
inline constexpr ControlKeys memoryOperations{0x5664961726404671, {0x5D412BFD18B02258}};

/// Synthesis of the Ulk module: `service::SdkUlkSynthesisControl`.
inline constexpr ControlKeys ulkSynthesis{0xB6C338D276CE98FB, {0x7922B1012A0983AF}};

/// Power of the Ulk module: `service::SdkUlkPowerControl`.
inline constexpr ControlKeys ulkPower{0x897C141E29E7E690, {0x3C96BF415FCCAE8A}};

/// Synthesis of the Wn0807 module: `service::SdkWn0807SynthesisControl`.
inline constexpr ControlKeys wn0807Synthesis{0x2B979D4013CDEECD, {0x71DB0E7EC9BF38C7}};

/// Power of the Wn0807 module: `service::SdkWn0807PowerControl`.
inline constexpr ControlKeys wn0807Power{0xDBAEBEE9402174AE, {0x2601FD095CF599F2}};

/// LO leakage: `service::SdkLoLeakageControl`.
inline constexpr ControlKeys loLeakage{0x39CE7F28FB8C58BD, {0x33F09CC532B7707A}};

/// Power of the Kz515 module: `service::SdkKz515PowerControl`.
inline constexpr ControlKeys kz515Power{0xEAF356A0B2EF79A5, {0x2F10DDD457C35149}};

/// Synthesis of the Kz515 module: `service::SdkKz515SynthesisControl`.
inline constexpr ControlKeys kz515Synthesis{0x374B2CB5EF097BEE, {0x53C0E0BA0DE251E0}};

/// Synthesis of the Yq module: `service::SdkYqSynthesisControl`.
inline constexpr ControlKeys yqSynthesis{0xA045AB34EA41DF44, {0xF636764463DEE854}};

/// System error terms: `service::ISystemTermsControl`.
inline constexpr ControlKeys systemTerms{0x10B13A8FE293BF50, {0x1E7084D947290478}};

/// Calibration of the IF switch: `service::SdkYqIfswCalibrationControl`.
inline constexpr ControlKeys ifswCalibration{0x2AB54BEB7022049E, {0xA8C748BB3B2C656F}};

/// Factory calibration of the power: `service::SdkYqFactoryPowerCalibrationControl`.
inline constexpr ControlKeys factoryPowerCalibration{0xA95918A8462C534C, {0x4797D9E37C985D85}};

/// Factory corrections: `service::SdkFactoryCorrectionControl`.
inline constexpr ControlKeys factoryCorrections{0x1A94C41B6C234D42, {0xC425CF06760CA2B4}};

/// Temperatures of the instrument and of its modules: `service::SdkTemperatureControl`.
inline constexpr ControlKeys temperature{0xEBA4BA7306E6B9A2, {0xDDCECFEBDB4F5570}};

/// First calibration controller: `service::SdkCalibrationControlHandle`.
inline constexpr ControlKeys calibrationController1{0x6DD4C2F3A3D1AAAB, {0x94A0057F903ADBEC}};

/// Second calibration controller: `service::SdkCalibrationControlHandle`.
inline constexpr ControlKeys calibrationController2{0x0B8EE0A3CE2543AB, {0x41A4A601B7307494}};

} // namespace controlkeys

} // namespace tov::devices
