# zlibvideo_wrap_zlib(TARGET SOURCE) routes TARGET's calls of zlib through the functions of SOURCE.
function(zlibvideo_wrap_zlib target source)
  target_sources(${target} PRIVATE ${source})
  target_link_options(${target} PRIVATE
    LINKER:--wrap=inflate,--wrap=uncompress,--wrap=inflateInit2_,--wrap=inflateEnd)
endfunction()

# zlibvideo_link_untidy_zlib(TARGET) routes them through tests/UntidyZlib.cpp.
function(zlibvideo_link_untidy_zlib target)
  zlibvideo_wrap_zlib(${target} ${PROJECT_SOURCE_DIR}/tests/UntidyZlib.cpp)
endfunction()
