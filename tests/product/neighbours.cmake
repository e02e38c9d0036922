# The neighbours as a product has them: here the stand-ins of the build under test, which knows nothing
# of them but their targets.

add_library(sdk_zvl_devices INTERFACE IMPORTED)
set_target_properties(sdk_zvl_devices PROPERTIES INTERFACE_INCLUDE_DIRECTORIES "${SDK_INCLUDE_DIR}")

add_library(Devices SHARED IMPORTED)
set_target_properties(Devices PROPERTIES
    IMPORTED_LOCATION "${DEVICES_LIBRARY}"
    IMPORTED_IMPLIB "${DEVICES_IMPORT_LIBRARY}"
    INTERFACE_INCLUDE_DIRECTORIES "${DEVICES_INCLUDE_DIRS}")
