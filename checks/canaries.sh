#!/usr/bin/env bash
# Fails where a deliberate fault of checks/canaries/ goes unnoticed. Each patch is applied to a copy of the tree, which
# is built with sanitizers. Its second line names what has to notice it: some of the library's tests ("threads": under
# the thread sanitizer), or sixty seconds of a property under libFuzzer. Prints a line a fault.
# Usage: canaries.sh [NAME...], from the root
set -u -o pipefail
export LC_ALL=C
tree=build/canaries/tree corpus=build/canaries/corpus failed=0
patches=()
for name in "${@:-}"; do patches+=(checks/canaries/*"$name"*.patch); done
mkdir -p "$tree" build/canaries
# Only what differs is copied, and what a run before left behind goes, so that little is built again.
git ls-files -co --exclude-standard | while read -r file; do
    [ ! -f "$file" ] || cmp -s "$file" "$tree/$file" || { mkdir -p "$tree/$(dirname "$file")" && cp "$file" "$tree/$file"; }
done
(cd "$tree" && find . -path ./build -prune -o -type f -print) | sed 's/^..//' | while read -r file; do
    [ -f "$file" ] || rm "$tree/$file"
done
for preset in asan tsan; do
    (cd "$tree" && cmake --preset $preset -DCMAKE_UNITY_BUILD=OFF -DLUM_BUILD_TOOLS=OFF -DLUM_INSTALL=OFF -DLUM_BUILD_EXAMPLES=OFF) >build/canaries/log 2>&1 ||
        { cat build/canaries/log; exit 1; }
done

# notices SECONDS KIND WHAT: 0 if the tests or the property fail, 1 if they hold, 2 if the tree does not build.
notices() {
    local seconds=$1 kind=$2 what=$3 target=lum-tests preset=asan
    [ "$kind" != property ] || target=fuzz-$what
    [ "$kind" != threads ] || preset=tsan
    cmake --build "$tree/build/$preset" --target "$target" >build/canaries/log 2>&1 || return 2
    if [ "$kind" != property ]; then
        # From the build's folder: the tests find their data from there.
        (cd "$tree/build/$preset" && timeout 300 tests/lum-tests --gtest_brief=1 --gtest_fail_fast --gtest_filter="$what") \
            >build/canaries/log 2>&1 && return 1
    else
        rm -rf "$corpus"
        "$tree/fuzz/run.sh" build/asan "$what" "$PWD/$corpus" -max_total_time="$seconds" >build/canaries/log 2>&1 && return 1
    fi
    return 0
}
caught_by() { sed -n 's/^Caught by: //p' "$1"; }

# Without a fault, all of them hold.
while read -r kind what; do
    notices 5 "$kind" "$what"
    [ $? -eq 1 ] || { cat build/canaries/log; echo "FAIL  $kind $what: does not hold without a fault, either"; exit 1; }
done < <(for patch in "${patches[@]}"; do caught_by "$patch"; done | sort -u)
caught=0
for patch in "${patches[@]}"; do
    name=$(basename "$patch" .patch) start=$SECONDS
    if ! patch -d "$tree" -p1 -s --dry-run --no-backup-if-mismatch -F0 <"$patch" >build/canaries/log 2>&1; then
        echo "FAIL  $name: does not apply to the sources as they are; write it anew"
        failed=1
        continue
    fi
    file=$(sed -n 's/^+++ b\///p' "$patch")
    patch -d "$tree" -p1 -s -F0 <"$patch"
    read -r kind what < <(caught_by "$patch")
    notices 60 "$kind" "$what"
    case $? in
        0) printf 'OK    %-40s %-30s %3d s\n' "$name" "$kind $what" $((SECONDS - start)); caught=$((caught + 1)) ;;
        1) echo "FAIL  $name: $kind $what did not notice: $(head -1 "$patch")"; failed=1 ;;
        *) echo "FAIL  $name: does not build"; cat build/canaries/log; failed=1 ;;
    esac
    cp "$file" "$tree/$file"
done
echo "figure: $caught of ${#patches[@]} faults are noticed"
exit $failed
