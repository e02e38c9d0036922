#!/usr/bin/env bash
# Checks that bash completes what service-console says. Usage: completion_test.sh PROGRAM SCRIPT
set -euo pipefail

PATH="$(dirname "$1"):$PATH"
. "$2"

expect() {
    local expected=$1
    shift
    COMP_WORDS=(service-console "$@")
    COMP_CWORD=$#
    COMPREPLY=()
    _service_console
    if [ "${COMPREPLY[*]}" != "$expected" ]; then
        echo "service-console $*: completed by '${COMPREPLY[*]}' instead of '$expected'"
        exit 1
    fi
}

expect "temperature terms" te
expect "get load-table ls reset set" tune ""
expect "off on" tune set ulk-power discrete-attenuator ""
expect "" files put ""
expect "serial" --provider simulated : answers = later ser
complete -p service-console | grep -q -- "-F _service_console"
