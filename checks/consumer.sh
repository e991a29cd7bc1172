#!/usr/bin/env bash
# Uses a built library as other projects do, without a network where this machine lets a program do without: installed,
# moved to another place, and found by CMake, by pkg-config and by Meson; added to a parent project, which must get the
# target and nothing else. examples/consumer is that project. There, the library is built again only on request.
# Usage: consumer.sh BUILD-DIR COMPILER COMPILER-FLAGS [--inside]
#   --inside   builds the library inside the parent project too, as a folder and as fetched content, in both forms
set -eu
[ -n "${LUM_OFFLINE-}" ] || ! unshare -rn true 2>/dev/null || LUM_OFFLINE=1 exec unshare -rn "$0" "$@"
build=$1 compiler=$2 flags=$3 inside=${4-}
source=$(readlink -f "$(dirname "$(readlink -f "$0")")/..")
consumer=$source/examples/consumer
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
# What a careful project compiles its own code with.
strict="-Wall -Wextra -Wpedantic -Wconversion -Wsign-conversion -Wshadow -Wold-style-cast -Wundef -Werror"

quietly() { "$@" >"$work/log" 2>&1 || { cat "$work/log"; echo "FAILED: $*"; exit 1; }; }
# configure PROJECT ARGUMENT...: a parent project that hears nothing of the library but what it asks for.
configure() {
    quietly cmake -G Ninja -S "$@" -DCMAKE_CXX_COMPILER="$compiler"
    ! grep -i 'warning' "$work/log" || { cat "$work/log"; exit 1; }
}
# prints_what_it_should NAME COMMAND...
prints_what_it_should() {
    "${@:2}" | diff "$consumer/expected.txt" - || { echo "FAILED: another output, $1"; exit 1; }
}

quietly cmake --install "$build" --prefix "$work/first"
mkdir "$work/moved" && mv "$work/first" "$work/moved/prefix"
prefix=$work/moved/prefix
! grep -rIlF -e "$work/first" -e "$source" "$prefix" --include='*.cmake' --include='*.pc' || { echo "FAILED: these name a folder"; exit 1; }
libraries=$(dirname "$(find "$prefix" -name 'liblum.*' ! -name '*.py' | head -1)")

configure "$consumer" -B "$work/found" -DCMAKE_PREFIX_PATH="$prefix" -DCMAKE_CXX_FLAGS="$flags $strict"
quietly cmake --build "$work/found"
prints_what_it_should find_package "$work/found/consumer"

# The programs for whole tasks, each with its test: not for every build that the consumer is for.
if [ -z "$flags" ]; then
    configure "$source/examples/apps" -B "$work/apps" -DCMAKE_PREFIX_PATH="$prefix"
    quietly cmake --build "$work/apps"
    quietly ctest --test-dir "$work/apps" --no-tests=error
fi

export PKG_CONFIG_PATH=$libraries/pkgconfig LD_LIBRARY_PATH=$libraries:${LD_LIBRARY_PATH-}
for way in "" --static; do
    # shellcheck disable=SC2046,SC2086
    quietly "$compiler" $flags $strict -std=c++20 "$consumer/main.cpp" -o "$work/consumer" $(pkg-config $way --cflags --libs lum)
    prints_what_it_should "pkg-config $way" "$work/consumer"
done
if command -v meson >/dev/null && [[ $flags != *sanitize* ]]; then
    CXX=$compiler CXXFLAGS=$flags quietly meson setup --werror "$work/meson" "$consumer"
    quietly meson compile -C "$work/meson"
    prints_what_it_should meson "$work/meson/consumer"
fi

for shared in ON ${inside:+OFF}; do
    for fetch in ON OFF; do
        added=$work/added-$shared-$fetch
        configure "$consumer" -B "$added" -DLUM_SOURCE="$source" -DLUM_FETCH=$fetch -DBUILD_SHARED_LIBS=$shared -DCMAKE_EXPORT_COMPILE_COMMANDS=ON
        [ "$(ctest --test-dir "$added" -N | grep -c 'Test *#')" = 1 ] || { echo "FAILED: the parent project gets tests"; exit 1; }
        ! grep -rlE 'liblum|include/Lum' "$added" --include=cmake_install.cmake || { echo "FAILED: the parent project installs Lum"; exit 1; }
        ! cmake --build "$added" --target help | grep -E '^lum[-_]' || { echo "FAILED: the parent project gets other targets"; exit 1; }
        ! grep -F "consumer/main.cpp" "$added/compile_commands.json" | grep -E -e '-[WfD]' || { echo "FAILED: the parent project gets flags"; exit 1; }
        # All of the parent project's warnings, and none of them is for the headers.
        # shellcheck disable=SC2086
        quietly "$compiler" $flags $strict -std=c++20 -fsyntax-only -I"$source/include" "$consumer/main.cpp"
        [ -n "$inside" ] || continue
        quietly cmake --build "$added"
        ! grep -i 'warning:' "$work/log" || exit 1
        prints_what_it_should "added, shared $shared, fetched $fetch" "$added/consumer"
        quietly cmake --install "$added" --prefix "$added/prefix"
        [ "$(cd "$added/prefix" && find . -type f)" = ./bin/consumer ] || { find "$added/prefix"; echo "FAILED: more is installed"; exit 1; }
    done
done
[ -z "$inside" ] || "$source/checks/recipes.sh"
