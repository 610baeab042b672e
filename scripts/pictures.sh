#!/usr/bin/env bash
# Draws the pictures of the user's guide anew, and puts those that README.md and docs/ show into docs/pictures.
#
# All of them go to build/debug/pictures first. They show the sample project as /games/lighthouse, so that folder is made and
# removed. Look at each before it is committed.
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/common.sh

[ ! -e /games ] || {
    echo "pictures: there is a folder /games already, which would be used and removed" >&2
    exit 1
}
configure debug
build debug guide-picture-tests
pictures=$PWD/build/debug/pictures
mkdir /games
trap 'rm -rf /games' EXIT
for look in dark light dark_2 light_2; do
    TMPDIR=/games QUORVANE_PICTURES=$pictures scripts/with-display.sh --size 2000x1300 \
        build/debug/bin/tests/guide-picture-tests --gtest_filter="*/$look"
done
for name in $(grep -oh 'guide-[a-z0-9-]*\.png' README.md docs/user-guide.md docs/pictures.md | sort -u); do
    cp "$pictures/$name" docs/pictures/
    echo "docs/pictures/$name"
done
