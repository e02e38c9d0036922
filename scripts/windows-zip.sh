#!/usr/bin/env bash
# Packs the Windows build and tries the ZIP: the console runs from it with nothing else to find its DLLs in.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

scratch=$(mktemp --directory)
trap 'rm -rf "$scratch"' EXIT

rm -rf build/windows/packages
(cd build/windows && cpack -G ZIP >"$scratch/log" 2>&1) || { cat "$scratch/log" >&2; exit 1; }
zip=$(echo build/windows/packages/*.zip)
(cd "$scratch" && cmake -E tar xf "$OLDPWD/$zip")
unpacked=$(echo "$scratch"/DevicesService-*)

for file in bin/DevicesService.dll bin/Devices.dll bin/Qt6Core.dll bin/service-console.exe \
        bin/service-conformance.exe bin/providers/simulated-provider.dll \
        include/DevicesService/service/servicecontrols.h lib/libDevicesService.dll.a \
        lib/cmake/DevicesService/DevicesServiceConfig.cmake; do
    [ -f "$unpacked/$file" ] || { echo "error: $zip lacks $file" >&2; exit 1; }
done

console() {
    env --chdir="$scratch" WINEPATH= "$PWD/scripts/wine.sh" "$unpacked/bin/service-console.exe" "$@" | tr --delete '\r'
}
expect() { # PATTERN ARGUMENT...
    local pattern=$1 shown
    shift
    shown=$(console "$@") && grep --quiet "$pattern" <<<"$shown" ||
        { echo "error: service-console $*: no '$pattern' in: $shown" >&2; exit 1; }
}
expect '^4711$' --state kept.cbor serial set 4711 --yes
expect '^4711$' --state kept.cbor serial get
expect 'loaded from .*bin.DevicesService.dll' info
expect '^All 20 controls behaved' demo
rm "$unpacked/bin/Qt6Core.dll"
if console info >/dev/null 2>&1; then
    echo "error: the console found a DLL elsewhere than in the ZIP" >&2
    exit 1
fi
echo "$zip: $(du --apparent-size -h "$zip" | cut --fields=1), the console runs from it"
