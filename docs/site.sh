#!/usr/bin/env bash
# Makes the site of guides, reference and figures in build/docs/html. Fails where Doxygen warns, where a public name has
# no documentation or no example, and where a link leads nowhere.
set -eu -o pipefail
cd "$(dirname "$(readlink -f "$0")")/.."
rm -rf build/docs
mkdir -p build/docs
# A page for each program: what it is about, its code with links to what it uses, and what it prints.
for program in examples/reference/*.c examples/reference/*.cpp; do
    name=$(basename "$program")
    printf '/** @example %s\n@details\n' "$name"
    sed -nE '/^(\/\/|\/\*)/!q; s/^(\/\/|\/\*) ?//; s/ \*\/$//; p' "$program"
    printf '\n\nIt prints\n@verbinclude %s.txt\n*/\n' "${name%.*}"
done >build/docs/examples.dox
doxygen docs/Doxyfile
checks/examples.py
checks/links.py build/docs/html
