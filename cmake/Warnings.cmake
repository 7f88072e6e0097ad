function(zlibvideo_enable_warnings target)
  target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wconversion -Wshadow
    $<$<BOOL:${ZLIBVIDEO_WARNINGS_AS_ERRORS}>:-Werror>)
endfunction()
