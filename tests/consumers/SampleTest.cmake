# add_sample_test(PROGRAM SAMPLE [LIST...]): PROGRAM plays the sample, and must print the lines of the
# sample's list of hashes and of the other lists.
function(add_sample_test program sample)
  set(stream ${CMAKE_CURRENT_FUNCTION_LIST_DIR}/../../samples/${sample})
  add_test(NAME ${program}.${sample} COMMAND sh -c
    [=[lines=$("$0" "$1") && shift && [ "$lines" = "$(cat "$@")" ]]=]
    $<TARGET_FILE:${program}> ${stream}.zvm ${stream}.hashes ${ARGN})
endfunction()
