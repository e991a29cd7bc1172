#!/usr/bin/env bash
# Holds the library to docs/stability.md beside the newest tag: abidiff compares the two libraries as the public headers
# see them, and a program built from the tag's sources runs with today's library. Without a tag, the reviewed lists are all:
# checks/layouts.txt and debian/liblum1.symbols.
# Usage: stable.sh BUILD-DIR [TAG], from the root; the library in BUILD-DIR is today's, with debug information
set -u -o pipefail
build=$(readlink -f "$1")
tag=${2:-$(git tag --list 'v*' --sort=-version:refname | head -1)}
[ -n "$tag" ] || { echo "no tag yet: layouts and symbols are compared with the reviewed lists only"; exit 0; }
folder=$PWD/build/stable/$tag
number() { sed -nE 's/^project\(Lum VERSION ([0-9]+).*/\1/p' "$1/CMakeLists.txt"; }
mkdir -p "$folder"
git archive "$tag" | tar -x -C "$folder" || exit 1
# Another major version promises nothing.
[ "$(number "$folder")" = "$(number .)" ] || { echo "$tag has another major version"; exit 0; }
{ cmake -G Ninja -S "$folder" -B "$folder/build" -DCMAKE_BUILD_TYPE=Debug -DLUM_BUILD_TESTS=OFF -DLUM_BUILD_TOOLS=OFF \
    -DLUM_BUILD_SQL=OFF -DLUM_BUILD_EXAMPLES=ON && cmake --build "$folder/build"; } >"$folder/log" 2>&1 || { cat "$folder/log"; exit 1; }
failed=0
# Additions are no fault: 4 says that something differs, 8 that a program notices.
abidiff --no-added-syms --headers-dir1 "$folder/include/Lum" --headers-dir2 include/Lum "$folder/build/liblum.so" \
    "$build/liblum.so" || { echo "FAILED: abidiff, $tag beside today"; failed=1; }
for program in "$folder"/build/examples/example-*; do
    [ -x "$program" ] && [ -f "$program" ] || continue
    today=$(LD_LIBRARY_PATH=$build "$program" 2>&1) && [ "$today" = "$("$program" 2>&1)" ] ||
        { echo "FAILED: $(basename "$program") of $tag with today's library: $today"; failed=1; }
    LD_LIBRARY_PATH=$build ldd "$program" | grep -q "$build/liblum" || { echo "FAILED: $program has its own library"; failed=1; }
done
exit $failed
