#!/usr/bin/env bash
# Builds the editor and the tool without a window, and opens a project in the editor: ./run.sh [PROJECT FOLDER]
#
# Without a folder it opens the sample project. Without a display it draws on a virtual one until the picture is
# settled, writes a screenshot and prints its path as the last line.
set -euo pipefail
project=${1:-}
[ -z "$project" ] || project=$(realpath -e -- "$project") || exit 1
cd "$(dirname "$0")"
. scripts/common.sh

scripts/setup.sh
if [ ! -f build/release/build.ninja ]; then
    configure release QUORVANE_TESTS=OFF
fi
build release quorvane-editor quorvane-localize Localization

if [ -z "$project" ]; then
    for file in samples/*/project.json; do
        project=$PWD/${file%/project.json}
        break
    done
fi

editor=build/release/bin/quorvane-editor
if [ -n "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ]; then
    exec "$editor" --project "$project"
fi
screenshot=$PWD/build/screenshot.png
rm -f "$screenshot"
scripts/with-display.sh --size 1600x1000 \
    "$editor" --project "$project" --screenshot "$screenshot" --size 1600x1000 --frames 60
[ -s "$screenshot" ] || {
    echo "run: the editor wrote no screenshot" >&2
    exit 1
}
echo "$screenshot"
