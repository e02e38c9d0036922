# Packages by CPack: one ZIP with everything for Windows; elsewhere Debian packages and an archive.

set(CPACK_PACKAGE_NAME DevicesService)
set(CPACK_PACKAGE_VENDOR "The DevicesService team")
set(CPACK_PACKAGE_CONTACT "The DevicesService team <devicesservice@localhost>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "${PROJECT_DESCRIPTION}")
set(CPACK_PACKAGE_DIRECTORY "${PROJECT_BINARY_DIR}/packages")
set(CPACK_STRIP_FILES ON)
set(CPACK_VERBATIM_VARIABLES ON)
set(CPACK_ARCHIVE_COMPONENT_INSTALL OFF)

if(WIN32)
    set(CPACK_GENERATOR ZIP)
    set(CPACK_SYSTEM_NAME windows-x86_64)
else()
    set(CPACK_GENERATOR "DEB;TGZ")
    set(CPACK_SYSTEM_NAME linux-${CMAKE_SYSTEM_PROCESSOR})

    set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "") # which would come before each package's own
    set(CPACK_DEB_COMPONENT_INSTALL ON)
    set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
    set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
    set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS "${CMAKE_LIBRARY_OUTPUT_DIRECTORY}")
    set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
    set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")
    set(CPACK_DEBIAN_ENABLE_COMPONENT_DEPENDS OFF)

    set(library_package libdevicesservice${PROJECT_VERSION_MAJOR})
    set(this_version "(= ${PROJECT_VERSION})")
    set(CPACK_DEBIAN_LIBRARY_PACKAGE_NAME ${library_package})
    set(CPACK_DEBIAN_LIBRARY_PACKAGE_SECTION libs)
    set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libdevicesservice-dev)
    set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
    set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "${library_package} ${this_version}, qt6-base-dev (>= 6.4)")
    set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SUGGESTS libdevicesservice-doc)
    set(CPACK_DEBIAN_DOCUMENTATION_PACKAGE_NAME libdevicesservice-doc)
    set(CPACK_DEBIAN_DOCUMENTATION_PACKAGE_SECTION doc)
    set(CPACK_DEBIAN_DOCUMENTATION_PACKAGE_ARCHITECTURE all)
    set(CPACK_DEBIAN_TOOLS_PACKAGE_NAME devicesservice-tools)
    set(CPACK_DEBIAN_TOOLS_PACKAGE_SECTION science)
    set(CPACK_DEBIAN_TOOLS_PACKAGE_DEPENDS "${library_package} ${this_version}")
    set(CPACK_DEBIAN_PYTHON_PACKAGE_NAME python3-devicesservice)
    set(CPACK_DEBIAN_PYTHON_PACKAGE_SECTION python)
    # An extension module is for one version of the interpreter.
    if(TARGET devicesservice-python)
        get_property(python_version DIRECTORY "${PROJECT_SOURCE_DIR}/python" PROPERTY PYTHON_VERSION)
        get_property(next_python_version DIRECTORY "${PROJECT_SOURCE_DIR}/python" PROPERTY NEXT_PYTHON_VERSION)
        set(CPACK_DEBIAN_PYTHON_PACKAGE_DEPENDS "${library_package} ${this_version}, python3 (>= ${python_version}), python3 (<< ${next_python_version}), python3-numpy")
        set(CPACK_DEBIAN_PYTHON_PACKAGE_RECOMMENDS "devicesservice-tools ${this_version}") # with the simulated instrument
        set(CPACK_DEBIAN_PYTHON_PACKAGE_CONTROL_EXTRA
            "${PROJECT_SOURCE_DIR}/cmake/python3-devicesservice/postinst"
            "${PROJECT_SOURCE_DIR}/cmake/python3-devicesservice/prerm")
    endif()
    set(CPACK_DEBIAN_WORKBENCH_PACKAGE_NAME service-workbench)
    set(CPACK_DEBIAN_WORKBENCH_PACKAGE_SECTION science)
    set(CPACK_DEBIAN_WORKBENCH_PACKAGE_DEPENDS "${library_package} ${this_version}")
    set(CPACK_DEBIAN_WORKBENCH_PACKAGE_RECOMMENDS "devicesservice-tools ${this_version}, libqt6svg6")
    # The simulated instrument and the host library go with the headers.
    foreach(component IN ITEMS DEVELOPMENT SIMULATOR TESTING HOST)
        set(CPACK_COMPONENT_${component}_GROUP development)
    endforeach()
    set(CPACK_COMPONENT_LIBRARY_GROUP library)
    set(CPACK_COMPONENT_TOOLS_GROUP tools)
    set(CPACK_COMPONENT_PYTHON_GROUP python)
    set(CPACK_COMPONENT_WORKBENCH_GROUP workbench)
    set(CPACK_COMPONENT_DOCUMENTATION_GROUP documentation)
    set(CPACK_DEBIAN_LIBRARY_DESCRIPTION "service controls of vector network analysers
The plug-in library through which an application reaches the service functions of an instrument.")
    set(CPACK_DEBIAN_DEVELOPMENT_DESCRIPTION "service controls of vector network analysers - development
Headers, CMake package and pkg-config files, the simulated instrument, fakes for tests, the host library and
examples.")
    set(CPACK_DEBIAN_DOCUMENTATION_DESCRIPTION "service controls of vector network analysers - manual
The guide and the reference of all public headers, as HTML.")
    set(CPACK_DEBIAN_TOOLS_DESCRIPTION "service controls of vector network analysers - tools
service-console, a program for production and service engineers, and service-conformance,
which looks whether an implementation of the instrument SDK keeps to the rules.")
    set(CPACK_DEBIAN_PYTHON_DESCRIPTION "service controls of vector network analysers - Python 3
The module devicesservice, with the controls of an instrument for scripts.")
    set(CPACK_DEBIAN_WORKBENCH_DESCRIPTION "service controls of vector network analysers - workbench
service-workbench, a window on one instrument: its controls, the settings of its hardware modules,
and a log of every call. The simulated instrument comes with devicesservice-tools.")
endif()

include(CPack)
