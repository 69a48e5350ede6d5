# Sourced by run and test: names the Debian packages that each job needs and installs those that are missing.

packagesOfBuild=(g++ cmake ninja-build ccache
    libx11-dev libxext-dev libxrandr-dev libxrender-dev libfreetype-dev libfontconfig-dev
    libpng-dev)
# The interface text asks fontconfig for Arial; Liberation Sans has the same widths.
packagesOfShow=(fontconfig fonts-liberation)
# A display in memory, and what drives it: Python's standard library on top of Xlib and XTEST.
packagesOfDesktop=(xvfb python3 libx11-6 libxtst6)
# The last two are for libpng, which is built from its source package.
packagesOfWindowsBuild=(cmake ninja-build ccache g++-mingw-w64-x86-64-posix libz-mingw-w64-dev dpkg-dev)
packagesOfWine=(wine wine64 fonts-liberation)
packagesOfQuickTest=(libgtest-dev libgmock-dev googletest libjpeg62-turbo-dev libgif-dev libtiff-dev python3)
packagesOfTest=(git clang libclang-rt-14-dev clang-format clang-tidy g++-mingw-w64-i686-posix python3-pil)
# The peers of the benchmarks.
packagesOfBench=(libbenchmark-dev libopencv-core-dev libopencv-imgproc-dev libpixman-1-dev libjpeg62-turbo-dev libgif-dev libtiff-dev pkgconf python3-pil gpicview xvfb)

isInstalled() {
    [ "$(dpkg-query -W -f='${db:Status-Status}' "$1" 2>/dev/null)" = installed ]
}

# Of the packages given as arguments, prints those that are not installed. One query answers for all in the usual case.
missingPackages() {
    local package
    if [ "$(dpkg-query -W -f='${db:Status-Status}\n' "$@" 2>/dev/null | grep -cx installed)" -ge "$#" ]; then
        return
    fi
    for package in "$@"; do
        isInstalled "$package" || printf '%s\n' "$package"
    done
}

# Runs a command with the rights to install packages.
asRoot() {
    if [ "$(id -u)" = 0 ]; then
        "$@"
    elif command -v sudo >/dev/null; then
        sudo "$@"
    else
        echo "Neither root nor sudo: please run as root: $*" >&2
        return 1
    fi
}

# installGroups GROUP...: installs what the arrays packagesOfGROUP name and this machine lacks; silent when all is there.
installGroups() {
    local group wanted=() missing=()
    for group in "$@"; do
        local -n names="packagesOf$group"
        wanted+=("${names[@]}")
    done
    mapfile -t wanted < <(printf '%s\n' "${wanted[@]}" | sort -u)
    if ! command -v dpkg-query >/dev/null; then
        echo "This is no Debian system: please make sure that the equivalents of these are installed: ${wanted[*]}" >&2
        return 0
    fi
    mapfile -t missing < <(missingPackages "${wanted[@]}")
    [ ${#missing[@]} -gt 0 ] || return 0
    echo "Installing Debian packages: ${missing[*]}"
    asRoot apt-get update -q >/dev/null 2>&1 || echo "apt-get update failed; trying with the package lists at hand" >&2
    asRoot env DEBIAN_FRONTEND=noninteractive apt-get install -q -y --no-install-recommends "${missing[@]}" >/dev/null 2>&1 || {
        echo "The packages could not be installed; the command was: apt-get install --no-install-recommends ${missing[*]}" >&2
        return 1
    }
}
