# 32-bit Windows with MinGW's compiler. CORVANTA_WIN32_PREFIX: the folder that packaging/windows/prefix made.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86)
set(corvanta_host i686-w64-mingw32)
set(CMAKE_C_COMPILER ${corvanta_host}-gcc-posix)
set(CMAKE_CXX_COMPILER ${corvanta_host}-g++-posix)
set(CMAKE_RC_COMPILER ${corvanta_host}-windres)
set(CMAKE_AR ${corvanta_host}-gcc-ar-posix)
set(CMAKE_RANLIB ${corvanta_host}-gcc-ranlib-posix)

set(corvanta_prefix "$ENV{CORVANTA_WIN32_PREFIX}")
set(CMAKE_FIND_ROOT_PATH "${corvanta_prefix}" "${corvanta_prefix}/qt" /usr/${corvanta_host})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# Windows 7 and later; the newest interfaces are looked up when the program runs.
add_compile_definitions(_WIN32_WINNT=0x0601 WINVER=0x0601)
