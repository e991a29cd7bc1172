#!/usr/bin/env bash
# Builds the Debian packages from the files that git knows, in FOLDER/lum, and leaves them in FOLDER. Nothing is installed.
# Usage: debs.sh FOLDER
set -eu
cd "$(dirname "$(readlink -f "$0")")/.."
mkdir -p "$1"
folder=$(readlink -f "$1")
rm -rf "$folder/lum" "$folder"/*.deb
mkdir "$folder/lum"
git ls-files -co --exclude-standard | while IFS= read -r file; do [ ! -e "$file" ] || printf '%s\0' "$file"; done |
    xargs -0 cp -P --parents -t "$folder/lum"
cd "$folder/lum"
# What the machine brings along is no part of a package.
env -u CXXFLAGS -u CFLAGS -u LDFLAGS dpkg-buildpackage --build=binary --no-sign >"$folder/log" 2>&1 ||
    { cat "$folder/log"; exit 1; }
rm -rf "$folder/lum"
