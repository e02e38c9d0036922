#pragma once

#include "devices/controlkeys.h"
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

inline constexpr Control<devices::service::SdkLoLeakageControl> loLeakage{
    {"lo-leakage", devices::controlkeys::loLeakage}};
inline constexpr Control<devices::service::SdkYqSynthesisControl> yqSynthesis{
    {"yq-synthesis", devices::controlkeys::yqSynthesis}};

/// All of the above, in the order of registration.
inline constexpr std::array<ControlName, 2> all = {loLeakage, yqSynthesis};

} // namespace controls

} // namespace tov::host
