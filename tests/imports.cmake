# Checks that imports run one way: console -> host -> (service, simulator) -> devices -> platform/sdk.
#
# cmake -DSOURCE_DIR=<project> -P imports.cmake

cmake_minimum_required(VERSION 3.25)

function(may_import folder)
    file(GLOB_RECURSE files "${SOURCE_DIR}/${folder}/*.h" "${SOURCE_DIR}/${folder}/*.cpp" "${SOURCE_DIR}/${folder}/*.in")
    if(NOT files)
        message(SEND_ERROR "${folder} holds no sources")
    endif()
    foreach(file IN LISTS files)
        file(STRINGS "${file}" includes REGEX "^#include \"")
        foreach(include IN LISTS includes)
            if(NOT include MATCHES "^#include \"(([a-z]+)/[a-z0-9/_]+\\.h)\"")
                message(SEND_ERROR "${file}: not included by its full path: ${include}")
            elseif(NOT CMAKE_MATCH_2 IN_LIST ARGN)
                message(SEND_ERROR "${file}: ${folder} may not import ${CMAKE_MATCH_1}")
            endif()
        endforeach()
    endforeach()
endfunction()

may_import(platform/sdk sdk)
may_import(platform/application devices sdk utils vna)
may_import(devices devices sdk)
may_import(service service devices sdk utils vna)
may_import(simulator simulator devices sdk)
may_import(host host service simulator devices sdk utils vna)
may_import(console console host service simulator devices sdk utils vna)
