#!/usr/bin/env bash
# Builds libpng, which Debian packages for no Windows compiler, from Debian's own sources:
#   tools/windows_libpng.sh x86_64|i686
# The static library and its headers come to build/libpng/ARCHITECTURE, which survives the cleaning of any preset's
# folder; where they are there already, nothing is done. Needs no rights of the system: the package lists with sources
# lie below build/libpng too. The sources are kept in the user's cache, so that another clone needs no network.
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
. "$root/tools/private_apt.sh"

case "${1-}" in
    x86_64 | i686) architecture=$1 ;;
    *) echo "Usage: tools/windows_libpng.sh x86_64|i686" >&2; exit 2 ;;
esac
work=$root/build/libpng
result=$work/$architecture
kept=${XDG_CACHE_HOME:-${HOME:-/nonexistent}/.cache}/varnolite/libpng
[ ! -e "$result/complete" ] || exit 0
mkdir -p "$work"
# Two presets may be configured at once.
exec 9>"$work/lock"
flock 9
[ ! -e "$result/complete" ] || exit 0

# The newest version that can be had: lists may name one of the security suite that its server has let go.
fetchSource() {
    local release
    release=$(. /etc/os-release && echo "${VERSION_CODENAME-}")
    rm -rf "$work/source"
    mkdir -p "$work/source"
    cd "$work/source"
    apt-get "${aptOptions[@]}" source libpng1.6 || {
        rm -rf "${work:?}/source/"*
        apt-get "${aptOptions[@]}" source "libpng1.6/$release"
    }
    mv libpng1.6-*/ libpng
}

# With the instructions, and the alignment of stacks, that the program itself is built with.
buildLibrary() {
    rm -rf "$result" "$work/build-$architecture"
    cmake -S "$work/source/libpng" -B "$work/build-$architecture" -G Ninja \
        -DCMAKE_TOOLCHAIN_FILE="$root/cmake/mingw-$architecture.cmake" -DCMAKE_BUILD_TYPE=Release \
        -DCMAKE_INSTALL_PREFIX="$result" -DPNG_SHARED=OFF -DPNG_STATIC=ON -DPNG_TESTS=OFF \
        -DPNG_HARDWARE_OPTIMIZATIONS=ON -DPNG_INTEL_SSE=on -DCMAKE_C_FLAGS="-msse2 -mstackrealign"
    ninja -C "$work/build-$architecture" install
    rm -rf "$work/build-$architecture"
    touch "$result/complete"
}

fetchOnce() {
    [ ! -e "$work/source/libpng/CMakeLists.txt" ] || return 0
    if [ -e "$kept/CMakeLists.txt" ]; then
        rm -rf "$work/source"
        mkdir -p "$work/source"
        cp -r "$kept" "$work/source/libpng"
        return 0
    fi
    privateApt "$work/apt"
    updatePrivateApt deb-src
    fetchSource
    keepSource || echo "The sources could not be kept."
}

# Whole or not at all.
keepSource() {
    local part=$kept.$$
    mkdir -p "$(dirname "$kept")" && cp -r "$work/source/libpng" "$part" && mv -T "$part" "$kept"
}

log=$work/build-$architecture.log
echo "Building libpng for Windows, $architecture"
set +e
(
    set -e
    fetchOnce
    buildLibrary
) >"$log" 2>&1
status=$?
if [ $status -ne 0 ]; then
    tail -n 30 "$log" >&2
    echo "libpng could not be built for Windows; see $log" >&2
    exit 1
fi
