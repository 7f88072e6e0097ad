# The headers for embedders, with the names <zlibvideo/FOLDER/NAME.h>. They include each other
# relative to themselves: a folder of the embedder cannot come between them.
set(zlibvideo_public_headers
  bitstream/ByteCursor.h
  bitstream/ByteSpan.h
  bitstream/FrameHeader.h
  bitstream/MemoryBound.h
  bitstream/StandaloneFinder.h
  capi/zlibvideo.h
  decoder/Version.h
  decoder/ZLibVideoDecompressor.h
  grid/BitmapDataBlock.h
  grid/BlockedCodec.h
  grid/Sizes.h
  host/EBitmapType.h
  host/Export.h
  host/GCHeap.h
  host/GCRef.h
  host/Guarded.h
  host/HostObject.h
  host/RenderRecord.h
  host/SBitmapCore.h
  host/SObject.h
  host/SPOINT.h
  host/SRECT.h
  host/SystemMemory.h
  host/TCMessage.h
  host/VideoDecompressor.h
  host/standin/StandInBitmap.h
  host/standin/StandInMessage.h
  host/standin/StandInVideoObject.h)

# A superproject sees these headers and no others, under the names that an installation gives them.
foreach(header IN LISTS zlibvideo_public_headers)
  file(CONFIGURE OUTPUT include/zlibvideo/${header}
    CONTENT "#include \"${PROJECT_SOURCE_DIR}/${header}\"\n")
endforeach()
set(zlibvideo_public_include_dirs $<BUILD_INTERFACE:${PROJECT_BINARY_DIR}/include>)
if(ZLIBVIDEO_INSTALL)
  list(APPEND zlibvideo_public_include_dirs $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)
endif()
