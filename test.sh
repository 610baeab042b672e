#!/usr/bin/env bash
# Builds and tests everything: ./test.sh [--full] [REGEX]
#
#   --full   also the formatter, Clang with address, leak and undefined-behaviour sanitizers, clang-tidy, and catalogues of
#            published applications
#   REGEX    only the tests whose names match, "editor-tests:Ui" for instance
set -euo pipefail
cd "$(dirname "$0")"
. scripts/common.sh

full=
if [ "${1:-}" = --full ]; then
    full=yes
    shift
fi

suite() {
    local preset=$1
    shift
    configure "$preset" QUORVANE_TESTS=ON
    build "$preset"
    run_ctest "$preset" "$@"
}

scripts/setup.sh --tests
if [ -n "$full" ]; then
    tests/catalogues/fetch.sh .deps/catalogues
    echo "== format"
    scripts/format.sh --check
    suite asan "$@"
    echo "== clang-tidy"
    scripts/tidy.py build/asan
fi
suite release "$@"

# Where Clang has its fuzzer, it runs for some seconds; elsewhere the tests above have run the fuzzers' seeds.
has_fuzzer() {
    clang++ -fsanitize=fuzzer -x c++ -o /dev/null - 2>/dev/null \
        <<<'extern "C" int LLVMFuzzerTestOneInput(const unsigned char*, unsigned long) { return 0; }'
}
if [ $# != 0 ] && [[ $1 != *fuzz* ]]; then
    :
elif has_fuzzer; then
    configure fuzz QUORVANE_FUZZERS=ON
    build fuzz fuzzers
    run_ctest fuzz
else
    echo "== fuzz: left out, there is no Clang with libFuzzer"
fi
