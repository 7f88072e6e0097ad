# The functions that a host defines, by their names in object files. Whoever links the component
# tells the linker to look for them from the start (-u). So the linker also finds them in a static
# library that it scans before the component.
set(zlibvideo_host_functions
  _ZN4Vorn9SystemNewEmNS_15FixedMallocOptsE
  _ZN4Vorn12SystemDeleteEPv
  _ZN4Vorn6GCHeap20SignalObjectTooLargeEv
  _ZN11SBitmapCore8LockBitsEb
  _ZN11SBitmapCore10UnlockBitsEv
  _ZN11SBitmapCore12UpdateMipMapE5SRECT
  _ZN11SBitmapCore7RestoreEv
  _ZN17VideoDecompressorC2EP10CorePlayerP9NetStream
  _ZN17VideoDecompressorD2Ev
  _ZN17VideoDecompressor6AddRefEv
  _ZN17VideoDecompressor13DeleteBuffersEN4Vorn5GCAPI5GCRefI7SObjectEE
  _ZN17VideoDecompressor14ReallocBuffersEN4Vorn5GCAPI5GCRefI7SObjectEE
  _ZN17VideoDecompressor13DeleteHWCodecEN4Vorn5GCAPI5GCRefI7SObjectEE
  _ZN17VideoDecompressor13ReallocBitmapEN4Vorn5GCAPI5GCRefI7SObjectEEiibb11EBitmapTypePK5SRECTPK6SPOINT)
list(TRANSFORM zlibvideo_host_functions PREPEND LINKER:-u, OUTPUT_VARIABLE
  zlibvideo_host_link_options)
