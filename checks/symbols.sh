#!/usr/bin/env bash
# Compares what a static library defines outside namespace Lum with the reviewed list,
# checks/static-symbols.txt: such a name can collide with a name of the program that links the library.
# The members of a class are one line. Names of the standard library are left out.
# Usage: symbols.sh FOLDER-WITH-THE-LIBRARY'S-OBJECTS [--accept]
set -u -o pipefail
# Only those whose sources are there: a build folder keeps the objects of sources that were removed.
objects=$(find "$1" -name '*.o' | while read -r object; do
    source=${object#"$1"/}
    [ ! -e "${source%.o}" ] || echo "$object"
done)
[ -n "$objects" ] || { echo "no objects in $1"; exit 1; }
list=$(echo "$objects" | xargs nm -C --defined-only --extern-only |
    sed -nE 's/^[0-9a-f]* [A-Zu] //p' |
    sed -E 's/^(guard variable|typeinfo|typeinfo name|vtable|VTT|construction vtable|(non-)?virtual thunk) (for|to) //; s/\[abi:[^]]*\]//g' |
    grep -vE '^(.* )?(Lum|std|__gnu_cxx|\(anonymous namespace\))::|^DW\.ref\.|^operator (new|delete)|^__' |
    sed -E 's/^([A-Za-z_][A-Za-z0-9_]*)::.*/\1::/' | sort -u)
if [ "${2-}" = --accept ]; then
    echo "$list" >checks/static-symbols.txt
fi
diff -u checks/static-symbols.txt <(echo "$list")
