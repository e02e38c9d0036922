# shellcheck shell=bash
# Sourced by ./demo, ./check, ./bench and scripts/package.sh: what they share.
#
#   require_packages GROUP...   makes sure that the packages of these groups of packages.txt are installed
#   build_preset PRESET [NAME]  configures and builds build/PRESET, or build/NAME where the preset shares that
#   build_target PRESET TARGET  builds one target of build/PRESET, which is configured
#   papers [ARGUMENT...]        checks README and guide (tests/docs/check.py)

set -euo pipefail

project_dir=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
cd "$project_dir"

# As many compilers as processors: those more that Ninja would start slow the others down.
export CMAKE_BUILD_PARALLEL_LEVEL=${CMAKE_BUILD_PARALLEL_LEVEL:-$(nproc)}

# What this user's compilers have compiled before, in whichever clone, is taken from there.
if [ -x /usr/bin/ccache ]; then
    export CMAKE_CXX_COMPILER_LAUNCHER=/usr/bin/ccache
    export CCACHE_BASEDIR="$project_dir" CCACHE_NOHASHDIR=1 CCACHE_DEPEND=1
    export CCACHE_SLOPPINESS=pch_defines,time_macros,include_file_mtime,include_file_ctime
fi

# Prints the packages of these groups, each once.
packages_of() {
    awk -v groups="$*" '
        BEGIN           { count = split(groups, names); for (i = 1; i <= count; i++) wanted["[" names[i] "]"] }
        /^#/ || NF == 0 { next }
        /^\[/           { inside = $0 in wanted; next }
        inside          { print $1 }' scripts/packages.txt | sort --unique
}

is_installed() {
    [ "$(dpkg-query --show --showformat='${db:Status-Status}' "$1" 2>/dev/null)" = installed ]
}

require_packages() {
    local packages package missing=()
    packages=$(packages_of "$@")
    if [ -z "$packages" ]; then
        echo "error: scripts/packages.txt has no group of: $*" >&2
        exit 1
    fi
    for package in $packages; do
        is_installed "$package" || missing+=("$package")
    done
    [ ${#missing[@]} -eq 0 ] && return

    if [ "$(id -u)" -ne 0 ]; then
        echo "error: these packages are missing and only root can install them: ${missing[*]}" >&2
        echo "       run: sudo apt-get install --no-install-recommends ${missing[*]}" >&2
        exit 1
    fi
    echo "Installing ${missing[*]}"
    install_packages "${missing[@]}"
}

install_packages() {
    local log
    log=$(mktemp)
    if ! { apt-get update && DEBIAN_FRONTEND=noninteractive \
            apt-get install --yes --no-install-recommends "$@"; } >"$log" 2>&1; then
        tail -n 20 "$log" >&2
        rm -f "$log"
        echo "error: apt-get could not install: $*" >&2
        exit 1
    fi
    rm -f "$log"
}

# Runs a command and shows its output only when it fails.
quietly() {
    local log
    log=$(mktemp)
    if ! "$@" >"$log" 2>&1; then
        cat "$log" >&2
        rm -f "$log"
        echo "error: failed: $*" >&2
        exit 1
    fi
    rm -f "$log"
}

# On a terminal Ninja shows how far it is; elsewhere only what fails is shown.
watched() {
    if [ -t 1 ]; then
        "$@"
    else
        quietly "$@"
    fi
}

announce() {
    [ -f "build/$1/build.ninja" ] || echo "Building build/$1; the first time takes a minute or two" >&2
}

build_preset() {
    announce "${2:-$1}"
    quietly cmake --preset "$1"
    watched cmake --build --preset "$1"
}

build_target() {
    watched cmake --build --preset "$1" --target "$2"
}

# By Debian's own Python: markdown-it is installed for no other.
papers() {
    /usr/bin/python3 -B tests/docs/check.py "$@"
}
