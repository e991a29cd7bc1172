#!/usr/bin/env bash
# Installs the library and uses it as other projects do: found by CMake, by pkg-config, and added to
# a parent project, which must get the target and nothing else.
# Usage: run.sh SOURCE-DIR BUILD-DIR COMPILER COMPILER-FLAGS
set -eu
source=$1 build=$2 compiler=$3 flags=$4
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
here=$(dirname "$(readlink -f "$0")")

configure() { cmake -G Ninja -DCMAKE_CXX_COMPILER="$compiler" -DCMAKE_CXX_FLAGS="$flags" "$@" > "$work/log" || cat "$work/log"; }

cmake --install "$build" --prefix "$work/prefix" > "$work/log"
configure -S "$here" -B "$work/found" -DCMAKE_PREFIX_PATH="$work/prefix"
cmake --build "$work/found" > "$work/log" || cat "$work/log"
"$work/found/consumer"

PKG_CONFIG_PATH=$(dirname "$(find "$work/prefix" -name lum.pc)")
export PKG_CONFIG_PATH
# shellcheck disable=SC2046,SC2086
"$compiler" $flags -std=c++20 "$here/consumer.cpp" -o "$work/consumer" $(pkg-config --cflags --libs lum)
LD_LIBRARY_PATH=$(pkg-config --variable=libdir lum):${LD_LIBRARY_PATH-} "$work/consumer"

configure -S "$here" -B "$work/added" -DLUM_SOURCE="$source"
# Compiled only: the library's own build has been seen already.
cmake --build "$work/added" --target CMakeFiles/consumer.dir/consumer.cpp.o > "$work/log" || cat "$work/log"
[ -e "$work/added/CMakeFiles/consumer.dir/consumer.cpp.o" ]
[ "$(cmake --install "$work/added" --prefix "$work/nothing" 2>&1 | grep -c Installing || true)" = 0 ] ||
    { echo "the parent project installs Lum's files"; exit 1; }
! cmake --build "$work/added" --target help | grep -qE 'lum-(cli|tests)' ||
    { echo "the parent project gets the tool or the tests"; exit 1; }
