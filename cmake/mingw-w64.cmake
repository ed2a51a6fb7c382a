# For Windows from another system, with the mingw-w64 compiler whose threads are those of the standard library. Qt for it
# is looked for in CMAKE_PREFIX_PATH, its tools (moc, rcc, uic) in QT_HOST_PATH. See docs/windows.md.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)

set(CMAKE_C_COMPILER x86_64-w64-mingw32-gcc-posix)
set(CMAKE_CXX_COMPILER x86_64-w64-mingw32-g++-posix)
set(CMAKE_RC_COMPILER x86_64-w64-mingw32-windres)

set(CMAKE_FIND_ROOT_PATH /usr/x86_64-w64-mingw32)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE BOTH)

# The tests are run by it.
find_program(QUORVEX_WINE NAMES wine64 wine)
if(QUORVEX_WINE)
  set(CMAKE_CROSSCOMPILING_EMULATOR ${QUORVEX_WINE})
endif()
