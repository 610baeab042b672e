#!/usr/bin/env bash
# Installs what building needs: Debian packages through apt, and one pinned source archive into .deps/. What the tests
# need beside that is pinned, too: packages from npm, which nothing but tests ever sees.
#
#   scripts/setup.sh [--tests] [--archive FILE] [--no-packages]
#
#   --tests         also what the tests and checks need
#   --archive FILE  take the archive from FILE instead of downloading it
#   --no-packages   leave the system's packages alone, for systems without apt
#
# A call with nothing to do says so within a second and touches neither apt nor the network.
set -euo pipefail
cd "$(dirname "$0")/.."

fail() {
    echo "setup: $*" >&2
    exit 1
}

with_tests=
with_packages=yes
archive=
while [ $# -gt 0 ]; do
    case $1 in
    --tests) with_tests=yes ;;
    --no-packages) with_packages= ;;
    --archive)
        [ $# -ge 2 ] || fail "--archive needs a file"
        archive=$2
        shift
        ;;
    *) fail "unknown option $1; there are --tests, --archive FILE and --no-packages" ;;
    esac
    shift
done

bundle_name=imgui-bundle
bundle_version=1.93.0
bundle_sha256=10ad1dab8258a6787b4f07bb926b08d0efc648a7906242568c8dd778c5e719bf
bundle_dir=.deps/$bundle_name-$bundle_version
# What is taken out of the archive; a change of this list unpacks it again.
bundle_members=(
    external/hello_imgui/hello_imgui/external/imgui/LICENSE.txt
    'external/hello_imgui/hello_imgui/external/imgui/*.h'
    'external/hello_imgui/hello_imgui/external/imgui/*.cpp'
    'external/hello_imgui/hello_imgui/external/imgui/backends/imgui_impl_glfw.*'
    'external/hello_imgui/hello_imgui/external/imgui/backends/imgui_impl_opengl3*'
    external/hello_imgui/hello_imgui/external/imgui/misc/freetype
    external/imgui_test_engine/imgui_test_engine/imgui_test_engine
    external/portable_file_dialogs/portable_file_dialogs
    external/hello_imgui/hello_imgui/hello_imgui_assets/fonts/Font_Awesome_6_Free-Solid-900.otf
    external/hello_imgui/hello_imgui/hello_imgui_assets/fonts/LICENSE-FontAwesome.txt
    external/hello_imgui/hello_imgui/src/hello_imgui/icons_font_awesome_6.h
)
bundle_stamp="$bundle_sha256 ${bundle_members[*]}"

has_bundle() {
    [ -f "$bundle_dir/.complete" ] && [ "$(cat "$bundle_dir/.complete")" = "$bundle_stamp" ]
}

# --- Debian packages: what for, then which -------------------------------------------------------------------------

packages=(
    "compiling:g++ cmake ninja-build ccache pkg-config"
    "scripts:python3 ca-certificates"
    "window and OpenGL:libglfw3-dev libepoxy-dev libgl-dev libopengl-dev libx11-dev"
    "text, fonts and pictures:libfreetype-dev libfontconfig-dev libicu-dev libpng-dev"
    "projects and archives:rapidjson-dev libzip-dev libcli11-dev"
    "identifiers:uuid-dev"
    "letters of many languages:fonts-dejavu-core fonts-noto-core fonts-noto-cjk"
    "drawing without a display:xvfb libgl1-mesa-dri libglx-mesa0"
)
test_packages=(
    "test programs:libgtest-dev git"
    "second compiler and checks:clang clang-tidy clang-format libclang-rt-14-dev"
    "counting instructions:valgrind"
    "using a window as its user does:xdotool"
)

# python3 and not whatever else carries the name: any pip will do, and Debian's is installed where there is none.
find_pip() {
    local python
    for python in python3 /usr/bin/python3; do
        if "$python" -m pip --version >/dev/null 2>&1; then
            pip=("$python" -m pip)
            return 0
        fi
    done
    return 1
}

if [ -n "$with_tests" ]; then
    packages+=("${test_packages[@]}")
    # Whichever Node.js there is will do, and Debian's is installed where there is none.
    command -v node >/dev/null && command -v npm >/dev/null || packages+=("loading what was exported:nodejs npm")
fi
if ! has_bundle && [ -z "$archive" ] && ! find_pip; then
    packages+=("downloading the source archive:python3-pip")
fi

as_root() {
    if [ "$(id -u)" = 0 ]; then
        "$@"
    elif command -v sudo >/dev/null; then
        sudo "$@"
    else
        fail "packages are missing and there is neither root nor sudo to install them: ${missing[*]}"
    fi
}

run_apt() {
    local log
    log=$(mktemp)
    if ! as_root env DEBIAN_FRONTEND=noninteractive apt-get -qq -o Acquire::Retries=3 -o DPkg::Lock::Timeout=300 \
        "$@" >"$log" 2>&1 </dev/null; then
        tail -n 20 "$log" >&2
        rm -f "$log"
        return 1
    fi
    rm -f "$log"
}

install_packages() {
    command -v dpkg-query >/dev/null && command -v apt-get >/dev/null || fail \
        "this system has no apt. Install the counterparts of these packages and call again with --no-packages:" \
        "${packages[@]#*:}"
    local group name installed
    installed=$(dpkg-query -W -f='${db:Status-Status} ${Package}\n' | sed -n 's/^installed //p')
    missing=()
    for group in "${packages[@]}"; do
        local wanted=()
        for name in ${group#*:}; do
            grep -qxF "$name" <<<"$installed" || wanted+=("$name")
        done
        [ ${#wanted[@]} = 0 ] || echo "setup: to install for ${group%%:*}: ${wanted[*]}"
        missing+=("${wanted[@]}")
    done
    [ ${#missing[@]} != 0 ] || return 0

    echo "setup: installing ${#missing[@]} Debian packages ..."
    run_apt update || fail "the package lists could not be updated; is there a network?"
    run_apt install --yes --no-install-recommends "${missing[@]}" || fail \
        "these Debian packages could not be installed: ${missing[*]}"
}

[ -z "$with_packages" ] || install_packages

# --- The source archive: Dear ImGui, its Test Engine, portable-file-dialogs, the icon font -------------------------

# pip asks a source archive's build back end for name and version before it saves the file, which would download and
# run a chain of build tools. This one answers from the archive itself.
write_back_end() {
    mkdir -p "$1/scikit_build_core"
    touch "$1/scikit_build_core/__init__.py"
    cat >"$1/scikit_build_core/build.py" <<'PYTHON'
import os
import shutil


def prepare_metadata_for_build_wheel(folder, config_settings=None):
    fields = dict(line.split(": ", 1) for line in open("PKG-INFO", encoding="utf-8").read().splitlines()[:3])
    name = f"{fields['Name'].replace('-', '_')}-{fields['Version']}.dist-info"
    os.makedirs(os.path.join(folder, name))
    shutil.copyfile("PKG-INFO", os.path.join(folder, name, "METADATA"))
    return name
PYTHON
}

download_archive() {
    find_pip || fail "pip is not to be had; install python3-pip or give the archive with --archive FILE"
    echo "setup: downloading the sources of $bundle_name $bundle_version (54 MB): Dear ImGui with docking and its Test" \
        "Engine, portable-file-dialogs, Font Awesome 6"
    write_back_end "$work/back-end"
    echo "$bundle_name==$bundle_version --hash=sha256:$bundle_sha256" >"$work/requirements.txt"
    local call=("${pip[@]}" download --quiet --disable-pip-version-check --no-cache-dir --no-deps --no-binary :all:
        --require-hashes --dest "$work/archive" --requirement "$work/requirements.txt")
    if ! PYTHONPATH="$work/back-end" "${call[@]}" --no-build-isolation >"$work/log" 2>&1 &&
        ! "${call[@]}" >>"$work/log" 2>&1; then
        cat "$work/log" >&2
        fail "the source archive $bundle_name $bundle_version could not be downloaded with pip; is there a network?" \
            "A file that you have already is taken with --archive FILE"
    fi
    archive=$(echo "$work"/archive/*.tar.gz)
}

unpack_archive() {
    [ -f "$archive" ] || fail "there is no archive at $archive"
    echo "$bundle_sha256  $archive" | sha256sum --check --status || fail \
        "$archive is not the archive that this project pins: its SHA-256 is not $bundle_sha256"
    mkdir -p "$work/unpacked"
    tar -xzf "$archive" -C "$work/unpacked" --strip-components=1 --no-same-owner --wildcards --no-wildcards-match-slash \
        "${bundle_members[@]/#/${bundle_name/-/_}-$bundle_version/}" ||
        fail "$archive does not hold what is expected of it"
    echo "$bundle_stamp" >"$work/unpacked/.complete"
    rm -rf "$bundle_dir"
    mv "$work/unpacked" "$bundle_dir"
    echo "setup: unpacked to $bundle_dir"
}

if ! has_bundle; then
    mkdir -p .deps
    work=$(mktemp -d .deps/setup.XXXXXX)
    trap 'rm -rf "$work"' EXIT
    work=$PWD/$work
    [ -n "$archive" ] || download_archive
    unpack_archive
fi

# --- The i18next library, for the tests ----------------------------------------------------------------------------

node_dir=.deps/i18next
has_node_packages() {
    cmp --quiet tests/i18next/package-lock.json "$node_dir/package-lock.json" && [ -d "$node_dir/node_modules" ]
}

if [ -n "$with_tests" ] && ! has_node_packages; then
    rm -rf "$node_dir"
    mkdir -p "$node_dir"
    cp tests/i18next/package.json "$node_dir"
    log=$(cp tests/i18next/package-lock.json "$node_dir" &&
        npm ci --prefix "$node_dir" --no-audit --no-fund --ignore-scripts --loglevel=error 2>&1) || {
        rm -rf "$node_dir"
        echo "$log" >&2
        fail "the i18next library could not be installed with npm; is there a network?"
    }
    echo "setup: installed the i18next library to $node_dir"
fi
echo "setup: everything is in place"
