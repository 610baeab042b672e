#!/usr/bin/env bash
# Builds and runs the benchmarks: ./bench.sh [NAME]
#
# One line per measure: name, ratio, target, and "met" or "MISSED". Fails where one is missed.
set -euo pipefail
cd "$(dirname "$0")"
. scripts/common.sh

{
    scripts/setup.sh --tests
    configure release QUORVANE_TESTS=ON QUORVANE_BENCHMARKS=ON
    build release benchmarks Localization
} >&2

mapfile -t programs < <(grep . build/release/benchmarks.txt)
if [ $# -gt 0 ]; then
    if ! printf '%s\n' "${programs[@]}" | grep -qx "bench-$1"; then
        echo "bench: there is no benchmark $1; there are: ${programs[*]#bench-}" >&2
        exit 1
    fi
    programs=("bench-$1")
fi
[ ${#programs[@]} != 0 ] || {
    echo "bench: there are no benchmarks" >&2
    exit 1
}

output=$(mktemp)
trap 'rm -f "$output"' EXIT
status=0
for program in "${programs[@]}"; do
    "build/release/bin/$program" | tee "$output" || status=1
    if ! grep -qE ' (met|MISSED)$' "$output"; then
        echo "bench: $program printed no measure" >&2
        status=1
    fi
    ! grep -q ' MISSED$' "$output" || status=1
done
exit $status
