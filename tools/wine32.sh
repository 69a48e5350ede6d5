#!/usr/bin/env bash
# Lets the 64-bit Wine run 32-bit Windows programs without windows of their own: tools/wine32.sh
# The libraries of Windows that they need come to build/wine32; Debian has them in the package libwine of the
# architecture i386, in whose place nothing is installed. Wine finds them where WINEDLLPATH names that folder and the
# Wine folder WINEPREFIX, which must be there, has their copies. The libraries are kept in the user's cache, so that
# another clone needs no network.
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
. "$root/tools/private_apt.sh"
work=$root/build/wine32
result=$work/i386-windows
version=$(dpkg-query -W -f='${Version}' libwine)
kept=${XDG_CACHE_HOME:-${HOME:-/nonexistent}/.cache}/varnolite/wine32/$version

# What the tests import, and what that imports.
libraries=(advapi32 combase gdi32 kernel32 kernelbase msvcrt ntdll ole32 rpcrt4 sechost ucrtbase user32 version win32u)

fetch() {
    local paths=("${libraries[@]/%/.dll}")
    mkdir -p "$work/package"
    privateApt "$work/apt" -o APT::Architecture=i386 -o APT::Architectures::=i386
    updatePrivateApt deb
    (cd "$work/package" && apt-get "${aptOptions[@]}" download "libwine=$version")
    dpkg-deb --fsys-tarfile "$work"/package/libwine_*_i386.deb |
        tar -x -C "$work/package" "${paths[@]/#/./usr/lib/i386-linux-gnu/wine/i386-windows/}"
    # Debian's Wine takes its zlib from the compiler's package.
    cp /usr/i686-w64-mingw32/lib/zlib1.dll "$work/package/usr/lib/i386-linux-gnu/wine/i386-windows"
    mv "$work/package/usr/lib/i386-linux-gnu/wine/i386-windows" "$result"
    rm -rf "$work/package" "$work/apt"
}

# Whole or not at all.
keep() {
    local part=$kept.$$
    mkdir -p "$(dirname "$kept")" && cp -r "$result" "$part" && mv -T "$part" "$kept"
}

if [ ! -d "$result" ]; then
    rm -rf "$work"
    mkdir -p "$work"
    if [ -d "$kept" ]; then
        cp -r "$kept" "$work/part" && mv "$work/part" "$result"
    else
        fetch
        keep || echo "The libraries could not be kept."
    fi
fi
cp "$result"/*.dll "$WINEPREFIX/drive_c/windows/syswow64"
