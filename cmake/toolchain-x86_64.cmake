# Cross build for 64-bit Windows, for 64-bit hosts.
set(QV_ARCH x86_64)
include(${CMAKE_CURRENT_LIST_DIR}/mingw-cross.cmake)
# ctest runs the test programs through the 64-bit Wine loader.
set(CMAKE_CROSSCOMPILING_EMULATOR /usr/lib/wine/wine64)
