# What `cmake --install` puts under the prefix: the headers, the library, the program, and the files
# by which CMake (find_package(qvox)) and pkg-config (qvox) find them. Nothing in them names the
# prefix, so that it can be moved.

include(CMakePackageConfigHelpers)

set(qvox_package_folder ${CMAKE_INSTALL_LIBDIR}/cmake/qvox)

install(DIRECTORY include/qvox DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT development
        FILES_MATCHING PATTERN "*.h")
install(TARGETS qvox EXPORT qvox-targets
        RUNTIME COMPONENT library
        LIBRARY COMPONENT library NAMELINK_COMPONENT development
        ARCHIVE COMPONENT development
        INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
if(TARGET qvox_program)
  install(TARGETS qvox_program COMPONENT program)
endif()

install(EXPORT qvox-targets NAMESPACE qvox:: DESTINATION ${qvox_package_folder}
        COMPONENT development)
configure_package_config_file(cmake/qvox-config.cmake.in ${PROJECT_BINARY_DIR}/qvox-config.cmake
                              INSTALL_DESTINATION ${qvox_package_folder})
# Before 1.0 a new minor version may change the interface.
write_basic_package_version_file(${PROJECT_BINARY_DIR}/qvox-config-version.cmake
                                 COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/qvox-config.cmake
              ${PROJECT_BINARY_DIR}/qvox-config-version.cmake
        DESTINATION ${qvox_package_folder} COMPONENT development)

# Relative to the .pc file where the folders of the installation are relative to the prefix.
if(IS_ABSOLUTE "${CMAKE_INSTALL_LIBDIR}")
  set(pc_prefix "${CMAKE_INSTALL_PREFIX}")
  set(pc_libdir "${CMAKE_INSTALL_LIBDIR}")
else()
  file(RELATIVE_PATH pc_to_prefix /${CMAKE_INSTALL_LIBDIR}/pkgconfig /)
  string(REGEX REPLACE "/$" "" pc_to_prefix "${pc_to_prefix}")
  set(pc_prefix "\${pcfiledir}/${pc_to_prefix}")
  set(pc_libdir "\${prefix}/${CMAKE_INSTALL_LIBDIR}")
endif()
if(IS_ABSOLUTE "${CMAKE_INSTALL_INCLUDEDIR}")
  set(pc_includedir "${CMAKE_INSTALL_INCLUDEDIR}")
else()
  set(pc_includedir "\${prefix}/${CMAKE_INSTALL_INCLUDEDIR}")
endif()
get_target_property(pc_library qvox OUTPUT_NAME)
# What a static library leaves to its users.
set(pc_cflags)
set(pc_private)
get_target_property(qvox_type qvox TYPE)
if(qvox_type STREQUAL "STATIC_LIBRARY")
  set(pc_cflags " -DQVOX_STATIC")
  set(pc_private "-pthread")
endif()
configure_file(cmake/qvox.pc.in ${PROJECT_BINARY_DIR}/qvox.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/qvox.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig
        COMPONENT development)
