#pragma once

#include <string>
#include <system_error>

namespace tov::testing {

class HomeMadeCategory final : public std::error_category
{
public:
    const char* name() const noexcept override { return "home-made"; }
    std::string message(int value) const override { return "trouble № " + std::to_string(value); }
};

/// An error category of an instrument's own.
inline const std::error_category& homeMade()
{
    static const HomeMadeCategory category;
    return category;
}

} // namespace tov::testing
