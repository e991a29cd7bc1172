#!/usr/bin/env bash
# Counts the instructions of every case of Lum's under callgrind and compares them with counts.txt, which has a
# line a case: its name, a tab, the instructions of one call or element. Fails where a case needs 3 % more than
# there, where one is missing or new, and where twice the input needs more than 2.3 times the instructions.
# The instruction set, the C library's variants and its thresholds are fixed: the counts hold on every machine.
# Usage: counts.sh BUILD-DIR [--write]: writes counts.txt instead
set -eu -o pipefail
export LC_ALL=C
build=$1 committed=$(dirname "$0")/counts.txt
work=$(mktemp -d /tmp/lum-counts-XXXXXX)
trap 'rm -rf "$work"' EXIT

# Every function of the C library in its variant for SSE2, and the thresholds of copies that go round the cache.
without=-SSSE3,-SSE4_1,-SSE4_2,-AVX,-AVX2,-AVX512F,-BMI1,-BMI2,-ERMS,-FSRM,-FMA,-FMA4,-LZCNT,-MOVBE,-RTM
without=$without,-AVX_Fast_Unaligned_Load,-Fast_Unaligned_Load,-Slow_BSF,-Slow_SSE4_2
tunables=glibc.cpu.hwcaps=$without:glibc.cpu.x86_data_cache_size=0x8000:glibc.cpu.x86_shared_cache_size=0x1000000
tunables=$tunables:glibc.cpu.x86_non_temporal_threshold=0x1000000
# The size from which blocks are mapped, and how long small blocks stay apart, follow what earlier cases released.
tunables=$tunables:glibc.malloc.mmap_threshold=0x20000:glibc.malloc.mxfast=0
# The size of the environment and of the paths should not matter either.
env -i LC_ALL=C LD_BIND_NOW=1 TMPDIR="$work" \
    GLIBC_TUNABLES="$tunables" \
    valgrind --tool=callgrind --instr-atstart=no --collect-atstart=no --combine-dumps=yes --dump-line=no \
    --callgrind-out-file="$work/dump" "$build/benchmarks/lum-counts" >"$work/log" 2>&1 || { cat "$work/log"; exit 1; }

# A dump a case: "family/case/Lum", how many calls it was, and their instructions.
awk -F '\t' '/^desc: Trigger: Client Request: / { sub(/^.*Request: /, ""); name = $1; calls = $2; sub(/\/Lum$/, "", name) }
    /^(totals|summary): / && name != "" { split($0, words, " "); count = words[2] / calls; printf "%s\t%.*f\n", name, count < 100 ? 3 : 0, count; name = "" }' \
    "$work/dump" >"$work/counts"
[ -s "$work/counts" ] || { echo "callgrind has counted nothing"; cat "$work/log"; exit 1; }

# Growth cases come in pairs, "family/operation/size" and twice that size, counted by the element.
# By design, appending grows a long string to the exact length each time.
awk -F '\t' '{ size = $1; sub(/^.*\//, "", size); name = $1; sub(/\/[0-9]*$/, "", name) }
    size ~ /^[0-9]+$/ && name != "strings/growth of appending 16 units" {
        if (name == before && 2 * $2 > 2.3 * least) {
            printf "%s: %.2f times the instructions for twice the input\n", name, 2 * $2 / least; failed = 1
        }
        before = name; least = $2
    }
    END { exit failed }' "$work/counts"

if [ "${2-}" = --write ]; then
    cp "$work/counts" "$committed"
    exit
fi
awk -F '\t' 'FNR == NR { committed[$1] = $2; next }
    { printf "%-58s %12s", $1, $2 }
    !($1 in committed) { print "  NEW"; failed = 1; next }
    {
        change = committed[$1] > 0 ? 100 * ($2 / committed[$1] - 1) : 100 * ($2 > 0)
        remark = change > 3 ? "  MORE than " committed[$1] : (change < -3 ? "  fewer than " committed[$1] : "")
        printf " %+7.1f %%%s\n", change, remark
        failed = failed || (change > 3); delete committed[$1]
    }
    END {
        for (name in committed) { print name ": not counted any more"; failed = 1 }
        if (failed) { print "If that is meant: ./dev bench --counts --write, and commit the file with the change." }
        exit failed
    }' "$committed" "$work/counts"
