# Debian packages, which script/package makes: a package for each component of the installation.
# They require the prefix /usr, with which libraries are in the folder of their architecture.
set(CPACK_PACKAGE_CONTACT "zlibvideo maintainers <zlibvideo@example.org>" CACHE STRING
  "Maintainer of the packages")
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_ALL)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SOURCE zlibvideo)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY >=)

string(TIMESTAMP date "%a, %d %b %Y %H:%M:%S +0000" UTC)
file(CONFIGURE OUTPUT changelog @ONLY CONTENT
  "zlibvideo (@PROJECT_VERSION@) unstable; urgency=medium

  * CHANGELOG.md of the sources lists the changes.

 -- @CPACK_PACKAGE_CONTACT@  @date@
")
execute_process(COMMAND gzip -9nf changelog WORKING_DIRECTORY ${PROJECT_BINARY_DIR}
  COMMAND_ERROR_IS_FATAL ANY)
file(CONFIGURE OUTPUT triggers CONTENT "activate-noawait ldconfig\n")

# zlibvideo_package(NAME COMPONENT SECTION DESCRIPTION [DEPENDENCY...])
macro(zlibvideo_package name component section description)
  list(APPEND CPACK_COMPONENTS_ALL ${component})
  string(TOUPPER CPACK_DEBIAN_${component} package)
  set(${package}_PACKAGE_NAME ${name})
  set(${package}_PACKAGE_SECTION ${section})
  set(${package}_DESCRIPTION "${description}")
  string(REPLACE ";" ", " ${package}_PACKAGE_DEPENDS "${ARGN}")
  if(${section} STREQUAL libs)
    set(${package}_PACKAGE_CONTROL_EXTRA ${PROJECT_BINARY_DIR}/triggers)
  endif()
  install(FILES ${PROJECT_BINARY_DIR}/changelog.gz
    DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${name} COMPONENT ${component})
endmacro()

set(library libzlibvideo${PROJECT_VERSION_MAJOR})
set(c_library libzlibvideo-c${PROJECT_VERSION_MAJOR})
zlibvideo_package(${library} runtime libs
  "The shared library, for programs that are the host of the decoder.")
zlibvideo_package(${c_library} c_runtime libs
  "The shared library of the C interface, for programs without a host.")
zlibvideo_package(libzlibvideo-dev development libdevel
  "Headers, static libraries, and files for CMake and pkg-config."
  "${library} (= ${PROJECT_VERSION})" "${c_library} (= ${PROJECT_VERSION})" zlib1g-dev)
zlibvideo_package(zlibvideo tools video
  "The program zlibvideo decodes, records and examines streams.")
if(TARGET example_player)
  zlibvideo_package(zlibvideo-play player video
    "The program zlibvideo-play plays a stream in a window.")
endif()
include(CPack)
