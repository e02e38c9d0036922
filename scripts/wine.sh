#!/usr/bin/env bash
# Runs a Windows program: wine.sh PROGRAM [ARGUMENT...]
# Before many of them:    wine.sh --start, and wine.sh --stop after them
#
# Wine keeps its settings in a folder of the project's (DEVICESSERVICE_WINEPREFIX names another), so that nobody's own
# are touched. Processes that outlive the program (wine's own, which it starts when a program needs them, and a child
# whose start failed) keep what the program was given as output. They get files, so that whoever reads the program's
# output waits for the program only.
set -euo pipefail

export WINEPREFIX=${DEVICESSERVICE_WINEPREFIX:-$HOME/.cache/DevicesService/wine}
export WINEDEBUG=${WINEDEBUG:--all}
export WINEDLLOVERRIDES='mscoree,mshtml='
wine=/usr/lib/wine

mkdir -p "$WINEPREFIX"
case ${1-} in
    --start)
        "$wine/wineserver64" --persistent || [ $? -eq 2 ] # 2: it runs already
        "$wine/wine64" wineboot </dev/null >/dev/null 2>&1
        "$wine/wine64" explorer </dev/null >/dev/null 2>&1 &
        ;;
    --stop) "$wine/wineserver64" --kill || true ;;
    *)
        said=$(mktemp --directory)
        trap 'rm -rf "$said"' EXIT
        touch "$said/output" "$said/errors"
        "$wine/wine64" "$@" <&0 >"$said/output" 2>"$said/errors" &
        program=$!
        trap 'kill "$program" 2>/dev/null || true; exit 143' TERM INT
        follow() { tail --follow --bytes=+1 --sleep-interval=0.1 --pid="$program" "$1"; }
        follow "$said/output" &
        follow "$said/errors" >&2 &
        status=0
        wait "$program" || status=$?
        wait
        exit $status
        ;;
esac
