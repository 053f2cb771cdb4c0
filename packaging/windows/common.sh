# shellcheck shell=bash
# What the scripts for Windows share. Sourced, never run.

windows_root="$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)"
windows_here="$windows_root/packaging/windows"
# shellcheck source=scripts/common.sh
source "$windows_root/scripts/common.sh"

windows_host=i686-w64-mingw32
windows_work="${CORVANTA_WIN32_WORK:-$windows_root/build/windows}"

# What building needs of this system; the third-party libraries are built, not installed.
windows_packages=(
    g++-mingw-w64-i686-posix gcc-mingw-w64-i686-posix binutils-mingw-w64-i686 mingw-w64-i686-dev
    cmake ninja-build make pkg-config dpkg-dev patch perl python3 autoconf automake libtool nasm xz-utils zip
    qtbase5-dev-tools g++ gcc tcl libboost-dev
)
