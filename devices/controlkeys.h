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

inline constexpr ControlKeys loLeakage{0x39CE7F28FB8C58BD, {0x33F09CC532B7707A}};
inline constexpr ControlKeys yqSynthesis{0xA045AB34EA41DF44, {0xF636764463DEE854}};

} // namespace controlkeys

} // namespace tov::devices
