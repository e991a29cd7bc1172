#!/usr/bin/env bash
# Compares what a shared library exports with the reviewed list, checks/exports.txt. Weak symbols and
# the standard library's own are left out: templates bring them along with a visibility of their own.
# Usage: exports.sh LIBRARY [--accept]
set -u
list=$(nm -DC --defined-only "$1" | cut -c18- | grep -vE '^[WVu] |std::.* std::|^. std::|^. __gnu' | cut -c3- | sort -u)
if [ "${2-}" = --accept ]; then
    echo "$list" >checks/exports.txt
fi
diff -u checks/exports.txt <(echo "$list")
