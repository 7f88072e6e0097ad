# Installation: headers, both libraries, the stand-in host, a CMake package and pkg-config files.
include(CMakePackageConfigHelpers)

set(zlibvideo_package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/zlibvideo)

foreach(header IN LISTS zlibvideo_public_headers)
  cmake_path(GET header PARENT_PATH folder)
  install(FILES ${header} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/zlibvideo/${folder}
    COMPONENT development)
endforeach()

set_target_properties(zlibvideo PROPERTIES EXPORT_NAME static)
set_target_properties(zlibvideo_shared PROPERTIES EXPORT_NAME shared)
set_target_properties(zlibvideo_standin_archive PROPERTIES EXPORT_NAME standin_archive)
install(TARGETS ${zlibvideo_libraries} EXPORT zlibvideo-targets
  LIBRARY COMPONENT runtime NAMELINK_COMPONENT development
  ARCHIVE COMPONENT development)
install(EXPORT zlibvideo-targets NAMESPACE zlibvideo:: DESTINATION ${zlibvideo_package_dir}
  COMPONENT development)

configure_package_config_file(cmake/zlibvideo-config.cmake.in zlibvideo-config.cmake
  INSTALL_DESTINATION ${zlibvideo_package_dir}
  NO_SET_AND_CHECK_MACRO)
write_basic_package_version_file(zlibvideo-config-version.cmake COMPATIBILITY SameMajorVersion)
install(FILES
  ${PROJECT_BINARY_DIR}/zlibvideo-config.cmake
  ${PROJECT_BINARY_DIR}/zlibvideo-config-version.cmake
  DESTINATION ${zlibvideo_package_dir} COMPONENT development)

# The pkg-config files find their prefix from where they lie, so the tree can be moved.
set(pkgconfig_dir ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
string(REGEX REPLACE "[^/]+" ".." prefix_from_pkgconfig ${pkgconfig_dir})
foreach(name IN ITEMS zlibvideo zlibvideo-standin-host)
  configure_file(cmake/${name}.pc.in ${name}.pc @ONLY)
  install(FILES ${PROJECT_BINARY_DIR}/${name}.pc
    DESTINATION ${pkgconfig_dir} COMPONENT development)
endforeach()
