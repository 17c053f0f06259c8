# cpack -G DEB: the packages calorivo-cli and calorivo.

# The licence in the form that the copyright file wants: indented, empty lines as dots.
file(READ ${PROJECT_SOURCE_DIR}/LICENSE licence)
string(REGEX REPLACE "^MIT License\n+Copyright[^\n]*\n+" "" licence "${licence}")
file(STRINGS ${PROJECT_SOURCE_DIR}/LICENSE copyright_notice REGEX "^Copyright")
string(REPLACE "Copyright (c) " "" copyright_notice "${copyright_notice}")
string(STRIP "${licence}" licence)
string(REPLACE "\n\n" "\n.\n" licence "${licence}")
string(REPLACE "\n" "\n " licence "${licence}")
configure_file(debian/copyright.in ${CMAKE_CURRENT_BINARY_DIR}/copyright @ONLY)

# The date of the build, or of the sources where a build has to be repeatable.
string(TIMESTAMP build_date "%a, %d %b %Y %H:%M:%S +0000" UTC)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
foreach(component IN LISTS components)
    set(package calorivo)
    if(component STREQUAL "terminal")
        set(package calorivo-cli)
    endif()
    set(folder ${CMAKE_INSTALL_DATAROOTDIR}/doc/${package})
    configure_file(debian/changelog.in ${CMAKE_CURRENT_BINARY_DIR}/${component}/changelog.Debian @ONLY)
    calorivo_install_compressed(${CMAKE_CURRENT_BINARY_DIR}/${component}/changelog.Debian ${folder} changelog.Debian
                                ${component})
    calorivo_install_compressed(${PROJECT_SOURCE_DIR}/CHANGELOG.md ${folder} changelog ${component})
    install(FILES ${CMAKE_CURRENT_BINARY_DIR}/copyright DESTINATION ${folder} COMPONENT ${component})
endforeach()

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME calorivo)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
# Each package has a summary of its own, the first line of its description.
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "")
set(CPACK_PACKAGE_CONTACT "The Calorivo developers <developers@calorivo.example.org>")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_COMPONENTS_ALL ${components})
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)

set(CPACK_DEBIAN_TERMINAL_PACKAGE_NAME calorivo-cli)
set(CPACK_DEBIAN_TERMINAL_PACKAGE_SUGGESTS "calorivo, udisks2, pci.ids")
set(CPACK_COMPONENT_TERMINAL_DESCRIPTION
    "temperatures and fans of the computer, in a terminal
Shows every temperature sensor under a name that people understand, with its
minimum and maximum, and the speed of every fan: once, continuously or as
JSON. It knows Intel Macs through their controller and every other PC through
the sensors of the kernel. The hardware is only read.")

set(CPACK_DEBIAN_DESKTOP_PACKAGE_NAME calorivo)
# Its data comes with the terminal program. The plug-ins for screens are loaded when it runs: no library tells of them.
set(CPACK_DEBIAN_DESKTOP_PACKAGE_DEPENDS
    "calorivo-cli (= ${PROJECT_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE}), qt6-qpa-plugins")
set(CPACK_DEBIAN_DESKTOP_PACKAGE_RECOMMENDS "xdg-utils, qt6-translations-l10n, qt6-wayland")
set(CPACK_DEBIAN_DESKTOP_PACKAGE_SUGGESTS "udisks2, pci.ids")
set(CPACK_COMPONENT_DESKTOP_DESCRIPTION
    "watch the temperatures, fans and drives of the computer
Shows every temperature sensor under a name that people understand, with its
present and highest value, and the speed of every fan. Readings stand beside
the clock, notifications tell when a temperature passes a limit, and every
reading can be logged as a table. It knows Intel Macs through their
controller and every other PC through the sensors of the kernel. The hardware
is only read.")

include(CPack)
