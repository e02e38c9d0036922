#!/usr/bin/env bash
# Follows every link inside the manual. Usage: manual_test.sh FOLDER
set -euo pipefail

# A copy, because the program that follows links reads it as nobody when root starts it.
scratch=$(mktemp --directory)
trap 'rm -rf "$scratch"' EXIT
cp --recursive "$1/html" "$scratch/html"
chmod --recursive a+rX "$scratch"

follow() { # FILE
    linkchecker --config="$(dirname "${BASH_SOURCE[0]}")/linkchecker.ini" --no-status "$1" 2>&1
}

shown=$(follow "$scratch/html/index.html") || { echo "$shown" >&2; echo "error: links of the manual lead nowhere" >&2; exit 1; }
sed --quiet "s/^That's it\. /The manual: /p" <<<"$shown"
