# The two neighbours of a product build: targets that the embedding project already has, else packages.

foreach(neighbour IN ITEMS sdk_zvl_devices Devices)
    if(NOT TARGET ${neighbour})
        find_package(${neighbour} REQUIRED CONFIG)
    endif()
    if(NOT TARGET ${neighbour})
        message(FATAL_ERROR "The package ${neighbour} does not define the target ${neighbour}.")
    endif()
endforeach()
