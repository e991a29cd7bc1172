#!/usr/bin/env bash
# Compares what a shared library exports with the reviewed list, debian/liblum1.symbols, which also tells the packages
# which version a program needs. The standard library's own names are left out: templates bring them along with a
# visibility of their own.
# Usage: exports.sh LIBRARY [--accept]: new names get the version that CMakeLists.txt says
set -u -o pipefail
export LC_ALL=C
file=debian/liblum1.symbols
foreign='_ZZ?(T[ISV])?N?K?(St|9__gnu_cxx)|_Z9sprintf_sILm'
# As that file has them: names of C as they are, those of C++ in words.
list=$(nm -D --defined-only "$1" | cut -c20- | grep -vE "^($foreign)" |
    sed -E 's/^(_Z.*)/(c++)"\1@Base"/; /^_?[A-Za-z]/s/$/@Base/' | c++filt | sort -u) || exit 1
if [ "${2-}" = --accept ]; then
    version=$(sed -nE 's/^project\(Lum VERSION ([0-9.]+) .*/\1/p' CMakeLists.txt)
    known=$(<$file)
    {
        echo 'liblum.so.1 liblum1 #MINVER#'
        # What the compiler leaves of templates is no promise.
        echo " (optional=templinst|regex)\"^($foreign).*@Base\$\" 1.0.0"
        while IFS= read -r name; do
            grep -F " $name " <<<"$known" || echo " $name $version"
        done <<<"$list"
    } >$file
fi
diff -u <(tail -n +3 $file | sed -E 's/^ //; s/ [0-9.]+$//') <(echo "$list")
