# Target header_check: compiles each header of the project alone and twice over, so that a header
# without its guard, or without an include that it needs, does not build. Public headers have
# their public names there, and are C++17; headers of the stand-in host are C++20.
set(folders host decoder grid bitstream colour output capi tools tests fuzz bench examples)
list(TRANSFORM folders APPEND /*.h)
file(GLOB_RECURSE headers CONFIGURE_DEPENDS RELATIVE ${PROJECT_SOURCE_DIR} ${folders})
list(REMOVE_ITEM headers ${zlibvideo_public_headers})
list(TRANSFORM zlibvideo_public_headers PREPEND zlibvideo/ OUTPUT_VARIABLE public_headers)

add_library(header_check OBJECT EXCLUDE_FROM_ALL)
foreach(header IN LISTS headers public_headers)
  set(source ${PROJECT_BINARY_DIR}/header_check/${header}.cpp)
  file(CONFIGURE OUTPUT ${source} CONTENT "#include <${header}>\n#include <${header}>\n")
  target_sources(header_check PRIVATE ${source})
  if(header IN_LIST public_headers AND NOT header MATCHES /standin/)
    set_source_files_properties(${source} PROPERTIES COMPILE_OPTIONS -std=c++17)
  endif()
endforeach()
target_link_libraries(header_check PRIVATE zlibvideo)
target_compile_definitions(header_check PRIVATE ZLIBVIDEO_PROGRAM="")  # tests/tool/ToolFixture.h
zlibvideo_enable_warnings(header_check)
