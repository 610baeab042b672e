# Sourced by run.sh, test.sh and bench.sh: configuring and building quietly, with the output of what fails.

cores=$(nproc)

# configure PRESET [OPTION=VALUE...]: only where there is no build folder yet or an option has another value there.
configure() {
    local preset=$1 cache=build/$1/CMakeCache.txt option
    shift
    local arguments=() changed=
    [ -f "$cache" ] && [ -f "build/$preset/build.ninja" ] || changed=yes
    for option in "$@"; do
        arguments+=("-D$option")
        grep -q "^${option%%=*}:[A-Z]*=${option#*=}\$" "$cache" 2>/dev/null || changed=yes
    done
    [ -n "$changed" ] || return 0
    echo "== $preset: configure"
    mkdir -p build
    if ! cmake --preset "$preset" "${arguments[@]}" >"build/$preset-configure.log" 2>&1; then
        cat "build/$preset-configure.log" >&2
        return 1
    fi
    grep '^-- Quorvane:' "build/$preset-configure.log" || true
}

# build PRESET [TARGET...]: one moving line on a terminal; else one line at the end, and on failure what failed.
build() {
    local preset=$1 start=$SECONDS log=build/$1-build.log
    shift
    local call=(cmake --build "build/$preset" --parallel "$cores")
    [ $# = 0 ] || call+=(--target "$@")
    if [ -t 1 ]; then
        "${call[@]}"
    elif ! "${call[@]}" >"$log" 2>&1; then
        # Ninja prints the failing commands with their output, and before them a line for each step that worked.
        grep -v '^\[[0-9]*/[0-9]*\] ' "$log" >&2 || true
        return 1
    fi
    echo "== $preset: built in $((SECONDS - start)) s"
}

# run_ctest PRESET [REGEX]: prints what did not pass, with its output, and CTest's closing lines.
run_ctest() {
    local preset=$1
    shift
    echo "== $preset: tests"
    local call=(ctest --test-dir "build/$preset" --parallel "$cores" --output-on-failure --no-label-summary --no-tests=error)
    [ $# = 0 ] || call+=(--tests-regex "$1")
    # The verdict is CTest's own: pipefail passes it on, and the filter behind it always succeeds.
    "${call[@]}" 2>&1 | { grep --line-buffered -vE \
        '^ *Start +[0-9]+: |^ *[0-9]+/[0-9]+ Test .* Passed +[0-9.]+ sec$|^Internal ctest|^Test project|^$' || true; }
}
