#pragma once

#include <version>

#ifndef __cpp_lib_expected
#error "DevicesService needs C++23 with <expected>: -std=c++23 and GCC 12, clang 19 or newer (MSVC: /std:c++latest)"
#endif
