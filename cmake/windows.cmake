# Toolchain: Windows programs by Debian's mingw-w64, run by wine. The libraries are those that tools/windows/ builds.

set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(CMAKE_C_COMPILER x86_64-w64-mingw32-gcc-posix)
set(CMAKE_CXX_COMPILER x86_64-w64-mingw32-g++-posix)
set(CMAKE_RC_COMPILER x86_64-w64-mingw32-windres)

if(DEFINED ENV{TARVIK_WINDOWS_LIBRARIES})
  set(TARVIK_WINDOWS_LIBRARIES $ENV{TARVIK_WINDOWS_LIBRARIES})
else()
  get_filename_component(TARVIK_WINDOWS_LIBRARIES ${CMAKE_CURRENT_LIST_DIR}/../build/windows/libraries ABSOLUTE)
endif()
set(CMAKE_FIND_ROOT_PATH ${TARVIK_WINDOWS_LIBRARIES} ${TARVIK_WINDOWS_LIBRARIES}/qt /usr/x86_64-w64-mingw32)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
set(ENV{PKG_CONFIG_LIBDIR} ${TARVIK_WINDOWS_LIBRARIES}/lib/pkgconfig:/usr/x86_64-w64-mingw32/lib/pkgconfig)
set(ENV{PKG_CONFIG_PATH} "")

# The compiler's own libraries go into the programs, so that these run wherever they are put. Without the time of the
# linking in them two builds are the same to the last byte.
set(CMAKE_EXE_LINKER_FLAGS_INIT "-static -Wl,--no-insert-timestamp")
set(CMAKE_SHARED_LINKER_FLAGS_INIT "-static -Wl,--no-insert-timestamp")
set(CMAKE_MODULE_LINKER_FLAGS_INIT "-static -Wl,--no-insert-timestamp")
set(CMAKE_CROSSCOMPILING_EMULATOR ${CMAKE_CURRENT_LIST_DIR}/../tools/windows/wine.sh)
