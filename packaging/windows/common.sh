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

# And what putting the program together needs besides.
windows_packages_build=(ccache nsis fonts-noto-cjk qttools5-dev-tools qttranslations5-l10n)

# Sets CORVANTA_WIN32_PREFIX to a finished prefix's folder and has pkg-config look there alone: the one that is named, an
# archive's contents, or the one that was built here. False when there is none.
windows_find_prefix() {
    local named="${CORVANTA_WIN32_PREFIX:-}"
    if [[ -f "$named" ]]; then
        local unpacked="$windows_work/unpacked" archive
        archive="$(realpath "$named")"
        if [[ "$(cat "$unpacked/from" 2>/dev/null)" != "$archive $(stat -c %Y "$archive")" ]]; then
            rm -rf "$unpacked"
            mkdir -p "$unpacked"
            tar -C "$unpacked" -xf "$archive"
            printf '%s %s' "$archive" "$(stat -c %Y "$archive")" >"$unpacked/from"
        fi
        named="$unpacked/prefix"
    elif [[ -z "$named" && -f "$windows_work/prefix.tar.xz" ]]; then
        named="$windows_work/prefix"
    fi
    [[ -x "$named/qt/bin/moc" ]] || return 1
    CORVANTA_WIN32_PREFIX="$(realpath "$named")"
    export CORVANTA_WIN32_PREFIX PKG_CONFIG_PATH=
    export PKG_CONFIG_LIBDIR="$CORVANTA_WIN32_PREFIX/lib/pkgconfig:$CORVANTA_WIN32_PREFIX/share/pkgconfig"
}
