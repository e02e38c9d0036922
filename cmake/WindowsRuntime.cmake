# The DLLs that programs need on Windows besides those of this project: the compiler's own and Qt's.

set(windows_runtime_dlls "$<TARGET_FILE:Qt6::Core>")
if(MINGW)
    foreach(dll IN ITEMS libstdc++-6.dll libgcc_s_seh-1.dll libwinpthread-1.dll)
        execute_process(COMMAND "${CMAKE_CXX_COMPILER}" -print-file-name=${dll}
            OUTPUT_VARIABLE path OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
        get_filename_component(path "${path}" REALPATH)
        list(APPEND windows_runtime_dlls "${path}")
    endforeach()
endif()

# Puts DLLs where the build puts its programs, before the program `target` is run.
function(put_beside_programs target)
    add_custom_command(TARGET ${target} PRE_LINK
        COMMAND ${CMAKE_COMMAND} -E copy_if_different ${ARGN} "${CMAKE_RUNTIME_OUTPUT_DIRECTORY}"
        VERBATIM)
endfunction()
