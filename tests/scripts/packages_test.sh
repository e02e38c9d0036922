#!/usr/bin/env bash
# Checks how the set-up of ./demo and ./check finds and installs packages, with stand-ins for the
# system's commands. Usage: packages_test.sh PROJECT_DIR
set -euo pipefail

scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
mkdir "$scratch/bin"

stand_in() {
    printf '#!/bin/sh\n%s\n' "$2" >"$scratch/bin/$1"
    chmod +x "$scratch/bin/$1"
}

fail() {
    echo "FAILED: $1" >&2
    [ -f "$scratch/output" ] && cat "$scratch/output" >&2
    exit 1
}

# Runs require_packages with the groups given; its output goes to $scratch/output.
set_up() {
    PATH="$scratch/bin:$PATH" bash -c '. "$0/scripts/setup.sh"; require_packages "$@"' "$project" "$@" \
        >"$scratch/output" 2>&1
}

project=$1

# Knows the packages in $scratch/installed; installing adds to them.
touch "$scratch/installed"
stand_in dpkg-query "grep --quiet --line-regexp \"\$3\" '$scratch/installed' && printf installed"
stand_in apt-get "echo apt-get \"\$@\" >>'$scratch/calls'; [ \"\$1\" = update ] || printf '%s\n' \"\$@\" >>'$scratch/installed'"

stand_in id 'echo 1000'
set_up build && fail "succeeds without root though everything is missing"
grep --quiet '^error: .*missing.* qt6-base-dev' "$scratch/output" || fail "does not name what is missing"
grep --quiet 'run: sudo apt-get install .*qt6-base-dev' "$scratch/output" || fail "does not say what to run"
[ ! -e "$scratch/calls" ] || fail "calls apt-get without root"

stand_in id 'echo 0'
set_up biuld && fail "takes a misspelt group for one that needs nothing"
[ ! -e "$scratch/calls" ] || fail "calls apt-get for a misspelt group"
set_up build || fail "does not install as root"
grep --quiet 'apt-get install .*qt6-base-dev' "$scratch/calls" || fail "does not install what is missing"
if grep --quiet clang "$scratch/calls"; then fail "installs what another group needs"; fi

rm "$scratch/calls"
set_up build || fail "does not succeed a second time"
[ ! -e "$scratch/calls" ] || fail "calls apt-get though nothing is missing"
[ ! -s "$scratch/output" ] || fail "is not silent though nothing is missing"

set_up clang lint || fail "does not install two groups"
[ "$(grep --count 'apt-get install' "$scratch/calls")" = 1 ] || fail "installs two groups in two steps"
[ "$(grep --only-matching ' clang-19' "$scratch/calls" | wc -l)" = 1 ] || fail "names a package twice"

stand_in id 'echo 1000'
set_up build clang lint || fail "needs root though nothing is missing"

: >"$scratch/installed"
stand_in id 'echo 0'
stand_in apt-get 'echo no network; exit 100'
set_up build && fail "succeeds though apt-get fails"
grep --quiet 'no network' "$scratch/output" || fail "hides what apt-get said"
grep --quiet '^error: apt-get could not install: .*qt6-base-dev' "$scratch/output" || fail "does not say what failed"

echo "passed"
