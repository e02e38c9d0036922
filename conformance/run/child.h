#pragma once

#include "conformance/run/result.h"

#include <QJsonObject>
#include <QString>
#include <QStringList>

#include <chrono>

namespace tov::conformance {

/// What a check came to in a process of its own.
struct ChildRun
{
    Result result;
    QJsonObject instrument; ///< empty when it was not opened
    QString error;          ///< why it could not be opened, if it could not
    QString goOnAfter;      ///< the operation that ended the process, as it may; empty if none did
};

/// Runs this program with `arguments`, which have it make one check. That it crashes, or says nothing for longer than
/// `silence`, is a finding.
ChildRun runInChild(const QStringList& arguments, std::chrono::milliseconds silence);

} // namespace tov::conformance
