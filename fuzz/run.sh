#!/usr/bin/env bash
# Runs one property under libFuzzer, from its seeds and with its dictionary.
# Usage: run.sh BUILD NAME CORPUS [LIBFUZZER-ARGUMENT...]: BUILD is configured with LUM_BUILD_FUZZERS, CORPUS a folder
# that keeps what is found
set -eu
cd "$(dirname "$(readlink -f "$0")")/.."
build=$1 name=$2 corpus=$3 seeds=() dictionary=fuzz/dictionaries/$2.dict
shift 3
mkdir -p "$corpus"
[ -d "fuzz/seeds/$name" ] && seeds+=("fuzz/seeds/$name")
# As in fuzz/CMakeLists.txt: those about URIs begin with the tests' table of URIs.
if grep -q "lum_add_property($name .* URI)" fuzz/CMakeLists.txt; then
    uris=$corpus-uris dictionary=fuzz/dictionaries/uri.dict
    mkdir -p "$uris"
    tail -n +2 tests/data/uris.tsv | cut -f1 | split -a 4 -l 1 - "$uris/"
    seeds+=("$uris")
fi
[ -f "$dictionary" ] && dictionary=-dict=$dictionary || dictionary=
exec "$build/fuzz/fuzz-$name" -print_final_stats=1 -verbosity=0 -artifact_prefix="$(dirname "$corpus")/" $dictionary "$@" \
    "$corpus" "${seeds[@]}"
