# What holds for every target: where it lands, which language it speaks, what it must not do.

set(CMAKE_RUNTIME_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/bin")
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/lib")
set(CMAKE_ARCHIVE_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/lib")

if(WIN32)
    set(CMAKE_SHARED_LIBRARY_PREFIX "") # DevicesService.dll with every compiler
endif()

set(CMAKE_CXX_STANDARD 23)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)

if(DEVICESSERVICE_SANITIZE)
    add_compile_options(-fsanitize=${DEVICESSERVICE_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    add_link_options(-fsanitize=${DEVICESSERVICE_SANITIZE})
endif()

# Turns an option off where the package that it needs is missing, and says so.
macro(build_only_with package version debian_package option)
    if(${option})
        find_package(${package} ${version} QUIET)
        if(NOT ${package}_FOUND)
            message(STATUS "${option} is off: ${package} ${version} is missing (Debian: ${debian_package})")
            set(${option} OFF)
        endif()
    endif()
endmacro()

# What the simulated instrument, the host library and the programs include is compiled once for all of them.
function(share_precompiled_headers target)
    if(NOT TARGET ${target})
        return()
    endif()
    get_property(first GLOBAL PROPERTY devicesservice_precompiled)
    if(first)
        target_precompile_headers(${target} REUSE_FROM ${first})
    else()
        target_precompile_headers(${target} PRIVATE
            <QCborMap> <QJsonObject> <QObject> <QString> <functional> <memory> <mutex> <string> <vector>)
        set_property(GLOBAL PROPERTY devicesservice_precompiled ${target})
    endif()
endfunction()

# What opens an instrument by a plug-in opens the simulated one when none is named, where that is built.
function(needs_a_provider target)
    if(TARGET simulated-provider)
        add_dependencies(${target} simulated-provider)
    endif()
endfunction()

# Targets that hold code of the library, which its headers bring to whoever includes them, record what of it ran.
function(record_coverage)
    if(DEVICESSERVICE_COVERAGE)
        foreach(target IN LISTS ARGN)
            target_compile_options(${target} PRIVATE -fprofile-instr-generate -fcoverage-mapping -fcoverage-mcdc)
            target_link_options(${target} PRIVATE -fprofile-instr-generate)
        endforeach()
    endif()
endfunction()

# Where headers are installed; below it they have the paths by which they are included.
include(GNUInstallDirs)
set(DEVICESSERVICE_INCLUDE_DIR "${CMAKE_INSTALL_INCLUDEDIR}/DevicesService")

# Where the host library looks for providers, from the folder that the library DevicesService is in; and so where they
# are built and installed.
if(WIN32)
    set(DEVICESSERVICE_PROVIDER_DIR "providers") # beside the programs
    set(DEVICESSERVICE_PROVIDER_OUTPUT_DIR "${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/${DEVICESSERVICE_PROVIDER_DIR}")
    set(DEVICESSERVICE_PROVIDER_INSTALL_DIR "${CMAKE_INSTALL_BINDIR}/${DEVICESSERVICE_PROVIDER_DIR}")
else()
    set(DEVICESSERVICE_PROVIDER_DIR "DevicesService/providers")
    set(DEVICESSERVICE_PROVIDER_OUTPUT_DIR "${CMAKE_LIBRARY_OUTPUT_DIRECTORY}/${DEVICESSERVICE_PROVIDER_DIR}")
    set(DEVICESSERVICE_PROVIDER_INSTALL_DIR "${CMAKE_INSTALL_LIBDIR}/${DEVICESSERVICE_PROVIDER_DIR}")
endif()

# Headers that the build writes (export macros, the version), included as <folder>/<name>.
set(DEVICESSERVICE_GENERATED_DIR "${PROJECT_BINARY_DIR}/include")

add_library(house_warnings INTERFACE)
target_compile_options(house_warnings INTERFACE
    $<$<CXX_COMPILER_ID:GNU,Clang>:-Wall -Wextra -Wpedantic -Wconversion -Wsign-conversion -Wshadow
        -Wnon-virtual-dtor -Woverloaded-virtual -Wold-style-cast -Wcast-align -Wcast-qual
        -Wdouble-promotion -Wformat=2 -Wnull-dereference -Wextra-semi -Wunused>
    $<$<CXX_COMPILER_ID:GNU>:-Wduplicated-cond -Wduplicated-branches -Wlogical-op>
    $<$<CXX_COMPILER_ID:MSVC>:/W4 /permissive- /wd4251 /wd4275>)
