#!/usr/bin/env bash
# Follows every link inside the manual. Usage: manual_test.sh FOLDER
set -euo pipefail

# A copy, because linkchecker reads as nobody when root starts it.
scratch=$(mktemp --directory)
trap 'rm -rf "$scratch"' EXIT
cp --recursive "$1/html" "$scratch/html"
chmod --recursive a+rX "$scratch"

# From every page, because the manual's menu and tree are made by scripts, which nobody follows.
settings=$(dirname "${BASH_SOURCE[0]}")/linkchecker.ini
if ! shown=$(linkchecker --config="$settings" --no-status "$scratch"/html/*.html 2>&1); then
    echo "$shown" >&2
    echo "error: links of the manual lead nowhere" >&2
    exit 1
fi
sed --quiet "s/^That's it\. /The manual: /p" <<<"$shown"
