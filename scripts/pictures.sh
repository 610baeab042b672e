#!/usr/bin/env bash
# Draws the pictures of the user's guide anew: scripts/pictures.sh [FOLDER]
#
# They show the sample project as /games/lighthouse, so that folder is made and removed. Without a folder they go to
# docs/pictures; look at each before it is committed.
set -euo pipefail
folder=$(realpath -m -- "${1:-"$(dirname "$0")/../docs/pictures"}")
cd "$(dirname "$0")/.."
. scripts/common.sh

configure debug
build debug guide-picture-tests
[ ! -e /games ] || {
    echo "pictures: there is a folder /games already, which would be used and removed" >&2
    exit 1
}
mkdir /games
trap 'rm -rf /games' EXIT
for look in dark light dark_2 light_2; do
    TMPDIR=/games QUORVANE_PICTURES=$folder scripts/with-display.sh --size 2000x1300 \
        build/debug/bin/tests/guide-picture-tests --gtest_filter="*/$look"
done
