# The cross build for Windows with the mingw-w64 posix compilers of the
# architecture the including toolchain file names in QV_ARCH.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR ${QV_ARCH})
set(CMAKE_C_COMPILER ${QV_ARCH}-w64-mingw32-gcc-posix)
set(CMAKE_CXX_COMPILER ${QV_ARCH}-w64-mingw32-g++-posix)
set(CMAKE_RC_COMPILER ${QV_ARCH}-w64-mingw32-windres)
set(CMAKE_FIND_ROOT_PATH /usr/${QV_ARCH}-w64-mingw32)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
