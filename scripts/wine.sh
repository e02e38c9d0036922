#!/usr/bin/env bash
# Runs a Windows program: wine.sh PROGRAM [ARGUMENT...]
# Before many of them:    wine.sh --start, and wine.sh --stop after them
#
# Wine keeps its settings in a folder of the project's (DEVICESSERVICE_WINEPREFIX names another), so that nobody's own are touched. It starts processes of its own when a
# program needs them, which would keep the program's pipes open after its end; --start has them running before, those of
# the desktop too.
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
    *) exec "$wine/wine64" "$@" ;;
esac
