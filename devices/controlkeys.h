#pragma once

#include "sdk/key.h"

#include <cstdint>

namespace tov::devices {

/// The two keys of one kind of control: what the application's registry and what the instrument call it.
struct ControlKeys
{
    std::uint64_t registry = 0;
    sdk::Key sdk;
};

/// The keys of every kind of control, fixed for ever and not derived from anything.
namespace controlkeys {

inline constexpr ControlKeys fileMemory{0xE85F16739B17B339, {0xF667DF356DF31CE4}};
inline constexpr ControlKeys potentiometers{0xC51B6FB2AE2584D2, {0x88798A0EA0BFE22B}};
inline constexpr ControlKeys usbId{0xEC20F733872B6AC0, {0x8BBA7F494AD7C259}};
inline constexpr ControlKeys serialNumber{0x2E23977C2578988D, {0x5C028B97CC332087}};
inline constexpr ControlKeys memoryOperations{0x5664961726404671, {0x5D412BFD18B02258}};
inline constexpr ControlKeys loLeakage{0x39CE7F28FB8C58BD, {0x33F09CC532B7707A}};
inline constexpr ControlKeys yqSynthesis{0xA045AB34EA41DF44, {0xF636764463DEE854}};
inline constexpr ControlKeys systemTerms{0x10B13A8FE293BF50, {0x1E7084D947290478}};

} // namespace controlkeys

} // namespace tov::devices
