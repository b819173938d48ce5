# The target `package`: Debian packages of the library, of what programs are built with, and of the
# program qvox, by CPack. They are meant for the preset `package`, which installs under /usr.

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME qvox)
set(CPACK_PACKAGE_VENDOR "The qvox developers")
set(CPACK_PACKAGE_CONTACT "The qvox developers <maintainers@qvox.invalid>"
    CACHE STRING "The maintainer that the packages name")
# CPack's word for "none": each package begins its description with a line of its own.
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "${PROJECT_NAME} built using CMake")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ
                                                GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_COMPONENTS_ALL library development program)
set(CPACK_COMPONENTS_GROUPING ONE_PER_GROUP)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${PROJECT_BINARY_DIR}/src)
set(CPACK_DEBIAN_ENABLE_COMPONENT_DEPENDS ON)

# What Debian wants to find under /usr/share/doc of each package.
set(documents ${PROJECT_BINARY_DIR}/debian)
file(MAKE_DIRECTORY ${documents})
file(READ packaging/debian/changelog changelog)
if(NOT changelog MATCHES "^qvox \\(${PROJECT_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE}\\)")
  message(FATAL_ERROR "packaging/debian/changelog doesn't begin with ${PROJECT_VERSION}")
endif()
configure_file(packaging/debian/changelog ${documents}/changelog.Debian COPYONLY)
execute_process(COMMAND gzip -9nfk ${documents}/changelog.Debian COMMAND_ERROR_IS_FATAL ANY)

# What other packages depend on that need the library.
file(WRITE ${documents}/shlibs
     "libqvox ${QVOX_SOVERSION} libqvox${QVOX_SOVERSION} (>= ${PROJECT_VERSION})\n")

# qvox_package(<component> <package> SECTION <section> SUMMARY <line> DESCRIPTION <text>)
macro(qvox_package component package)
  cmake_parse_arguments(deb "" "SECTION;SUMMARY;DESCRIPTION" "" ${ARGN})
  string(TOUPPER ${component} upper)
  set(CPACK_DEBIAN_${upper}_PACKAGE_NAME ${package})
  set(CPACK_DEBIAN_${upper}_PACKAGE_SECTION ${deb_SECTION})
  set(CPACK_DEBIAN_${upper}_DESCRIPTION "${deb_SUMMARY}\n${deb_DESCRIPTION}")
  install(FILES packaging/debian/copyright ${documents}/changelog.Debian.gz
          DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/doc/${package}
          COMPONENT ${component} EXCLUDE_FROM_ALL)
endmacro()

set(about "qvox reads XML in UTF-8, UTF-16, Shift_JIS, EUC-JP and ISO-2022-JP, as SAX2
events or as a DOM Level 2 tree, and writes trees in UTF-16, Shift_JIS and
EUC-JP.")
qvox_package(
  library libqvox${QVOX_SOVERSION}
  SECTION libs
  SUMMARY "XML library for Japanese and Unicode text"
  DESCRIPTION "${about}")
qvox_package(
  development libqvox-dev
  SECTION libdevel
  SUMMARY "XML library for Japanese and Unicode text (headers)"
  DESCRIPTION "${about}\n.\nThis package holds what programs are built with.")
qvox_package(
  program qvox
  SECTION text
  SUMMARY "check, show and convert XML in Japanese encodings"
  DESCRIPTION "${about}
.
This package holds the program, which checks documents, prints their events
and trees, and converts them from one encoding to another.")

set(CPACK_COMPONENT_DEVELOPMENT_DEPENDS library)
set(CPACK_COMPONENT_PROGRAM_DEPENDS library)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SHLIBDEPS OFF)
set(CPACK_DEBIAN_LIBRARY_PACKAGE_CONTROL_EXTRA
    ${documents}/shlibs ${PROJECT_SOURCE_DIR}/packaging/debian/triggers)

include(CPack)
