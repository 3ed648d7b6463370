# SPDX-License-Identifier: Zlib
# Cross-compiles for 64-bit Windows with MinGW-w64 (Debian's g++-mingw-w64-x86-64-posix, whose
# posix thread model gives std::thread and std::async). Used by `./dev windows`.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)

set(WINDOW_MINGW_TRIPLE x86_64-w64-mingw32)
set(CMAKE_C_COMPILER ${WINDOW_MINGW_TRIPLE}-gcc-posix)
set(CMAKE_CXX_COMPILER ${WINDOW_MINGW_TRIPLE}-g++-posix)
set(CMAKE_RC_COMPILER ${WINDOW_MINGW_TRIPLE}-windres)

# Libraries and packages come from the MinGW sysroot and the prefixes named in
# CMAKE_PREFIX_PATH / CMAKE_FIND_ROOT_PATH (the cross-built SDL2 and GoogleTest), never from the
# Linux system; programs come from the build machine.
set(CMAKE_FIND_ROOT_PATH /usr/${WINDOW_MINGW_TRIPLE})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# The folder where `./dev windows` installs what it cross-builds (SDL2, GoogleTest) and links
# Boost's headers: searched like the sysroot.
# Its include folder is also on every compiler's default path, as /usr/include is on Linux: a
# header-only library that a public header includes (Boost) is found without being named.
# A project that uses an installed Windows build of the library names its prefix as any CMake
# project does, in CMAKE_PREFIX_PATH: searched like the sysroot as well, since packages are found
# only below the roots.
if(CMAKE_PREFIX_PATH)
    list(APPEND CMAKE_FIND_ROOT_PATH ${CMAKE_PREFIX_PATH})
endif()
if(WINDOW_MINGW_PREFIX)
    list(APPEND CMAKE_FIND_ROOT_PATH ${WINDOW_MINGW_PREFIX})
    set(CMAKE_C_STANDARD_INCLUDE_DIRECTORIES ${WINDOW_MINGW_PREFIX}/include)
    set(CMAKE_CXX_STANDARD_INCLUDE_DIRECTORIES ${WINDOW_MINGW_PREFIX}/include)
endif()
