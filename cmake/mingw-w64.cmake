# Cross build for 64-bit Windows with the Debian mingw-w64 compiler (posix thread model).
# Test programs run under Wine: wine64 is the emulator that ctest and gtest_discover_tests
# put in front of every Windows program (cmake/Wine.cmake wraps it with a private prefix).
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)

set(QC_MINGW_TRIPLE x86_64-w64-mingw32)
set(CMAKE_C_COMPILER ${QC_MINGW_TRIPLE}-gcc-posix)
set(CMAKE_CXX_COMPILER ${QC_MINGW_TRIPLE}-g++-posix)
set(CMAKE_RC_COMPILER ${QC_MINGW_TRIPLE}-windres)

set(CMAKE_FIND_ROOT_PATH /usr/${QC_MINGW_TRIPLE})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# The GCC runtime (libgcc, libstdc++, winpthread) is linked statically into the DLL and every
# program, so they run anywhere (and under Wine) with nothing but the library's DLL beside them.
set(CMAKE_EXE_LINKER_FLAGS_INIT "-static")
set(CMAKE_SHARED_LINKER_FLAGS_INIT "-static")

# Debian installs the 64-bit loader outside PATH.
find_program(QC_WINE64 NAMES wine64 PATHS /usr/lib/wine /usr/lib64/wine /opt/wine-stable/bin)
if(QC_WINE64)
    set(CMAKE_CROSSCOMPILING_EMULATOR ${QC_WINE64})
endif()
