# The C interface: the component with a small host, in libraries that need no library of C++ and
# define no names but the names of capi/zlibvideo.h.
enable_language(C)

zlibvideo_add_library(zlibvideo_c_objects OBJECT)
target_sources(zlibvideo_c_objects PRIVATE capi/Decoder.cpp capi/Host.cpp)
target_compile_definitions(zlibvideo_c_objects PRIVATE ZLIBVIDEO_STATIC ZLIBVIDEO_RED_FIRST)
target_compile_options(zlibvideo_c_objects PRIVATE
  -fno-exceptions -fno-rtti -fno-lto -ffunction-sections -fdata-sections)
target_include_directories(zlibvideo_c_objects PRIVATE ${ZLIB_INCLUDE_DIRS})
set_target_properties(zlibvideo_c_objects PROPERTIES EXCLUDE_FROM_ALL ON)

if(CMAKE_SYSTEM_PROCESSOR STREQUAL wasm32)
  add_subdirectory(web)
  return()
endif()

# Both libraries are made of a single object. All other names are local to it, and functions that
# nothing calls are gone.
add_custom_command(OUTPUT zlibvideo_c.o
  COMMAND ${CMAKE_CXX_COMPILER} -r -nostdlib -o zlibvideo_c.o $<TARGET_OBJECTS:zlibvideo_c_objects>
    -Wl,${single_object}
  COMMAND ${CMAKE_OBJCOPY} --wildcard --keep-global-symbol=zlibvideo_* --strip-unneeded
    zlibvideo_c.o
  DEPENDS zlibvideo_c_objects $<TARGET_OBJECTS:zlibvideo_c_objects>
  COMMAND_EXPAND_LISTS VERBATIM)
add_custom_target(zlibvideo_c_object DEPENDS zlibvideo_c.o)

# zlibvideo_add_c_library(NAME TYPE ZLIB-SCOPE)
function(zlibvideo_add_c_library name type scope)
  add_library(${name} ${type} ${PROJECT_BINARY_DIR}/zlibvideo_c.o)
  add_dependencies(${name} zlibvideo_c_object)
  target_link_libraries(${name} ${scope} ZLIB::ZLIB)
  target_include_directories(${name} INTERFACE ${zlibvideo_public_include_dirs})
  set_target_properties(${name} PROPERTIES OUTPUT_NAME zlibvideo_c LINKER_LANGUAGE C)
endfunction()

if(ZLIBVIDEO_BUILD_STATIC)
  zlibvideo_add_c_library(zlibvideo_c STATIC INTERFACE)
  add_library(zlibvideo::c_static ALIAS zlibvideo_c)
endif()
if(ZLIBVIDEO_BUILD_SHARED)
  zlibvideo_add_c_library(zlibvideo_c_shared SHARED PRIVATE)
  set_target_properties(zlibvideo_c_shared PROPERTIES
    VERSION ${PROJECT_VERSION}
    SOVERSION ${PROJECT_VERSION_MAJOR})
  target_link_options(zlibvideo_c_shared PRIVATE LINKER:--exclude-libs,ALL)
  add_library(zlibvideo::c_shared ALIAS zlibvideo_c_shared)
endif()
add_library(zlibvideo::c ALIAS zlibvideo_c${linked_kind})
