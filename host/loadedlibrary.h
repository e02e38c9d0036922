#pragma once

#include <QString>

namespace tov::host {

/// Full path of the DevicesService library that this process has loaded, with links resolved; empty
/// when the system does not tell.
///
/// Thread: *any thread*.
QString loadedLibraryPath();

} // namespace tov::host
