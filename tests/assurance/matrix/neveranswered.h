#pragma once

#include <functional>
#include <string>

namespace tov::testing {

/// Has `call` run in a child process, and kills it when it has called what it is given and sleeps for ever. What it did
/// instead, or nothing.
std::string waitsForEver(const std::function<void(const std::function<void()>& whenCalled)>& call);

} // namespace tov::testing
