# Checks that imports run one way: console, workbench -> tools -> host, conformance, python -> host -> (service,
# provider) -> devices -> platform/sdk. The simulator stands behind provider.
#
# cmake -DSOURCE_DIR=<project> -P imports.cmake

cmake_minimum_required(VERSION 3.25)

# Says which folders and headers the sources of `folder` may import; a folder is given by its whole path, or by its
# first part for all that is in it.
function(may_import folder)
    file(GLOB_RECURSE files "${SOURCE_DIR}/${folder}/*.h" "${SOURCE_DIR}/${folder}/*.cpp" "${SOURCE_DIR}/${folder}/*.in")
    if(NOT files)
        message(SEND_ERROR "${folder} holds no sources")
    endif()
    foreach(file IN LISTS files)
        file(STRINGS "${file}" includes REGEX "^#include \"")
        foreach(include IN LISTS includes)
            if(NOT include MATCHES "^#include \"((([a-z]+)[a-z0-9/_]*)/[a-z0-9_]+\\.h)\"")
                message(SEND_ERROR "${file}: not included by its full path: ${include}")
            elseif(NOT CMAKE_MATCH_3 IN_LIST ARGN AND NOT CMAKE_MATCH_2 IN_LIST ARGN AND NOT CMAKE_MATCH_1 IN_LIST ARGN)
                message(SEND_ERROR "${file}: ${folder} may not import ${CMAKE_MATCH_1}")
            endif()
        endforeach()
    endforeach()
endfunction()

may_import(platform/sdk sdk)
may_import(platform/application devices sdk utils vna)
may_import(devices devices sdk)
may_import(service service devices sdk utils vna)
may_import(provider provider devices/cxx23.h sdk)
may_import(simulator simulator provider devices sdk)
foreach(room IN ITEMS calibration memory monitoring support tuning)
    may_import(simulator/${room} simulator devices sdk)
endforeach()
may_import(simulator/plugin simulator provider devices sdk)
may_import(testing testing devices/cxx23.h sdk)
may_import(host host provider service devices sdk utils vna)
may_import(conformance conformance host provider service devices sdk)
may_import(python python host provider service devices sdk utils vna)
may_import(console console tools host provider service devices sdk utils vna)

# The rooms of the console, each of which may import those above it.
set(above "")
foreach(room IN ITEMS terminal session whole commandline notifications commands)
    list(APPEND above console/${room})
    may_import(console/${room} ${above} tools host provider service devices sdk utils vna)
endforeach()

# What the programs for people share.
may_import(tools tools host provider service devices sdk utils vna)
may_import(tools/text tools/text tools/errors.h service/calibration)
may_import(tools/files tools/files tools/text tools/errors.h service vna)
may_import(tools/notifications tools/notifications host service devices)
may_import(tools/tuning tools/tuning tools/text tools/controls.h host service utils)

# The rooms of the workbench, each of which may import those above it.
may_import(workbench workbench tools host provider service devices sdk utils vna)
set(above "")
foreach(room IN ITEMS instrument models panels)
    list(APPEND above workbench/${room})
    may_import(workbench/${room} ${above} tools host provider service devices sdk utils vna)
endforeach()
