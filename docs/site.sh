#!/usr/bin/env bash
# Makes the site of guides, reference and figures in build/docs/html. Fails where Doxygen warns, where a public name has
# no documentation or no example, and where a link leads nowhere.
set -eu -o pipefail
cd "$(dirname "$(readlink -f "$0")")/.."
rm -rf build/docs
mkdir -p build/docs

about() { sed -nE '/^(\/\/|\/\*)/!q; s/^(\/\/|\/\*) ?//; s/ \*\/$//; p' "$1"; } # PROGRAM: the comment at its head

# pages PROGRAM...: a page for each, what it is about, its code with links to what it uses, and what it prints
pages() {
    local program name
    for program in "$@"; do
        name=$(basename "$program")
        printf '/** @example %s\n@details\n%s\n\n' "$name" "$(about "$program")"
        case $program in
            */apps/*)
                ! iconv -f utf-8 -t utf-16 "examples/apps/data/${name%.*}.in" >/dev/null 2>&1 || # not one in another encoding
                    printf 'Its input in the tests:\n@verbinclude %s.in\n' "${name%.*}"
                printf 'It prints\n@verbinclude %s.out\n*/\n' "${name%.*}" ;;
            *) printf 'It prints\n@verbinclude %s.txt\n*/\n' "${name%.*}" ;;
        esac
    done
}
list() { # PROGRAM...
    local program
    for program in "$@"; do
        printf -- '- <a href="%s-example.html">%s</a>: %s\n' "$(basename "$program" | sed 's/\./_8/')" "$(basename "$program")" \
            "$(about "$program" | sed '/^$/q' | tr '\n' ' ')"
    done
}
reference=(examples/reference/*.c examples/reference/*.cpp) apps=(examples/apps/*.cpp)
{
    pages "${reference[@]}" "${apps[@]}"
    printf '/** @page programs Programs\nThese do a whole task each:\n\n%s\n\nIn these every public name is used:\n\n%s\n*/\n' \
        "$(list "${apps[@]}")" "$(list "${reference[@]}")"
} >build/docs/examples.dox
doxygen docs/Doxyfile
checks/examples.py
checks/links.py build/docs/html
