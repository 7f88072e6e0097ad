# Brings in the component: the installed library that -DKIND=static or shared names, or the sources
# as part of this build. Then defines add_player.
if(KIND)
  find_package(zlibvideo REQUIRED COMPONENTS ${KIND})
else()
  add_subdirectory(${CMAKE_CURRENT_LIST_DIR}/../.. zlibvideo)
endif()
enable_testing()

# add_player(NAME [SOURCE...]): the program of Host.cpp, Play.cpp, Main.cpp and the sources given,
# played with each sample as its test.
function(add_player name)
  set(consumers ${CMAKE_CURRENT_FUNCTION_LIST_DIR})
  add_executable(${name}
    ${consumers}/Host.cpp ${consumers}/Play.cpp ${consumers}/Main.cpp ${ARGN})
  target_link_libraries(${name} PRIVATE zlibvideo::zlibvideo)
  foreach(sample IN ITEMS desktop desktop-v2 desktop-v2-reduced)
    set(stream ${consumers}/../../samples/${sample})
    add_test(NAME ${name}.${sample} COMMAND ${name} ${stream}.zvm ${stream}.hashes)
  endforeach()
endfunction()
