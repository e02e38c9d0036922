#pragma once

#include <QJsonValue>

#include <cstdint>
#include <string>

namespace tov::inline tools {

/// A number with as few digits as give the same number back when they are read.
std::string toText(double number);

/// A reading without the digits that only the way of keeping it has.
double asMeasured(double reading);

/// A setting's value as people read it: on or off, a number, or a list of those.
std::string toText(const QJsonValue& value);

/// `number` in hexadecimal, with 0x and at least this many digits.
std::string hexadecimal(std::uint64_t number, int digits);

} // namespace tov::inline tools
