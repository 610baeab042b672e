#!/usr/bin/env bash
# Formats all sources in place, or with --check names those that are not formatted: scripts/format.sh [--check]
set -euo pipefail
cd "$(dirname "$0")/.."

# Versions differ in what they make of the same options, so the one of Debian 12 comes first.
formatter=$(command -v clang-format-14 || command -v clang-format) || {
    echo "format: clang-format is not installed; scripts/setup.sh --tests installs it" >&2
    exit 1
}
mode=(-i)
[ "${1:-}" != --check ] || mode=(--dry-run --Werror)
rooms=()
for room in cmake compat editor engine plugin host samples tests benchmarks; do
    [ ! -d "$room" ] || rooms+=("$room")
done
find "${rooms[@]}" \( -name '*.cpp' -o -name '*.h' \) -type f -print0 | sort -z |
    xargs -0 -r -n 16 -P "$(nproc)" "$formatter" --style=file "${mode[@]}"
