# Writes player.html: web/player.html with style and viewer of `info --html`, scripts and module.
file(READ ${REPORT}/report.css style)
file(READ ${REPORT}/viewer.js viewer)
file(READ ${CMAKE_CURRENT_LIST_DIR}/zlibvideo.mjs module)
file(READ ${CMAKE_CURRENT_LIST_DIR}/player.js player)
execute_process(COMMAND base64 -w 0 ${WASM} OUTPUT_VARIABLE wasm COMMAND_ERROR_IS_FATAL ANY)
configure_file(${CMAKE_CURRENT_LIST_DIR}/player.html player.html @ONLY)
