# shellcheck shell=bash disable=SC2034 # the package lists are read by those who source this
# Shared by the commands at the root (run, test, bench) and by .ci/run: what must be installed, and how a preset is
# built. Sourced, never run. Everything here can be repeated; what is in place already is left alone. No function
# counts on `set -e`, which is off wherever the caller asks for the function's status.

corvanta_root="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"

corvanta_packages_build=(
    g++ cmake ninja-build ccache pkg-config
    qtbase5-dev libqt5svg5-dev libqt5charts5-dev qtmultimedia5-dev libqt5multimedia5-plugins libqt5sql5-sqlite libgsf-1-dev
    libsoci-dev libboost-dev libsqlite3-dev libsodium-dev zlib1g-dev libcurl4-openssl-dev libpugixml-dev
    qtkeychain-qt5-dev qttools5-dev-tools qttranslations5-l10n
    libavformat-dev libavcodec-dev libavutil-dev libswresample-dev libswscale-dev
    libfreetype-dev nlohmann-json3-dev libsystemd-dev
    qtwebengine5-dev libqt5webchannel5-dev
    libmodbus-dev libmosquitto-dev libmuparser-dev libgpiod-dev libopencv-core-dev libopencv-imgproc-dev
    libopencv-calib3d-dev libzbar-dev libqrencode-dev
)
# npm of another origin is as good, and does not go together with the distribution's.
command -v npm >/dev/null || corvanta_packages_build+=(nodejs npm)
corvanta_packages_run=(fonts-noto-cjk xvfb xauth libgl1-mesa-dri libsecret-1-0 gstreamer1.0-pulseaudio)
corvanta_packages_test=(
    "${corvanta_packages_run[@]}"
    sqlite3 ffmpeg mosquitto mosquitto-clients gir1.2-gst-rtsp-server-1.0 python3-gi
    gstreamer1.0-plugins-base gstreamer1.0-plugins-good gstreamer1.0-plugins-bad gstreamer1.0-plugins-ugly
    gstreamer1.0-libav microsocks tinyproxy dbus python3-dbusmock gnome-keyring procps xdotool
    openbox libxcb1-dev python3 python3-xlrd mpv libopencv-videoio-dev pulseaudio pulseaudio-utils
    socat python3-pymodbus python3-serial python3-serial-asyncio opencv-doc nginx openssl
)
corvanta_packages_ci=(g++-mingw-w64-i686 clang-format clang-tidy)
corvanta_packages_debian=(dpkg-dev file gzip)
corvanta_packages_debian_test=(mmdebstrap lintian xvfb xauth xdotool)
corvanta_packages_fuzz=(clang)
corvanta_packages_bench=(libbenchmark-dev python3 python3-xlwt sqlite3 gir1.2-gst-plugins-base-1.0 gstreamer1.0-x
    zbar-tools libopencv-objdetect-dev)

corvanta_say() { printf '== %s\n' "$*"; }

corvanta_fail() {
    printf '%s: %s\n' "$(basename "$0")" "$*" >&2
    exit 1
}

# Those of the given packages that dpkg does not have installed, one a line. Asks no network.
corvanta_missing() {
    local package
    for package in "$@"; do
        # shellcheck disable=SC2016 # dpkg-query's own field, not the shell's
        if [[ "$(dpkg-query -W -f='${db:Status-Status}\n' "$package" 2>/dev/null | sort -u)" != installed ]]; then
            printf '%s\n' "$package"
        fi
    done
}

corvanta_as_root() {
    if [[ $EUID -eq 0 ]]; then
        "$@"
    elif ! command -v sudo >/dev/null; then
        corvanta_fail "this needs root, and there is no sudo: $*"
    elif [[ -t 0 ]]; then
        sudo "$@"
    else
        sudo -n "$@"
    fi
}

# Installs those of the given packages that are missing. Nothing is asked, nothing is done when none is.
corvanta_install() {
    local -a missing
    mapfile -t missing < <(corvanta_missing "$@")
    if [[ ${#missing[@]} -eq 0 ]]; then
        return 0
    fi
    command -v apt-get >/dev/null || corvanta_fail "no apt-get here; please install: ${missing[*]}"
    corvanta_say "installing ${missing[*]}"
    corvanta_as_root env DEBIAN_FRONTEND=noninteractive apt-get -q update || return
    corvanta_as_root env DEBIAN_FRONTEND=noninteractive apt-get -q install --yes --no-install-recommends \
        -o Dpkg::Use-Pty=0 "${missing[@]}"
}

# The compiler's cache serves every clone of this tree: paths are hashed relative to the clone.
corvanta_use_ccache() {
    export CCACHE_BASEDIR="${CCACHE_BASEDIR:-$corvanta_root}" CCACHE_NOHASHDIR="${CCACHE_NOHASHDIR:-1}"
    if [[ -z "${CCACHE_DIR:-}" ]]; then
        local cache="${XDG_CACHE_HOME:-${HOME:-/nonexistent}/.cache}/ccache"
        if ! mkdir -p "$cache" 2>/dev/null || [[ ! -w "$cache" ]]; then
            cache="$corvanta_root/build/ccache"
        fi
        export CCACHE_DIR="$cache"
    fi
}

# corvanta_build PRESET [CMAKE-OPTION...]: configures build/PRESET and builds it whole.
corvanta_build() {
    local preset="$1"
    shift
    corvanta_use_ccache
    (
        cd "$corvanta_root" &&
            cmake --preset "$preset" "$@" &&
            cmake --build --preset "$preset" --parallel "$(nproc)"
    )
}
