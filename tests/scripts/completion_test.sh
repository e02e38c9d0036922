#!/usr/bin/env bash
# Checks that bash, zsh and fish complete what service-console says. Usage: completion_test.sh PROGRAM FOLDER
set -euo pipefail

PATH="$(dirname "$1"):$PATH"
folder=$2
scratch=$(mktemp --directory)
trap 'rm -rf "$scratch"' EXIT
cd "$scratch"
touch note.txt

. "$folder/service-console"
complete -p service-console | grep -q -- "-F _service_console"
by_bash() {
    COMP_WORDS=(service-console "$@")
    COMP_CWORD=$#
    COMPREPLY=()
    _service_console
    echo "${COMPREPLY[*]}"
}

# What would ask zsh's completion system is replaced, as there is none without somebody who types.
by_zsh() {
    zsh --no-rcs -c 'compadd() { echo ${(P)2} } ; _files() { echo "files:" } ; compset() { : }
        words=(service-console "${@:2}") CURRENT=$# PREFIX=$words[$#]
        . "$1"' zsh "$folder/_service-console" "$@"
}

by_fish() {
    fish --no-config --command 'source $argv[1]/service-console.fish; complete --do-complete $argv[2]' \
        "$folder" "service-console $*" | sort | paste --serial --delimiters=" "
}

expect() {
    local shell=$1 expected=$2 given
    shift 2
    given=$("by_$shell" "$@")
    if [ "$given" != "$expected" ]; then
        echo "service-console $*: completed by $shell as '$given' instead of '$expected'"
        exit 1
    fi
}

service-console --state kept files put note.txt >kept.log
for shell in bash zsh fish; do
    expect $shell "temperature terms" te
    expect $shell "get load-table ls reset set" tune ""
    expect $shell "off on" tune set ulk-power discrete-attenuator ""
    expect $shell "serial" help ser
    expect $shell "note.txt" --state kept files rm ""
    expect $shell "correction-1 correction-10" corrections enable correction-1
done
service-console --state kept files put note.txt "a * b" >>kept.log
expect bash 'a\ \*\ b' --state kept files rm 'a\ '
expect bash 'a * b' --state kept files rm '"a'
expect bash "" files put ""
expect zsh "files:" files put ""
expect fish "note.txt" files put no
expect bash "serial" --provider simulated : answers = later ser
expect bash "simulated" --provider = simul
for shell in zsh fish; do
    expect $shell "serial" --provider simulated:answers=later ser
done
expect fish "--missing=lo-leakage" --missing=lo
