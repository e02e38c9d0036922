#pragma once

#include "conformance/bench/bench.h"

#include <QByteArray>

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace tov::conformance {

/// Calls every operation of the control that reads and is not answered by a callback, each once.
///
/// Thread: *any thread*.
void readAll(const devices::ControlName& kind, const std::shared_ptr<void>& control);

/// What an operation gives by a view or a reference.
struct View
{
    devices::ControlName control;
    std::string name; ///< of the operation
    /// Asks for it; what comes of it reads it, as often as one likes while the control lives. On any thread.
    std::function<std::function<QByteArray()>(const std::shared_ptr<void>&)> take;
    bool changesByItself = false; ///< whether it may be another one the next time it is asked for
};

const std::vector<View>& views();

} // namespace tov::conformance
