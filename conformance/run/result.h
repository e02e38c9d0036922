#pragma once

#include "conformance/rules.h"

#include <QJsonObject>
#include <QString>

#include <chrono>

namespace tov::conformance {

/// What a rule comes to.
enum class Verdict {
    Pass,
    Fail,
    NotApplicable, ///< the instrument lacks the control, or its provider the test hook
    Skipped,       ///< looking takes what the user has not allowed
    NotCheckable,  ///< cannot be seen from outside
};

/// As reports name it.
QString named(Verdict verdict);

/// A verdict and what it rests on.
struct Result
{
    Verdict verdict = Verdict::Fail;
    QString seen;    ///< what was looked at, what was found, or why there is no verdict
    QString leftOut; ///< of a pass: what could not be looked at, and why
    std::chrono::milliseconds took{0};
};

/// As it goes from one program to another.
QJsonObject toJson(const Result& result);

/// Of what `toJson()` gave.
Result fromJson(const QJsonObject& json);

} // namespace tov::conformance
