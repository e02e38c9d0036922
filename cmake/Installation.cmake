# What is installed of what is built, in components:
#
#   library        the library and its neighbour's stand-in
#   development    headers under the paths by which they are included, the CMake package, pkg-config files, examples
#   simulator      the simulated instrument: library and headers
#   testing        fakes of the SDK's interfaces: headers
#   host           the host library: library and headers
#   tools          service-console and service-conformance with their manual pages, completion for bash, zsh and fish,
#                  the provider of the simulated instrument
#   python         the Python module with its types, where it is built, and the example of a production test
#   workbench      service-workbench with its manual page, icon and entry in the menus, where it is built
#   documentation  the manual, where it is made
#
# The tree may be moved as a whole.

set(package_dir "${CMAKE_INSTALL_LIBDIR}/cmake/DevicesService")
set(pkgconfig_dir "${CMAKE_INSTALL_LIBDIR}/pkgconfig")

install(TARGETS Devices DevicesService EXPORT library
    RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}" COMPONENT library
    LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT library NAMELINK_COMPONENT development
    ARCHIVE DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT development)
install(TARGETS sdk_zvl_devices devices_framework devices_provider EXPORT library)
install(EXPORT library NAMESPACE DevicesService:: FILE DevicesServiceTargets.cmake
    DESTINATION "${package_dir}" COMPONENT development)
foreach(component IN ITEMS simulator testing host)
    if(TARGET devices_${component})
        install(TARGETS devices_${component} EXPORT ${component}
            ARCHIVE DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT ${component})
        install(EXPORT ${component} NAMESPACE DevicesService:: FILE DevicesService-${component}.cmake
            DESTINATION "${package_dir}" COMPONENT ${component})
    endif()
endforeach()
if(TARGET simulated-provider)
    install(TARGETS simulated-provider
        LIBRARY DESTINATION "${DEVICESSERVICE_PROVIDER_INSTALL_DIR}" COMPONENT tools)
endif()

# Programs find the libraries from where they are.
foreach(program IN ITEMS service-console service-conformance)
    if(TARGET ${program})
        install(TARGETS ${program} RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}" COMPONENT tools)
        set_target_properties(${program} PROPERTIES INSTALL_RPATH "$ORIGIN/../${CMAKE_INSTALL_LIBDIR}")
    endif()
endforeach()
set_target_properties(Devices DevicesService PROPERTIES INSTALL_RPATH "$ORIGIN")
if(WIN32)
    install(FILES ${windows_runtime_dlls} DESTINATION "${CMAKE_INSTALL_BINDIR}" COMPONENT library)
endif()

function(install_headers component folder)
    cmake_path(GET folder FILENAME name)
    install(DIRECTORY "${folder}/" DESTINATION "${DEVICESSERVICE_INCLUDE_DIR}/${name}" COMPONENT ${component}
        FILES_MATCHING ${ARGN})
endfunction()
install_headers(development "${PROJECT_SOURCE_DIR}/platform/sdk" PATTERN "*.h")
foreach(folder IN ITEMS devices utils vna)
    install_headers(development "${PROJECT_SOURCE_DIR}/platform/application/${folder}" PATTERN "*.h")
endforeach()
install_headers(development "${PROJECT_SOURCE_DIR}/devices" PATTERN "*.h")
install_headers(development "${PROJECT_SOURCE_DIR}/provider" PATTERN "*.h")
install_headers(development "${PROJECT_SOURCE_DIR}/service"
    PATTERN "calibrationobserveradapter.h" EXCLUDE
    PATTERN "readfrequencyplan.h" EXCLUDE
    PATTERN "support" EXCLUDE
    PATTERN "*.h")
foreach(folder IN ITEMS devices service)
    install_headers(development "${DEVICESSERVICE_GENERATED_DIR}/${folder}" PATTERN "*.h")
endforeach()
if(TARGET devices_host)
    install_headers(host "${PROJECT_SOURCE_DIR}/host" PATTERN "*.h")
endif()
if(TARGET devices_simulator)
    install_headers(simulator "${PROJECT_SOURCE_DIR}/simulator"
        REGEX "/simulator/[a-z]+$" EXCLUDE # the rooms, which hold what is its own
        PATTERN "*.h")
    install_headers(testing "${PROJECT_SOURCE_DIR}/testing" PATTERN "*.h")
endif()

include(CMakePackageConfigHelpers)
configure_package_config_file("${CMAKE_CURRENT_LIST_DIR}/DevicesServiceConfig.cmake.in"
    "${PROJECT_BINARY_DIR}/DevicesServiceConfig.cmake" INSTALL_DESTINATION "${package_dir}")
write_basic_package_version_file("${PROJECT_BINARY_DIR}/DevicesServiceConfigVersion.cmake"
    COMPATIBILITY SameMajorVersion)
install(FILES "${PROJECT_BINARY_DIR}/DevicesServiceConfig.cmake"
    "${PROJECT_BINARY_DIR}/DevicesServiceConfigVersion.cmake"
    DESTINATION "${package_dir}" COMPONENT development)

# pkg-config files, each of what to link and what else it requires.
file(RELATIVE_PATH prefix_from_pkgconfig "/${pkgconfig_dir}" "/")
function(install_pkgconfig name component description libraries requires)
    configure_file("${PROJECT_SOURCE_DIR}/cmake/package.pc.in" "${PROJECT_BINARY_DIR}/${name}.pc" @ONLY)
    install(FILES "${PROJECT_BINARY_DIR}/${name}.pc" DESTINATION "${pkgconfig_dir}" COMPONENT ${component})
endfunction()
install_pkgconfig(DevicesService development "${PROJECT_DESCRIPTION}" "-lDevicesService -lDevices" "Qt6Core")
if(TARGET devices_simulator)
    install_pkgconfig(DevicesService-simulator simulator "Simulated instrument and fakes for DevicesService"
        "-ldevices_simulator" "DevicesService")
endif()
if(TARGET devices_host)
    install_pkgconfig(DevicesService-host host "What a host program of DevicesService needs"
        "-ldevices_host" "DevicesService")
endif()

if(TARGET service-console)
    install(FILES "${PROJECT_SOURCE_DIR}/console/completion/service-console"
        DESTINATION "${CMAKE_INSTALL_DATADIR}/bash-completion/completions" COMPONENT tools)
    install(FILES "${PROJECT_SOURCE_DIR}/console/completion/_service-console"
        DESTINATION "${CMAKE_INSTALL_DATADIR}/zsh/vendor-completions" COMPONENT tools)
    install(FILES "${PROJECT_SOURCE_DIR}/console/completion/service-console.fish"
        DESTINATION "${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d" COMPONENT tools)
    install(FILES "${PROJECT_SOURCE_DIR}/conformance/service-conformance.1"
        DESTINATION "${CMAKE_INSTALL_MANDIR}/man1" COMPONENT tools)
endif()

if(TARGET service-workbench)
    install(TARGETS service-workbench RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}" COMPONENT workbench)
    set_target_properties(service-workbench PROPERTIES INSTALL_RPATH "$ORIGIN/../${CMAKE_INSTALL_LIBDIR}")
    install(FILES "${PROJECT_SOURCE_DIR}/workbench/service-workbench.1"
        DESTINATION "${CMAKE_INSTALL_MANDIR}/man1" COMPONENT workbench)
    install(FILES "${PROJECT_SOURCE_DIR}/workbench/desktop/service-workbench.desktop"
        DESTINATION "${CMAKE_INSTALL_DATADIR}/applications" COMPONENT workbench)
    install(FILES "${PROJECT_SOURCE_DIR}/workbench/desktop/service-workbench.svg"
        DESTINATION "${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps" COMPONENT workbench)
endif()

install(DIRECTORY "${PROJECT_SOURCE_DIR}/examples" DESTINATION "${CMAKE_INSTALL_DATADIR}/${PROJECT_NAME}"
    COMPONENT development
    FILES_MATCHING PATTERN "*.cpp" PATTERN "*.h" PATTERN "*.qml" PATTERN "*.json" PATTERN "CMakeLists.txt"
    PATTERN "build" EXCLUDE)
if(DEVICESSERVICE_DOCS)
    install(DIRECTORY "${PROJECT_BINARY_DIR}/docs/html" DESTINATION "${CMAKE_INSTALL_DATADIR}/doc/${PROJECT_NAME}"
        COMPONENT documentation)
endif()
