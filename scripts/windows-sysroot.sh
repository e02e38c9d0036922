#!/usr/bin/env bash
# Builds what the Windows build needs and Debian does not have for it: Qt Core and Test and GoogleTest by MinGW-w64 from
# the sources of Debian's own packages, in the versions of the machine's, and CLI11's headers.
# Usage: windows-sysroot.sh DIR
#
# DIR is left alone if it was built by this recipe from the same versions, and replaced otherwise. The packages of the
# groups [build], [tests] and [windows] must be installed.
set -euo pipefail

recipe=$(readlink -f "${BASH_SOURCE[0]}")
toolchain=$(dirname "$recipe")/../cmake/toolchains/windows-mingw.cmake
sysroot=$(realpath --canonicalize-missing "$1")

source_version() {
    dpkg-query --show --showformat='${source:Version}' "$1"
}
qt_version=$(source_version qt6-base-dev)

mkdir -p "$(dirname "$sysroot")"
exec 9>"$sysroot.lock" # one at a time
flock 9

stamp=$(
    cat "$recipe" "$toolchain" | sha256sum | cut --delimiter=' ' --fields=1
    dpkg-query --show qt6-base-dev libgtest-dev libcli11-dev g++-mingw-w64-x86-64-posix
)
if [ "$(cat "$sysroot/stamp" 2>/dev/null)" = "$stamp" ]; then
    exit
fi

if [ -n "$(ls -A "$sysroot" 2>/dev/null)" ] && [ ! -e "$sysroot/stamp" ]; then
    echo "error: $sysroot holds something else than what this script makes" >&2
    exit 1
fi
scratch=$(mktemp --directory)
trap 'rm -rf "$scratch"' EXIT
rm -rf "$sysroot"
mkdir "$sysroot"
touch "$sysroot/stamp" # empty until all is built

# Apt with a list of source packages of its own, so that the machine's is not touched.
mkdir -p "$scratch/sources" "$scratch/lists/partial"
for file in /etc/apt/sources.list.d/*.sources; do
    [ -f "$file" ] && sed 's/^Types:.*/Types: deb-src/' "$file" >"$scratch/sources/$(basename "$file")"
done
for file in /etc/apt/sources.list /etc/apt/sources.list.d/*.list; do
    [ -f "$file" ] && sed --quiet 's/^deb /deb-src /p' "$file" >>"$scratch/sources/all.list"
done
source_apt() {
    apt-get -o Dir::Etc::SourceList=/dev/null -o Dir::Etc::SourceParts="$scratch/sources" \
        -o Dir::State::Lists="$scratch/lists" -o APT::Sandbox::User=root "$@"
}
fetch_source() { # PACKAGE VERSION FOLDER
    (cd "$scratch" && source_apt --download-only source "$1=$2" && dpkg-source --extract "$1"_*.dsc "$3")
}
build() { # FOLDER OPTION...
    local folder=$1
    shift
    cmake -G Ninja -S "$folder" -B "$scratch/build-$(basename "$folder")" \
        -DCMAKE_TOOLCHAIN_FILE="$toolchain" -DCMAKE_BUILD_TYPE=Release -DCMAKE_INSTALL_PREFIX="$sysroot" "$@"
    cmake --build "$scratch/build-$(basename "$folder")"
    cmake --install "$scratch/build-$(basename "$folder")"
}

source_apt update
fetch_source qt6-base "$qt_version" qt

build "$scratch/qt" \
    -DQT_HOST_PATH=/usr -DQT_HOST_PATH_CMAKE_DIR="/usr/lib/$(gcc -dumpmachine)/cmake" \
    -DBUILD_SHARED_LIBS=ON -DQT_BUILD_EXAMPLES=OFF -DQT_BUILD_TESTS=OFF \
    -DFEATURE_{gui,widgets,network,sql,dbus,xml,concurrent,glib,icu,testlib_selfcover}=OFF \
    -DFEATURE_system_{zlib,pcre2,doubleconversion}=OFF
build /usr/src/googletest -DBUILD_GMOCK=ON -Dgtest_disable_pthreads=OFF
cp --recursive --parents /usr/include/CLI /usr/share/cmake/CLI11 "$scratch"
cp --recursive "$scratch/usr/include" "$scratch/usr/share" "$sysroot"

echo "$stamp" >"$sysroot/stamp"
