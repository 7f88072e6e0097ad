function(zlibvideo_enable_warnings target)
  target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wconversion -Wshadow
    $<$<BOOL:${ZLIBVIDEO_WARNINGS_AS_ERRORS}>:-Werror>)
  if(CMAKE_CXX_COMPILER_ID STREQUAL GNU AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    # GCC 12 warns about "text" + std::string inside its own library (GCC bug 105651).
    target_compile_options(${target} PRIVATE -Wno-restrict)
  endif()
endfunction()
