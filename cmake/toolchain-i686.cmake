# Cross build for 32-bit Windows: the deployment target, matching the 32-bit host IDE.
set(QV_ARCH i686)
include(${CMAKE_CURRENT_LIST_DIR}/mingw-cross.cmake)
# ctest runs the test programs through the 32-bit Wine loader.
set(CMAKE_CROSSCOMPILING_EMULATOR /usr/lib/wine/wine)
