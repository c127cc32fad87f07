# Builds for Windows on Debian: Debian's MinGW with POSIX threads, and the libraries of KARVO_WINDOWS_SYSROOT, a folder
# (tools/prepare.sh unpacks it; packaging/windows/build_sysroot.sh makes it).
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)

set(prefix x86_64-w64-mingw32)
set(CMAKE_C_COMPILER ${prefix}-gcc-posix)
set(CMAKE_CXX_COMPILER ${prefix}-g++-posix)
set(CMAKE_RC_COMPILER ${prefix}-windres)

# A trial of the compiler reads this file again, without the variables of the first reading.
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES KARVO_WINDOWS_SYSROOT)
if(NOT IS_DIRECTORY "${KARVO_WINDOWS_SYSROOT}")
    message(FATAL_ERROR "KARVO_WINDOWS_SYSROOT has to name a folder: packaging/windows/README.md")
endif()
set(CMAKE_FIND_ROOT_PATH ${KARVO_WINDOWS_SYSROOT} /usr/${prefix})
set(CMAKE_PREFIX_PATH ${KARVO_WINDOWS_SYSROOT})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# moc, rcc and the like are programs of this computer.
set(QT_HOST_PATH /usr)
set(QT_HOST_PATH_CMAKE_DIR /usr/lib/x86_64-linux-gnu/cmake)

set(CMAKE_CROSSCOMPILING_EMULATOR /usr/lib/wine/wine64)
