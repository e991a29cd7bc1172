#!/usr/bin/env bash
# Lum on other machines: cross built with clang, run under qemu-user, compared with this machine. Prints a line
# for each architecture. Nothing foreign is installed; all is under build/, and a root is made once.
# Usage: worlds.sh [--library] [--urls FILE] [ARCHITECTURE...]: arm64 armhf s390x ppc64el, by Debian's names, and
# with the libraries of Debian 13 riscv64 and amd64
#   --library     without the tool, and so without comparing its output
#   --urls FILE   compares what the tool says of these URLs, one a line, beside the tests' own
set -u -o pipefail
cd "$(dirname "$(readlink -f "$0")")/.."
export LC_ALL=C.UTF-8
root=$PWD
tool=ON urls=
while [ $# -gt 0 ]; do
    case $1 in
        --library) tool=OFF; shift ;;
        --urls) urls=$(readlink -f "$2"); shift 2 ;;
        *) break ;;
    esac
done
[ $# -gt 0 ] || set -- arm64 armhf s390x ppc64el riscv64 amd64

# Where this machine's own packages come from.
mirror=$(apt-get indextargets --format '$(REPO_URI)' 'Created-By: Packages' 'Origin: Debian' 'Label: Debian' 'Component: main' | head -1)

# make_root ARCHITECTURE SUITE GCC ,PACKAGE: the libraries that Lum and its tests are built with, and one more.
make_root() {
    local path=build/worlds/root-$1
    [ -e "$path/complete" ] && return
    rm -rf "$path"
    mkdir -p build/worlds
    mmdebstrap --quiet --variant=extract --architectures="$1" \
        --include="libc6-dev,libgcc-$3-dev,libstdc++-$3-dev,libicu-dev,libplist-dev,libgtest-dev,libcli11-dev,nlohmann-json3-dev$4" \
        "$2" "$path" "${mirror:-http://deb.debian.org/debian}" || return
    # Absolute links would lead out of the root.
    find "$path" -type l -lname '/*' | while read -r link; do
        ln -sfn "$(realpath -m --relative-to="$(dirname "$link")" "$path$(readlink "$link")")" "$link"
    done
    # Newer systems have all under /usr, and links that unpacking alone does not make.
    for folder in lib lib64; do
        [ -e "$path/$folder" ] || [ ! -d "$path/usr/$folder" ] || ln -s "usr/$folder" "$path/$folder"
    done
    touch "$path/complete"
}

# What a tool prints about texts of all kinds.
say() {
    { tail -n +2 tests/data/uris.tsv | cut -f1; cat examples/uris.txt ${urls:+"$urls"}; } >build/worlds/uris
    "$1" parse --json <build/worlds/uris
    "$1" encodings
    for encoding in utf-16be utf-16le gb18030 shift_jis euc-jp windows-1252 macintosh utf-7 iso-2022-jp; do
        "$1" convert --from utf-8 --to "$encoding" <examples/uris.txt
        # The first characters that the encoding has not are an error, told with their place.
        "$1" convert --from utf-8 --to "$encoding" <tests/data/uris.tsv
    done
    "$1" strings examples/strings.rsrc
} 2>&1

# world ARCHITECTURE: builds and runs all; its output goes to a log.
world() {
    local triple emulator suite=bookworm gcc=12 clang=14 linker= own=OFF more=
    case $1 in
        arm64) triple=aarch64-linux-gnu emulator=qemu-aarch64 ;;
        armhf) triple=arm-linux-gnueabihf emulator=qemu-arm ;;
        s390x) triple=s390x-linux-gnu emulator=qemu-s390x ;;
        ppc64el) triple=powerpc64le-linux-gnu emulator=qemu-ppc64le ;;
        amd64) triple=x86_64-linux-gnu emulator=qemu-x86_64 suite=trixie gcc=14 clang=19 more=,libc++-19-dev ;;
        riscv64) triple=riscv64-linux-gnu emulator=qemu-riscv64 suite=trixie gcc=14 clang=19 linker=-fuse-ld=lld own=ON ;; # whose GoogleTest no linker here takes
        *) echo "no such architecture"; return 1 ;;
    esac
    local targets=(lum-tests native-paths-Unix native-paths-Win static-init-lum static-init-lum-static)
    [ $tool = OFF ] || targets+=(lum-cli)
    local build=build/worlds/$1 libraries=$root/build/worlds/root-$1
    make_root "$1" $suite $gcc "$more" || { echo "the root cannot be made"; return 1; }
    { cmake -S . -B "$build" -G Ninja --toolchain "$root/cmake/World.cmake" -DCMAKE_CXX_COMPILER=clang++-$clang -DLUM_WORLD=$triple \
        -DLUM_WORLD_ROOT="$libraries" -DLUM_WORLD_QEMU=$emulator -DCMAKE_BUILD_TYPE=Debug -DCMAKE_CXX_FLAGS=-O1 \
        -DCMAKE_COMPILE_WARNING_AS_ERROR=ON -DLUM_BUILD_TOOLS=$tool -DLUM_BUILD_GOOGLETEST=$own -DCMAKE_UNITY_BUILD=ON \
        -DCMAKE_UNITY_BUILD_BATCH_SIZE=12 \
        -DCMAKE_SHARED_LINKER_FLAGS=$linker -DCMAKE_EXE_LINKER_FLAGS=$linker && cmake --build "$build" --target "${targets[@]}"; } >&2 ||
        { echo "not built"; return 1; }
    local emulated=("$emulator" -L "$libraries")
    # Death tests start themselves once more, which an emulated program cannot.
    local tests=("${emulated[@]}" "$build/tests/lum-tests" '--gtest_filter=-*DeathTest*')
    # In two processes, since an emulated one uses one core.
    GTEST_TOTAL_SHARDS=2 GTEST_SHARD_INDEX=1 "${tests[@]}" >"$build/tests.log" 2>&1 &
    GTEST_TOTAL_SHARDS=2 GTEST_SHARD_INDEX=0 "${tests[@]}" >&2 && wait $! ||
        { wait; cat "$build/tests.log" >&2; echo "tests failed"; return 1; }
    for test in "${targets[@]:1:4}"; do
        "${emulated[@]}" "$build/tests/$test" >&2 || { echo "$test failed"; return 1; }
    done
    [ $tool = ON ] || { echo "built, tests passed"; return 0; }
    printf '#!/bin/sh\nexec %s "%s" "$@"\n' "${emulated[*]}" "$root/$build/tools/lum/lum" >"$build/lum"
    chmod +x "$build/lum"
    tests/tool.sh "$build/lum" >&2 || { echo "the tool's tests failed"; return 1; }
    say "$build/lum" >"$build/said"
    say build/dev/tools/lum/lum | cmp - "$build/said" >&2 || { echo "another output than here"; return 1; }
    echo "built, tests passed, output equal ($(wc -c <"$build/said") bytes)"
}

failed=0
for name in "$@"; do
    start=$SECONDS
    mkdir -p build/worlds
    if said=$(world "$name" 2>"build/worlds/$name.log"); then
        printf 'OK    %-8s %-50s %4d s\n' "$name" "$said" $((SECONDS - start))
    else
        printf 'FAIL  %-8s %s\n' "$name" "$said"
        tail -n 40 "build/worlds/$name.log"
        failed=1
    fi
done
exit $failed
