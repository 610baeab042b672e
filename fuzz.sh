#!/usr/bin/env bash
# Looks for inputs that break what reads files from anyone: ./fuzz.sh [SECONDS] [NAME...]
#
#   SECONDS  for each fuzzer; 600 unless given
#   NAME     json, archive or import; all unless given
#
# Inputs that lead to new places stay in build/fuzz/found/<name>, where the next run begins, beside the seeds. One that
# breaks something is kept in build/fuzz/findings/; build/fuzz/bin/fuzz/fuzz-<name> FILE runs it alone.
set -euo pipefail
cd "$(dirname "$0")"
. scripts/common.sh

seconds=${1:-600}
[ $# = 0 ] || shift
[ $# != 0 ] || set -- json archive import

configure fuzz QUORVANE_FUZZERS=ON
build fuzz fuzzers
mkdir -p build/fuzz/findings
status=0
for name; do
    found=build/fuzz/found/$name
    mkdir -p "$found"
    dictionary=fuzz/archive.dict
    [ "$name" != json ] || dictionary=fuzz/json.dict
    echo "== fuzz: $name for $seconds s"
    log=build/fuzz/$name.log
    if ! nice build/fuzz/bin/fuzz/fuzz-"$name" -max_total_time="$seconds" -max_len=4096 -timeout=20 -rss_limit_mb=3000 \
        -print_final_stats=1 -dict="$dictionary" -artifact_prefix=build/fuzz/findings/"$name"- \
        "$found" build/fuzz/fuzz/seeds/"$name" >"$log" 2>&1; then
        tail -n 40 "$log" >&2
        status=1
    fi
    grep -E '^stat::(number_of_executed_units|average_exec_per_sec|peak_rss_mb)' "$log" || true
    grep -oE 'cov: [0-9]+ ft: [0-9]+ corp: [^ ]+' "$log" | tail -n 1 || true
done
[ $status != 0 ] || echo "== fuzz: nothing was found"
exit $status
