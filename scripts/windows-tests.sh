#!/usr/bin/env bash
# Checks that the Windows build has the tests of the dev build but for those that tests/not-on-windows.txt lists, all of
# which must be missing. Both must have been built.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

# The names of a build's tests, whichever way they are run.
tests_of() { # PRESET SUFFIX RUNNER...
    local preset=$1 suffix=$2 program
    shift 2
    for program in library-tests signal-tests allocation-tests console-tests conformance-tests; do
        "$@" "build/$preset/bin/$program$suffix" --gtest_list_tests | tr --delete '\r' |
            sed 's/ *#.*//' | awk '/^[^ ].*\.$/ { suite = $1 } /^  / { print suite $1 }'
    done
    ctest --preset "$preset" --show-only --label-exclude gtest | sed --quiet 's/^ *Test *#[0-9]*: //p'
}

scratch=$(mktemp --directory)
trap 'rm -rf "$scratch"' EXIT
tests_of dev "" env | sort >"$scratch/linux"
tests_of windows .exe scripts/wine.sh | sort >"$scratch/windows"
sed --quiet 's/^\([^# ][^ ]*\)  *[^ ].*/\1/p' tests/not-on-windows.txt | sort >"$scratch/listed" # those with a reason
if comm -13 "$scratch/linux" "$scratch/listed" | grep .; then
    echo "error: tests/not-on-windows.txt lists these, which there are not" >&2
    exit 1
fi
comm -23 "$scratch/linux" "$scratch/listed" >"$scratch/expected"

if ! diff --unified=0 --label "tests that are not listed as missing" --label "the Windows build" \
        "$scratch/expected" "$scratch/windows"; then
    echo "error: the Windows build has other tests than tests/not-on-windows.txt says" >&2
    exit 1
fi
echo "$(wc --lines <"$scratch/windows") tests as on Linux, $(wc --lines <"$scratch/listed") listed as missing"
