#!/usr/bin/env bash
# Fetches catalogues of published applications into a folder, for the tests alone: fetch.sh FOLDER
#
# They are pinned packages from npm, checked by SHA-512, of which nothing is run and only the folder with the catalogues is
# unpacked. A call with nothing to do is done at once.
set -euo pipefail
target=$1

# package, version, folder in it, SHA-512
catalogues=(
    "@medusajs/dashboard 2.21.2 src/i18n/translations
        64a7be91d62d801da0948fa4affca2d841d47f4600c1751ca6ef74becfbec8005a6e78fef2ad3f7321937f3005031e1cd05fd727fed1da1f2a1131a40f125d66"
    "@node-red/editor-client 5.0.7 locales
        6ef80e197bc0ac2c53781e373f5f16bbc51901cdea5ca3c0aebf376bc046ec5daf71715b6056f0ea76def44bb3f6e58454010faf3ddc3eb1a9f31542652c94c2"
    "@dhis2/analytics 29.5.5 build/es/locales
        5ae41edc4814ba42f1f5994ef3febb2c001a04cd0b872dc81ad42b021dc2ab554065f5ff15f99537275e14987bec2481bc23959ccee8dfa9e0b10f9f2fa68404"
)

mkdir -p "$target"
for catalogue in "${catalogues[@]}"; do
    read -r -d '' name version folder checksum <<<"$catalogue" || true
    unpacked=$target/${name#*/}
    [ ! -d "$unpacked" ] || continue
    work=$(mktemp -d "$target/fetch.XXXXXX")
    trap 'rm -rf "$work"' EXIT
    npm pack --silent --ignore-scripts --pack-destination "$work" "$name@$version" >/dev/null
    archive=$(echo "$work"/*.tgz)
    echo "$checksum  $archive" | sha512sum --check --status || {
        echo "catalogues: $name $version is not the package that is pinned here" >&2
        exit 1
    }
    mkdir "$work/unpacked"
    tar -xzf "$archive" -C "$work/unpacked" --no-same-owner "package/$folder"
    mv "$work/unpacked/package/$folder" "$unpacked"
    rm -rf "$work"
    echo "catalogues: fetched $name $version"
done
