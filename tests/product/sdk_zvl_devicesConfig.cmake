include("${CMAKE_CURRENT_LIST_DIR}/neighbours.cmake")
