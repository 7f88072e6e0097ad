# Installation: headers, libraries, the stand-in host, a CMake package and pkg-config files.
include(CMakePackageConfigHelpers)

set(zlibvideo_package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/zlibvideo)

set(headers ${zlibvideo_public_headers})
if(NOT ZLIBVIDEO_BUILD_C_INTERFACE)
  list(FILTER headers EXCLUDE REGEX ^capi/)
endif()
if(NOT ZLIBVIDEO_INSTALL_STANDIN_HOST)
  list(FILTER headers EXCLUDE REGEX /standin/)
endif()
foreach(header IN LISTS headers)
  cmake_path(GET header PARENT_PATH folder)
  install(FILES ${header} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/zlibvideo/${folder}
    COMPONENT development)
endforeach()

# Each library has an export of its own: several builds may be installed into one prefix.
function(zlibvideo_install_library target name)
  if(NOT TARGET ${target})
    return()
  endif()
  set(runtime runtime)
  if(name MATCHES "^c_")
    set(runtime c_runtime)
  endif()
  set_target_properties(${target} PROPERTIES EXPORT_NAME ${name})
  install(TARGETS ${target} EXPORT zlibvideo-${name}-targets
    LIBRARY COMPONENT ${runtime} NAMELINK_COMPONENT development
    ARCHIVE COMPONENT development)
  install(EXPORT zlibvideo-${name}-targets NAMESPACE zlibvideo:: DESTINATION ${zlibvideo_package_dir}
    COMPONENT development)
endfunction()
zlibvideo_install_library(zlibvideo static)
zlibvideo_install_library(zlibvideo_shared shared)
zlibvideo_install_library(zlibvideo_c c_static)
zlibvideo_install_library(zlibvideo_c_shared c_shared)
if(ZLIBVIDEO_INSTALL_STANDIN_HOST)
  zlibvideo_install_library(zlibvideo_standin_archive standin_archive)
endif()

configure_package_config_file(cmake/zlibvideo-config.cmake.in zlibvideo-config.cmake
  INSTALL_DESTINATION ${zlibvideo_package_dir}
  NO_SET_AND_CHECK_MACRO NO_CHECK_REQUIRED_COMPONENTS_MACRO)
write_basic_package_version_file(zlibvideo-config-version.cmake COMPATIBILITY SameMajorVersion)
install(FILES
  ${PROJECT_BINARY_DIR}/zlibvideo-config.cmake
  ${PROJECT_BINARY_DIR}/zlibvideo-config-version.cmake
  DESTINATION ${zlibvideo_package_dir} COMPONENT development)

# The pkg-config files find their prefix from where they lie, so the tree can be moved. "zlibvideo"
# is the shared library, or else the static library. Where both are installed, a linker prefers the
# shared library even after "pkg-config --static". So the static library has a package of its own.
set(pkgconfig_dir ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
string(REGEX REPLACE "[^/]+" ".." prefix_from_pkgconfig ${pkgconfig_dir})

# zlibvideo_install_pc(NAME DESCRIPTION LIBS): LIBS in the order that a linker needs.
function(zlibvideo_install_pc name description libs)
  configure_file(cmake/zlibvideo.pc.in ${name}.pc @ONLY)
  install(FILES ${PROJECT_BINARY_DIR}/${name}.pc
    DESTINATION ${pkgconfig_dir} COMPONENT development)
endfunction()

# Installs NAME and, with the stand-in host, NAME-standin-host.
function(zlibvideo_install_pkgconfig name component)
  zlibvideo_install_pc(${name} "${PROJECT_DESCRIPTION}" "${component}")
  if(ZLIBVIDEO_INSTALL_STANDIN_HOST)
    zlibvideo_install_pc(${name}-standin-host
      "${name} together with its stand-in host, for programs without a host of their own"
      "${component} -lzlibvideo_standin_host")
  endif()
endfunction()

if(ZLIBVIDEO_BUILD_STATIC)
  set(define " -DZLIBVIDEO_STATIC")
  set(requires zlib)
  zlibvideo_install_pkgconfig(zlibvideo-static -l:libzlibvideo.a)
  if(NOT ZLIBVIDEO_BUILD_SHARED)
    zlibvideo_install_pkgconfig(zlibvideo -l:libzlibvideo.a)
  endif()
endif()
if(ZLIBVIDEO_BUILD_SHARED)
  set(define)
  set(requires)
  zlibvideo_install_pkgconfig(zlibvideo -lzlibvideo)
endif()
if(ZLIBVIDEO_BUILD_C_INTERFACE)
  set(c_library -lzlibvideo_c)
  if(NOT ZLIBVIDEO_BUILD_SHARED)
    set(c_library -l:libzlibvideo_c.a)
  endif()
  set(define)
  zlibvideo_install_pc(zlibvideo-c "${PROJECT_DESCRIPTION}, in C" ${c_library})
endif()
