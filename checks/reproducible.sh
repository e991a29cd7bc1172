#!/usr/bin/env bash
# Fails where what is compiled depends on the folder of the sources or of the build, or on the time: compiles some
# files of the library in two copies of the tree. All of it is compared as packages (packages.sh), which takes minutes.
# Usage: reproducible.sh, from the root
set -u -o pipefail
folder=$(mktemp -d) && trap 'rm -rf "$folder"' EXIT
targets=()
for file in Source/URI/Record Source/TimeStamp/TimeStamp cstring/Parts Mac/TextConverter; do
    targets+=("CMakeFiles/lum.dir/$file.cpp.o")
done
for copy in one another/deeper; do
    mkdir -p "$folder/$copy" && git ls-files -z | xargs -0 cp --parents -t "$folder/$copy" &&
        cmake -G Ninja -S "$folder/$copy" -B "$folder/$copy/build" -DCMAKE_BUILD_TYPE=RelWithDebInfo -DLUM_BUILD_TESTS=OFF \
            -DLUM_BUILD_TOOLS=OFF >/dev/null && cmake --build "$folder/$copy/build" --target "${targets[@]}" >/dev/null || exit 1
done
failed=0
for target in "${targets[@]}"; do
    cmp "$folder/one/build/$target" "$folder/another/deeper/build/$target" || failed=1
done
exit $failed
