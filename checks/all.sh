#!/usr/bin/env bash
# Everything `./dev check` looks at, a line a check: OK, or what is wrong. Runs from the root.
# Usage: all.sh [--full] [WORD]: only the checks whose names contain the word; --full adds those that take long
set -u -o pipefail
export LC_ALL=C
# Checks that run beside each other say here that they failed.
failed=$(mktemp) && trap 'rm -f "$failed"' EXIT
full=no
[ "${1:-}" != --full ] || { full=yes; shift; }
only=${1:-}
sources() { git ls-files -co --exclude-standard -- '*.h' '*.cpp'; }
[ -n "$(sources)" ] || { echo "FAIL  no sources: not a git checkout?"; exit 1; }

# check NAME COMMAND...: prints the command's output only if it fails, its lines that begin with "figure:" always.
check() {
    local name=$1 output figures start=$SECONDS
    shift
    [[ $name == *"$only"* ]] || return
    if output=$("$@" 2>&1); then
        figures=$(sed -n 's/^figure: /      /p' <<<"$output")
        printf 'OK    %-58s %3d s%s\n' "$name" $((SECONDS - start)) "${figures:+$'\n'$figures}"
    else
        printf 'FAIL  %s\n%s\n' "$name" "$output"
        echo "$name" >>"$failed"
    fi
}

build() { cmake --preset "$@" && cmake --build --preset "$1"; }
build_and_test() {
    build "$1" && ctest --preset "$1" -j "$(nproc)" && sed -n '/^figure:/p' "build/$1/Testing/Temporary/LastTest.log"
}
# Only what several threads do: the rest says nothing new there.
threads() {
    cmake --preset tsan -DLUM_BUILD_TOOLS=OFF && cmake --build --preset tsan --target lum-tests && build/tsan/tests/lum-tests
}
format() { git ls-files -co --exclude-standard -- '*.h' '*.c' '*.cpp' | xargs clang-format-14 --dry-run -Werror; }
# The library only. The others are left out: they take minutes, and faults in them show when they run. So is the
# one file of a later standard, at whose library headers clang-tidy 14 crashes. Ten files at a time become one, since most
# of the time goes into the standard library's headers; findings are told by the file that the line is from.
tidy() {
    rm -rf build/tidy && mkdir -p build/tidy || return 1
    sources | grep -E '^(Source|Mac|Platform|cstring)/.*\.cpp$' | grep -v ResizeUncleared |
        awk -v lines=10 '{ out = sprintf("build/tidy/%02d.cpp", (NR - 1) / lines); print "#line 1 \"" $0 "\"" >out; while ((getline line <$0) > 0) print line >out }'
    printf '%s\n' build/tidy/*.cpp | xargs -P "$(nproc)" -I{} clang-tidy-14 --quiet --warnings-as-errors='*' \
        --checks=-readability-duplicate-include {} -- -std=c++20 -DLUM_NATIVE_PATHS=Mac -Iinclude -I. -Wall -Wextra -Wpedantic \
        -Wconversion -Wshadow 2>&1 | awk '/warnings generated/ { next }
            match($0, /build\/tidy\/[0-9]+.cpp:[0-9]+/) {
                split(substr($0, RSTART, RLENGTH), at, ":")
                find = "head -n " at[2] " " at[1] " | grep -n \"^#line\" | tail -n 1"
                find | getline line
                close(find)
                split(line, from, /[:"]/)
                sub(/^.*build\/tidy\/[0-9]+.cpp:[0-9]+/, from[3] ":" at[2] - from[1])
            }
            { print }'
}
includes_once() {
    sources | xargs awk '/^#include/ && seen[FILENAME $0]++ { print FILENAME ":" FNR ": " $0; bad = 1 } END { exit bad }'
}
warn=(-fsyntax-only -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror)
headers() {
    echo '#include <Lum/lum.h>' | gcc -std=c99 -fsyntax-only -pedantic -Wall -Wextra -Werror -Iinclude -x c - || return 1
    for header in include/Lum/*.h; do
        for compiler in "g++ -std=c++20" "clang++-14 -std=c++2b -fno-exceptions -fno-rtti"; do
            echo "#include <Lum/${header##*/}>" | $compiler "${warn[@]}" -Iinclude -x c++ - || return 1
        done
    done
    # Only these may need what they lead to.
    for header in include/Lum/Bridges/*.h; do
        for compiler in "g++" "clang++-14"; do
            echo "#include <Lum/Bridges/${header##*/}>" | $compiler -std=c++20 -fPIC "${warn[@]}" -Iinclude \
                $([[ $header != */Qt.h ]] || pkg-config --cflags Qt6Core | sed 's/-I/-isystem/g') -x c++ - || return 1
        done
    done
}
# each_source COMPILER ARGUMENT...: the library's sources, without the one that is for libstdc++ alone.
each_source() {
    sources | grep -E '^(Source|Mac|Platform|cstring)/.*\.cpp$' | grep -v ResizeUncleared |
        xargs -P "$(nproc)" -n 8 "$@" -std=c++20 "${warn[@]}" -DLUM_NATIVE_PATHS=Mac -Iinclude -I.
}
# As the standard library of other systems has it, and as clang sees 32 bits.
libcxx() { each_source clang++-14 -stdlib=libc++ -m32 -D_FILE_OFFSET_BITS=64 -D_TIME_BITS=64; }
# Debian's newest, whose headers lie in the root of its release: the two cannot be installed together.
newest_libcxx() {
    local compiler=(clang++-19 -nostdinc++ -isystem build/worlds/root-amd64/usr/lib/llvm-19/include/c++/v1)
    # It has std::format; in the example the formats are checked as it compiles.
    each_source "${compiler[@]}" && "${compiler[@]}" -std=c++20 "${warn[@]}" -DLUM_WITHOUT_FMT -Iinclude examples/print.cpp
}
# The tests of everything that has a fast way, on processors that lack more and more of what these need.
processors() {
    cmake --preset dev && cmake --build --preset dev --target lum-tests || return 1
    printf '%s\n' qemu64 core2duo Nehalem | xargs -P "$(nproc)" -I{} qemu-x86_64 -cpu {} build/dev/tests/lum-tests \
        --gtest_filter='Units*:Blocks*:Escaping.Blocks*:UnicodeConverters.TheFast*:Parser*-Parser.EveryShort*'
}
# variant NAME CMAKE-ARGUMENT...: the library's tests in another build.
variant() {
    local build=build/variants/$1
    shift
    cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Debug -DCMAKE_COMPILE_WARNING_AS_ERROR=ON -DLUM_BUILD_TOOLS=OFF -DCMAKE_UNITY_BUILD=ON \
        -DCMAKE_UNITY_BUILD_BATCH_SIZE=12 "$@" && cmake --build "$build" --target lum-tests && "$build/tests/lum-tests"
}
# variant_of_library NAME CMAKE-ARGUMENT...: the library alone in another build.
variant_of_library() {
    cmake -S . -B "build/variants/$1" -G Ninja -DLUM_BUILD_TESTS=OFF -DLUM_BUILD_TOOLS=OFF -DLUM_BUILD_SQL=OFF "${@:2}" &&
        cmake --build "build/variants/$1"
}
# Ten million executions; a property has as many as it makes in one to four minutes.
executions() {
    build asan || return 1
    printf '%s\n' {Parse,Resolve,Edit,Query,LocalPaths}\ 800000 TimeStamp\ 5000000 {Strings,Format,Redaction}\ 300000 \
        {Converters,ResourceFile}\ 45000 StringTable\ 15000 |
        xargs -P "$(nproc)" -L 1 bash -c 'fuzz/run.sh build/asan "$0" "build/corpus/$0" -runs="$1"' 2>&1 |
        awk '{ print } /number_of_executed_units/ { sum += $2; properties++ }
            END { print "figure: " sum " executions of " properties " properties"; exit sum < 10000000 }'
}
valgrind_tests() {
    # The tests count allocations by functions of their own, which valgrind leaves in place by this synonym. It
    # computes long double in 64 bits.
    variant valgrind -DLUM_NO_POOLS=ON &&
        valgrind -q --error-exitcode=1 --soname-synonyms=somalloc=nouserintercepts build/variants/valgrind/tests/lum-tests \
            --gtest_filter='-*EveryScalar*:*EveryShort*:Escaping*:Encodings*:Numbers.HaveEveryDigit*'
}
# A program that is built without exceptions and run-time types links with the library and does the same.
consumer() {
    for compiler in g++ clang++-14; do
        for flags in "" "-fno-exceptions -fno-rtti"; do
            $compiler -std=c++20 $flags -Iinclude examples/first.cpp -Lbuild/release -llum -Wl,-rpath,build/release -o build/consumer &&
                build/consumer || return 1
        done
    done | sort | uniq -c | awk '$1 % 4 != 0 { exit 1 }'
}
postgresql() { cmake --preset dev && cmake --build --preset dev && sql/postgresql/test.sh build/dev; }
stable() { [ -z "$(git tag --list 'v*')" ] || { cmake --preset dev && cmake --build --preset dev --target lum && checks/stable.sh build/dev; }; }
# Both forms, each used in every way.
consumers() {
    variant_of_library static -DBUILD_SHARED_LIBS=OFF && checks/consumer.sh build/variants/static g++ "" &&
        checks/consumer.sh build/release g++ "" --inside
}
samples() { examples/strings.sh | cmp - examples/strings.rsrc; }

# What takes long runs in two lanes beside each other, since half of it has work for one processor only. A build folder
# belongs to one lane.
check "sources are formatted" format
check "includes point downwards" checks/levels.sh
check "no file includes a header twice" includes_once
check "g++, optimised: no warning" build release
{
    check "no case needs more instructions than are committed" ./dev bench --counts
    check "only the reviewed symbols are exported" checks/exports.sh build/release/liblum.so
    check "layouts and slots are the reviewed ones" checks/layouts.py
    check "the newest tag's programs run with this library" stable
    check "the library is hardened and names no folder" checks/hardening.sh build/release/liblum.so
    check "gdb and lldb show values as text" tests/debuggers.sh build/release g++ ""
    check "files do not depend on the folder they are built in" checks/reproducible.sh
    check "a static library defines only the reviewed names outside Lum" checks/symbols.sh build/release/CMakeFiles/lum.dir
    check "public headers compile alone" headers
    check "shells and man read what the tool writes for them" tests/completions.sh build/release/tools/lum/lum
    check "Qt, ICU, Boost, abseil, POCO, fmt, json beside Lum" checks/neighbours.sh
    check "examples in README and docs print what they say" checks/snippets.sh build/release
    check "the drawings show what the project says of itself" docs/drawings.py build/release/tools/lum/lum --check
    check "the oddities are what uriparser and Node.js answer" checks/oddities.py others
    check "every file has a licence" reuse lint
    check "the licence is the same in both places" cmp LICENSE LICENSES/MIT.txt
    check "the sample files are what their script writes" samples
    check "the site builds; every public name has an example" docs/site.sh
    check "libraries for 32 bits are unpacked" checks/libraries32.sh
    check "32 bits, g++: all tests" build_and_test m32
    check "clang++ with libc++, 32 bits: no warning" libcxx
    check "older processors, emulated: tests of the fast ways" processors
    check "s390x, big-endian, emulated: the library's tests" checks/worlds.sh --library s390x
} &
{
    check "clang++, address and undefined sanitizers: all tests" build_and_test asan
    check "fuzz properties, two seconds each" ./dev fuzz all 2
    check "clang-tidy" tidy
    check "clang++, thread sanitizer: what several threads do" threads
} &
wait
if [ $full = yes ]; then
    {
        LUM_HUGE_TEXTS=1 LUM_EXITS=1000 check "link-time optimisation; texts of 2^31 units; 1,000 exits while threads convert" \
            variant lto -DCMAKE_BUILD_TYPE=Release -DCMAKE_CXX_FLAGS=-flto=auto
        # Its warnings of values that are not set, and of assignments that a using declaration brings in, are wrong.
        check "g++-11, C++23" variant g++-11 -DCMAKE_CXX_COMPILER=g++-11 -DCMAKE_CXX_STANDARD=23 \
            "-DCMAKE_CXX_FLAGS=-Wno-maybe-uninitialized -Wno-deprecated-copy"
        # Unsigned numbers wrap where that is meant.
        check "clang++, no implicit conversion changes a number" variant integer -DCMAKE_CXX_COMPILER=clang++-14 \
            "-DCMAKE_CXX_FLAGS=-O1 -fsanitize=implicit-conversion,bounds -fno-sanitize-recover=all -fsanitize-ignorelist=$PWD/checks/integer.txt"
        check "unsigned char, checked containers, filled locals" variant strict \
            "-DCMAKE_CXX_FLAGS=-funsigned-char -D_GLIBCXX_DEBUG -ftrivial-auto-var-init=pattern"
        check "without libplist" variant no-plist -DLUM_WITH_PLIST=OFF
        check "Debian packages: equal twice, installed, removed" checks/packages.sh
        check "other projects build against Lum, offline" consumers
        check "PostgreSQL: the extension in a server of its own" postgresql
        check "without exceptions and run-time types" consumer
        check "ten million executions of the fuzz properties" executions
        check "lines and branches that tests execute" checks/coverage.sh
        check "cppcheck" checks/cppcheck.sh
    } &
    {
        check "valgrind: the library's tests" valgrind_tests
        check "deliberate faults are noticed" checks/canaries.sh
        check "other machines, emulated: the library's tests" checks/worlds.sh --library arm64 armhf ppc64el riscv64 amd64
        check "the newest libc++: no warning" newest_libcxx
        LUM_HUGE_TEXTS=1 check "32 bits: the longest texts" build/m32/tests/lum-tests --gtest_filter='Limits*'
    } &
    wait
fi
if [ -s "$failed" ]; then
    echo "FAILED: $(paste -s -d ';' "$failed")"
    exit 1
fi
