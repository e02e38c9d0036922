#!/usr/bin/env bash
# Installs build/release into an empty prefix and builds and runs the examples by find_package and by pkg-config, moves
# the prefix and does it again, and builds one by add_subdirectory; at the same time installs the Debian packages into a
# clean root, runs the console and the Python module there, does what the guide's first page shows, and removes them.
. "$(dirname "${BASH_SOURCE[0]}")/setup.sh"

if [ "$(id -u)" -ne 0 ]; then
    echo "error: only root can try the Debian packages in a root of their own" >&2
    exit 1
fi
scratch=$(mktemp --directory)
trap 'wait; rm -rf --one-file-system "$scratch"' EXIT # when both halves have ended

expect() { # TEXT COMMAND...
    local text=$1 shown
    shift
    shown=$("$@") || { echo "error: failed: $*" >&2; exit 1; }
    grep --quiet --fixed-strings "$text" <<<"$shown" || { echo "error: no '$text' in: $shown" >&2; exit 1; }
}
expect_failure() { # TEXT COMMAND...
    local text=$1 shown
    shift
    ! shown=$("$@" 2>&1) || { echo "error: succeeded: $*" >&2; exit 1; }
    shown=$(tr --squeeze-repeats '[:space:]' ' ' <<<"$shown") # lines are wrapped
    grep --quiet --fixed-strings "$text" <<<"$shown" || { echo "error: no '$text' in: $shown" >&2; exit 1; }
}
python_example="import devicesservice
with devicesservice.open() as instrument:
    print(instrument.serial_number.serial_number())"
build_example() { # EXAMPLE NAME OPTION...
    local example=$1 folder=$scratch/$2
    shift 2
    quietly cmake -G Ninja -S "examples/$example" -B "$folder" -DCMAKE_BUILD_TYPE=Debug "$@"
    quietly cmake --build "$folder" --target "$example"
}

try_prefix() { # NAME FOLDER
    local name=$1 prefix=$2 libraries flags
    libraries=$(find "$prefix" -name libDevicesService.so -printf '%h')
    [ -d "$libraries" ] || { echo "error: there is no library in $prefix" >&2; exit 1; }
    build_example minimal-host "$name-find-package" -DCMAKE_PREFIX_PATH="$prefix"
    expect "temperature: " timeout 60 "$scratch/$name-find-package/minimal-host"
    build_example own-registry "$name-own-registry" -DCMAKE_PREFIX_PATH="$prefix"
    expect "is still 4711" timeout 60 "$scratch/$name-own-registry/own-registry"
    flags=$(PKG_CONFIG_PATH=$libraries/pkgconfig pkg-config --cflags --libs \
        DevicesService-host DevicesService-simulator)
    # shellcheck disable=SC2086
    quietly g++ -std=c++23 -fPIC examples/minimal-host/main.cpp $flags "-Wl,-rpath,$libraries" \
        -o "$scratch/by-pkg-config"
    expect "temperature: " timeout 60 "$scratch/by-pkg-config"
    build_example tests-by-googletest "$name-googletest" -DCMAKE_PREFIX_PATH="$prefix"
    expect "[  PASSED  ] 6 tests." timeout 60 "$scratch/$name-googletest/tests-by-googletest"
    build_example tests-by-qttest "$name-qttest" -DCMAKE_PREFIX_PATH="$prefix"
    expect "Totals: 5 passed, 0 failed" timeout 60 "$scratch/$name-qttest/tests-by-qttest"
    build_example own-provider "$name-own-provider" -DCMAKE_PREFIX_PATH="$prefix"
    expect '"lo-leakage": true' "$prefix/bin/service-console" --json \
        --provider "$scratch/$name-own-provider/own-provider.so:enabled=true" tune get lo-leakage lo-leakage
    expect "1 rule: 1 pass" "$prefix/bin/service-conformance" --only LOOKUP-1 \
        --provider "$scratch/$name-own-provider/own-provider.so"
    expect "looked in: $libraries/DevicesService/providers" "$prefix/bin/service-console" providers
    expect "4711" "$prefix/bin/service-console" serial set 4711 --yes
    expect "100001" env PYTHONPATH="$prefix/lib/python3/dist-packages" /usr/bin/python3 -B -c "$python_example"
    quietly man --local-file "$prefix"/share/man/man1/*.1
    # Without a date, which would be another one each day.
    if mandoc -T lint -W warning "$prefix"/share/man/man1/*.1 | grep --invert-match "missing date"; then
        echo "error: these manual pages are written wrongly" >&2
        exit 1
    fi
    echo "$name: the example builds and runs by find_package and by pkg-config"
}

expect_everything() { # PREFIX
    local file
    for file in bin/service-console bin/service-conformance share/man/man1/service-conformance.1 \
            share/man/man1/service-console.1 share/man/man1/service-console-files.1 \
            share/bash-completion/completions/service-console share/zsh/vendor-completions/_service-console \
            share/fish/vendor_completions.d/service-console.fish \
            bin/service-workbench share/man/man1/service-workbench.1 share/applications/service-workbench.desktop \
            share/icons/hicolor/scalable/apps/service-workbench.svg \
            share/doc/DevicesService/html/index.html; do
        [ -e "$1/$file" ] || { echo "error: $file is not installed into $1" >&2; exit 1; }
    done
}

try_prefixes() {
    local window
    quietly cmake --install build/release --prefix "$scratch/prefix"
    if grep --recursive --text --fixed-strings --files-with-matches "$project_dir" "$scratch/prefix"; then
        echo "error: these installed files name the source tree" >&2
        exit 1
    fi
    try_prefix installed "$scratch/prefix"
    quietly cmake --install build/release --prefix "$scratch/bare" --component library
    quietly cmake --install build/release --prefix "$scratch/bare" --component development
    expect_failure "there are simulator, testing, host" cmake -S tests/package/missing-component -B "$scratch/unknown" \
        -DCMAKE_PREFIX_PATH="$scratch/prefix" -DCOMPONENTS="simulator;simulater"
    expect_failure "installed without its component 'host'" cmake -S tests/package/missing-component \
        -B "$scratch/missing" -DCMAKE_PREFIX_PATH="$scratch/bare" -DCOMPONENTS=host
    mv "$scratch/prefix" "$scratch/moved"
    try_prefix moved "$scratch/moved"
    expect_everything "$scratch/moved"
    build_example window window -DCMAKE_PREFIX_PATH="$scratch/moved"
    for window in window quick-window; do
        expect "100001; the window went on" env QT_QPA_PLATFORM=offscreen timeout 60 "$scratch/window/$window" --once
    done
    echo "windows: those of widgets and of QML ask, and do not stand still"
    build_example minimal-host add-subdirectory -DDEVICESSERVICE_SOURCE_DIR="$project_dir"
    expect "temperature: " timeout 60 "$scratch/add-subdirectory/minimal-host"
    build_example own-provider add-provider -DDEVICESSERVICE_SOURCE_DIR="$project_dir"
    expect '"lo-leakage": true' "$scratch/moved/bin/service-console" --json \
        --provider "$scratch/add-provider/own-provider.so:enabled=true" tune get lo-leakage lo-leakage
    echo "add_subdirectory: the examples build and run"
}

root=$scratch/root
in_root() {
    chroot "$root" env --unset=CMAKE_CXX_COMPILER_LAUNCHER DEBIAN_FRONTEND=noninteractive LC_ALL=C.UTF-8 "$@"
}

try_debian_packages() {
    local version mirror tools packages installed file
    rm -rf build/release/packages
    (cd build/release && quietly cpack)
    mkdir "$scratch/archive"
    tar --extract --gzip --strip-components=1 --directory "$scratch/archive" --file build/release/packages/*.tar.gz
    expect "4711" "$scratch/archive/bin/service-console" serial set 4711 --yes
    expect_everything "$scratch/archive"

    # A clean Debian without anything of a compiler: what the packages do not depend on is not there.
    version=$(sed --quiet 's/.*VERSION_CODENAME=//p' /etc/os-release)
    mirror=$(apt-get indextargets --format '$(REPO_URI)' "Codename: $version" "Origin: Debian" | sed --quiet 1p)
    quietly debootstrap --variant=minbase "$version" "$root" "$mirror"
    mkdir "$root/packages"
    cp build/release/packages/*.deb "$root/packages"
    tools=$(cd "$root" && ls packages/libdevicesservice[0-9]*.deb packages/devicesservice-tools*.deb \
        packages/service-workbench*.deb | sed 's|^|/|')
    # shellcheck disable=SC2086
    quietly in_root apt-get install --yes --no-install-recommends $tools
    expect "All 20 controls behaved" in_root service-console demo
    expect " rules: " in_root service-conformance
    expect "$(sed --quiet 's/^CMAKE_PROJECT_VERSION:.*=//p' build/release/CMakeCache.txt)" \
        in_root service-console --version
    expect "service-workbench " in_root env QT_QPA_PLATFORM=offscreen service-workbench --version

    quietly in_root apt-get install --yes --no-install-recommends \
        "$(cd "$root" && ls packages/python3-devicesservice*.deb | sed 's|^|/|')"
    expect "100001" in_root /usr/bin/python3 -c "$python_example"
    expect "PASS" in_root /usr/share/DevicesService/examples/production-test/production_test.py

    # The guide's first page, on this machine that has only the packages.
    papers transcripts docs/index.md chroot "$root" env --unset=CMAKE_CXX_COMPILER_LAUNCHER --chdir=/packages \
        DEBIAN_FRONTEND=noninteractive HOME=/root bash

    expect_everything "$root/usr"
    packages=$(cd build/release/packages && ls ./*.deb | sed 's|^./||; s|_.*||')
    # shellcheck disable=SC2086
    installed=$(in_root dpkg --listfiles $packages | while read -r file; do [ -d "$root$file" ] || echo "$file"; done)
    # shellcheck disable=SC2086
    quietly in_root dpkg --purge $packages
    for file in $installed /usr/share/doc/DevicesService /usr/share/DevicesService; do
        [ ! -e "$root$file" ] || { echo "error: removing the packages leaves $file behind" >&2; exit 1; }
    done
    echo "Debian packages: they install, run and build in a clean root, and nothing stays behind"
}

try_debian_packages &
try_prefixes
wait $! || { echo "error: the Debian packages failed, see above" >&2; exit 1; }
