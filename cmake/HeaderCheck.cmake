# Target header_check: compiles each header of the project alone and twice over, so a header that
# leans on what its includer happened to include, or lacks its guard, does not build.
function(zlibvideo_add_header_check)
  set(sources)
  foreach(folder IN LISTS ARGN)
    file(GLOB_RECURSE headers CONFIGURE_DEPENDS
      RELATIVE ${PROJECT_SOURCE_DIR} ${PROJECT_SOURCE_DIR}/${folder}/*.h)
    foreach(header IN LISTS headers)
      set(source ${PROJECT_BINARY_DIR}/header_check/${header}.cpp)
      file(CONFIGURE OUTPUT ${source} CONTENT "#include \"${header}\"\n#include \"${header}\"\n")
      list(APPEND sources ${source})
    endforeach()
  endforeach()
  add_library(header_check OBJECT EXCLUDE_FROM_ALL ${sources})
  target_link_libraries(header_check PRIVATE zlibvideo)
  target_compile_definitions(header_check PRIVATE ZLIBVIDEO_PROGRAM="")  # ToolFixture.h
  zlibvideo_enable_warnings(header_check)
endfunction()
