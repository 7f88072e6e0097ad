# Toolchain of script/cross: Debian's cross compiler for ZLIBVIDEO_CROSS_TRIPLET, libraries of that
# machine unpacked in ZLIBVIDEO_CROSS_LIBRARIES, programs run by QEMU.
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES
  ZLIBVIDEO_CROSS_TRIPLET ZLIBVIDEO_CROSS_LIBRARIES)

string(REGEX MATCH "^[^-]+" CMAKE_SYSTEM_PROCESSOR ${ZLIBVIDEO_CROSS_TRIPLET})
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_CXX_COMPILER ${ZLIBVIDEO_CROSS_TRIPLET}-g++)

# The folders of libraries are named by the architecture, which "i686" is more than.
string(REGEX REPLACE "^i[4-6]86" "i386" multiarch ${ZLIBVIDEO_CROSS_TRIPLET})
set(libdir ${ZLIBVIDEO_CROSS_LIBRARIES}/usr/lib/${multiarch})
set(CMAKE_FIND_ROOT_PATH ${ZLIBVIDEO_CROSS_LIBRARIES} /usr/${ZLIBVIDEO_CROSS_TRIPLET})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
set(CMAKE_CXX_STANDARD_INCLUDE_DIRECTORIES ${ZLIBVIDEO_CROSS_LIBRARIES}/usr/include)
set(libpath ${ZLIBVIDEO_CROSS_LIBRARIES}/lib/${multiarch}:${libdir})
set(CMAKE_EXE_LINKER_FLAGS_INIT "-L${libdir} -Wl,-rpath-link,${libpath}")
set(CMAKE_SHARED_LINKER_FLAGS_INIT ${CMAKE_EXE_LINKER_FLAGS_INIT})
set(ENV{PKG_CONFIG_LIBDIR} ${libdir}/pkgconfig)
set(ENV{PKG_CONFIG_SYSROOT_DIR} ${ZLIBVIDEO_CROSS_LIBRARIES})

if(multiarch STREQUAL i386-linux-gnu)
  # This machine's processor runs these, faster and better than QEMU, which hangs on threads.
  set(CMAKE_CROSSCOMPILING_EMULATOR /usr/${ZLIBVIDEO_CROSS_TRIPLET}/lib/ld-linux.so.2
    --library-path ${libpath}:/usr/${ZLIBVIDEO_CROSS_TRIPLET}/lib)
else()
  set(CMAKE_CROSSCOMPILING_EMULATOR
    qemu-${CMAKE_SYSTEM_PROCESSOR} -L /usr/${ZLIBVIDEO_CROSS_TRIPLET}
    -E LD_LIBRARY_PATH=${libpath})
endif()
