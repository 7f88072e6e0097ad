# zlibvideo_link_untidy_zlib(TARGET) routes TARGET's calls of zlib through tests/UntidyZlib.cpp.
function(zlibvideo_link_untidy_zlib target)
  target_sources(${target} PRIVATE ${PROJECT_SOURCE_DIR}/tests/UntidyZlib.cpp)
  target_link_options(${target} PRIVATE
    LINKER:--wrap=inflate,--wrap=uncompress,--wrap=inflateInit2_,--wrap=inflateEnd)
endfunction()
