# Writes layout_test.cpp from the tables of the binary contract. Included by tests that compile it.

find_package(Python3 3.11 REQUIRED COMPONENTS Interpreter)

file(GLOB contract_sources CONFIGURE_DEPENDS
    "${CMAKE_CURRENT_LIST_DIR}/*.py" "${CMAKE_CURRENT_LIST_DIR}/*.table")
file(GLOB_RECURSE contract_headers CONFIGURE_DEPENDS # which the test names
    "${PROJECT_SOURCE_DIR}/platform/*.h" "${PROJECT_SOURCE_DIR}/devices/*.h" "${PROJECT_SOURCE_DIR}/service/*.h")
add_custom_command(OUTPUT "${CMAKE_CURRENT_BINARY_DIR}/layout_test.cpp"
    COMMAND "${Python3_EXECUTABLE}" -B "${CMAKE_CURRENT_LIST_DIR}/contract.py"
        test "${CMAKE_CURRENT_BINARY_DIR}/layout_test.cpp"
    DEPENDS ${contract_sources} ${contract_headers}
    VERBATIM)
