# Installation: headers, libraries, the stand-in host, a CMake package and pkg-config files.
include(CMakePackageConfigHelpers)

set(zlibvideo_package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/zlibvideo)

foreach(header IN LISTS zlibvideo_public_headers)
  cmake_path(GET header PARENT_PATH folder)
  install(FILES ${header} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/zlibvideo/${folder}
    COMPONENT development)
endforeach()

# An export for each library: what is not built is not there, and may come from another build.
function(zlibvideo_install_library target name)
  if(NOT TARGET ${target})
    return()
  endif()
  set_target_properties(${target} PROPERTIES EXPORT_NAME ${name})
  install(TARGETS ${target} EXPORT zlibvideo-${name}-targets
    LIBRARY COMPONENT runtime NAMELINK_COMPONENT development
    ARCHIVE COMPONENT development)
  install(EXPORT zlibvideo-${name}-targets NAMESPACE zlibvideo:: DESTINATION ${zlibvideo_package_dir}
    COMPONENT development)
endfunction()
zlibvideo_install_library(zlibvideo static)
zlibvideo_install_library(zlibvideo_shared shared)
zlibvideo_install_library(zlibvideo_standin_archive standin_archive)

configure_package_config_file(cmake/zlibvideo-config.cmake.in zlibvideo-config.cmake
  INSTALL_DESTINATION ${zlibvideo_package_dir}
  NO_SET_AND_CHECK_MACRO)
write_basic_package_version_file(zlibvideo-config-version.cmake COMPATIBILITY SameMajorVersion)
install(FILES
  ${PROJECT_BINARY_DIR}/zlibvideo-config.cmake
  ${PROJECT_BINARY_DIR}/zlibvideo-config-version.cmake
  DESTINATION ${zlibvideo_package_dir} COMPONENT development)

# The pkg-config files find their prefix from where they lie, so the tree can be moved. Where both
# libraries are installed, a linker takes the shared one unless pkg-config is asked for --static.
set(pkgconfig_dir ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
string(REGEX REPLACE "[^/]+" ".." prefix_from_pkgconfig ${pkgconfig_dir})
set(flags_for_all)
set(flags_for_static "Cflags.private: -DZLIBVIDEO_STATIC\nLibs.private: -lz")
if(NOT ZLIBVIDEO_BUILD_SHARED)
  set(flags_for_all " -DZLIBVIDEO_STATIC")
  set(flags_for_static "Requires: zlib")
endif()
set(pkgconfig_files zlibvideo)
if(ZLIBVIDEO_BUILD_STANDIN_HOST)
  list(APPEND pkgconfig_files zlibvideo-standin-host)
endif()
foreach(name IN LISTS pkgconfig_files)
  configure_file(cmake/${name}.pc.in ${name}.pc @ONLY)
  install(FILES ${PROJECT_BINARY_DIR}/${name}.pc
    DESTINATION ${pkgconfig_dir} COMPONENT development)
endforeach()
