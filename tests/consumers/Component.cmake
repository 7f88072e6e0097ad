# Brings in the component. -DKIND=static or shared names the installed library, installed leaves the
# choice to the package, subproject takes the sources as part of this build. -DOWN_ZLIB=ON defines
# ZLIB::ZLIB beforehand. Then defines add_player.
if(OWN_ZLIB)
  add_library(own_zlib INTERFACE)
  target_link_libraries(own_zlib INTERFACE z)
  add_library(ZLIB::ZLIB ALIAS own_zlib)
endif()
if(KIND STREQUAL subproject)
  add_subdirectory(${CMAKE_CURRENT_LIST_DIR}/../.. zlibvideo)
  if(TARGET zlibvideo_tool OR TARGET zlibvideo_tests OR TARGET zlibvideo_bench)
    message(FATAL_ERROR "a subproject must be the component alone")
  endif()
elseif(KIND STREQUAL installed)
  find_package(zlibvideo REQUIRED)
else()
  find_package(zlibvideo REQUIRED COMPONENTS ${KIND})
endif()
enable_testing()

include(${CMAKE_CURRENT_LIST_DIR}/SampleTest.cmake)

# add_player(NAME [SOURCE...]): the program of examples/OwnHost.cpp and the given sources. Its tests
# play the samples. zlib is for the program: it prints check values.
function(add_player name)
  add_executable(${name} ${CMAKE_CURRENT_FUNCTION_LIST_DIR}/../../examples/OwnHost.cpp ${ARGN})
  target_link_libraries(${name} PRIVATE zlibvideo::zlibvideo z)
  foreach(sample IN ITEMS desktop desktop-v2 desktop-v2-reduced)
    add_sample_test(${name} ${sample})
  endforeach()
endfunction()
