# Windows x86-64 by MinGW-w64 with posix threads; what the build runs, runs under wine. scripts/windows-sysroot.sh
# fills the folder that holds what the build links.

set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)

set(CMAKE_C_COMPILER x86_64-w64-mingw32-gcc-posix)
set(CMAKE_CXX_COMPILER x86_64-w64-mingw32-g++-posix)
set(CMAKE_RC_COMPILER x86_64-w64-mingw32-windres)
set(CMAKE_CXX_FLAGS_INIT "--param=ggc-min-heapsize=600000") # collecting garbage takes longer than having it
set(CMAKE_CROSSCOMPILING_EMULATOR "${CMAKE_CURRENT_LIST_DIR}/../../scripts/wine.sh")

set(windows_sysroot "$ENV{DEVICESSERVICE_WINDOWS_SYSROOT}")
if(NOT windows_sysroot)
    set(windows_sysroot "$ENV{HOME}/.cache/DevicesService/windows")
endif()
set(CMAKE_FIND_ROOT_PATH "${windows_sysroot}")
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# Qt's tools are the machine's own.
set(QT_HOST_PATH /usr CACHE PATH "")
set(QT_HOST_PATH_CMAKE_DIR "/usr/lib/${CMAKE_HOST_SYSTEM_PROCESSOR}-linux-gnu/cmake" CACHE PATH "")
