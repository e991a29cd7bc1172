#!/usr/bin/env bash
# Counts the instructions of every case of Lum's under callgrind and compares them with counts.txt, which has a
# line a case: its name, a tab, the instructions of one call or element. Fails where a case needs 3 % more than
# there, where one is missing or new, and where twice the input needs more than 2.3 times the instructions.
# The instruction set, the C library's variants and its thresholds are fixed: the counts hold on every machine.
# Shows the cases that have changed; all of them are in BUILD-DIR/counts.txt.
# Usage: counts.sh BUILD-DIR [--write]: writes the committed counts.txt instead
set -eu -o pipefail
export LC_ALL=C
build=$1 committed=$(dirname "$0")/counts.txt counted=$1/counts.txt
work=$(mktemp -d /tmp/lum-counts-XXXXXX)
trap 'rm -rf "$work"' EXIT

# Every function of the C library in its variant for SSE2, and the thresholds of copies that go round the cache.
without=-SSSE3,-SSE4_1,-SSE4_2,-AVX,-AVX2,-AVX512F,-BMI1,-BMI2,-ERMS,-FSRM,-FMA,-FMA4,-LZCNT,-MOVBE,-RTM
without=$without,-AVX_Fast_Unaligned_Load,-Fast_Unaligned_Load,-Slow_BSF,-Slow_SSE4_2
tunables=glibc.cpu.hwcaps=$without:glibc.cpu.x86_data_cache_size=0x8000:glibc.cpu.x86_shared_cache_size=0x1000000
tunables=$tunables:glibc.cpu.x86_non_temporal_threshold=0x1000000

# Writes "case<TAB>instructions of one call" of every case to standard output.
count() {
    rm -f "$work"/dump*
    # The size of the environment and of the paths should not matter either.
    env -i LC_ALL=C LD_BIND_NOW=1 TMPDIR="$work" GLIBC_TUNABLES="$tunables" \
        valgrind --tool=callgrind --instr-atstart=no --collect-atstart=no --combine-dumps=yes --dump-line=no \
        --callgrind-out-file="$work/dump" "$build/benchmarks/lum-counts" >"$work/log" 2>&1 || { cat "$work/log" >&2; exit 1; }
    # A dump a case: "family/case/Lum", how many calls it was, and their instructions.
    awk -F '\t' '/^desc: Trigger: Client Request: / { sub(/^.*Request: /, ""); name = $1; calls = $2; sub(/\/Lum$/, "", name) }
        /^(totals|summary): / && name != "" { split($0, words, " "); count = words[2] / calls; printf "%s\t%.*f\n", name, count < 100 ? 3 : 0, count; name = "" }' \
        "$work/dump"
}

# Growth cases come in pairs, "family/operation/size" and twice that size, counted by the element.
# By design, appending grows a long string to the exact length each time.
linear() {
    awk -F '\t' '{ size = $1; sub(/^.*\//, "", size); name = $1; sub(/\/[0-9]*$/, "", name) }
        size ~ /^[0-9]+$/ && name != "strings/growth of appending 16 units" {
            if (name == before && 2 * $2 > 2.3 * least) {
                printf "%s: %.2f times the instructions for twice the input\n", name, 2 * $2 / least; failed = 1
            }
            before = name; least = $2
        }
        END { exit failed }' "$1"
}

compare() {
    awk -F '\t' 'FNR == NR { committed[$1] = $2; next }
        { cases++ }
        !($1 in committed) { new = new $1 ": NEW, " $2 "\n"; next }
        {
            change = committed[$1] > 0 ? 100 * ($2 / committed[$1] - 1) : 100 * ($2 > 0)
            row = sprintf("%-70s %9s to %9s %+7.1f %%\n", $1, committed[$1], $2, change)
            if (change > 3) { more = more row } else if (change < -0.5 || change > 0.5) { printf "%s", row }
            delete committed[$1]
        }
        END {
            for (name in committed) { gone = gone name ": not counted any more\n" }
            printf "%d cases\n%s%s%s", cases, new, gone, (more == "" ? "" : "MORE than 3 %:\n" more)
            if (new gone more != "") { print "If that is meant: ./dev bench --counts --write, and commit the file with the change." }
            exit (new gone more != "")
        }' "$committed" "$1"
}

count >"$counted"
[ -s "$counted" ] || { echo "callgrind has counted nothing"; cat "$work/log"; exit 1; }
if [ "${2-}" = --write ]; then
    linear "$counted"
    cp "$counted" "$committed"
    exit
fi
if linear "$counted" >"$work/said" && compare "$counted" >>"$work/said"; then
    cat "$work/said"
    exit
fi
# Where the kernel puts things may touch a count. What the code needs, it needs each time: the lesser of two holds.
cat "$work/said"
echo "Counting again."
count >"$work/again"
awk -F '\t' 'FNR == NR { first[$1] = $2; next } { print $1 "\t" ($1 in first && first[$1] + 0 < $2 + 0 ? first[$1] : $2) }' \
    "$counted" "$work/again" >"$work/least"
cp "$work/least" "$counted"
linear "$counted"
compare "$counted"
