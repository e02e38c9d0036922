# Checks that what ships is written for no single compiler.
#
# cmake -DSOURCE_DIR=<project> -P portability.cmake

cmake_minimum_required(VERSION 3.25)

set(own_to_one_compiler
    "__attribute__|__declspec|__builtin_|__extension__|__typeof|__int128|__PRETTY_FUNCTION__|__FUNCSIG__"
    "|\\[\\[(gnu|clang|msvc)::|#pragma (GCC|clang|warning)|#warning|cxxabi\\.h|bits/stdc|emutls")
string(CONCAT own_to_one_compiler ${own_to_one_compiler})

foreach(folder IN ITEMS platform devices service provider simulator host console conformance workbench)
    file(GLOB_RECURSE files "${SOURCE_DIR}/${folder}/*.h" "${SOURCE_DIR}/${folder}/*.cpp")
    if(NOT files)
        message(SEND_ERROR "${folder} holds no sources")
    endif()
    foreach(file IN LISTS files)
        if(file MATCHES "/conformance/bench/exactness\\.cpp$") # looks into objects where a compiler lets it
            continue()
        endif()
        file(STRINGS "${file}" lines REGEX "${own_to_one_compiler}")
        foreach(line IN LISTS lines)
            message(SEND_ERROR "${file}: only one compiler knows: ${line}")
        endforeach()
        # A thread's variables with destructors outlive their memory with MinGW.
        file(STRINGS "${file}" lines REGEX "thread_local")
        foreach(line IN LISTS lines)
            message(SEND_ERROR "${file}: use a PerThread instead of: ${line}")
        endforeach()
    endforeach()
endforeach()
