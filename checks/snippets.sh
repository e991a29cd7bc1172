#!/usr/bin/env bash
# Runs the examples of README and docs. A ```cpp block with a main is compiled and run; its output must
# be the ```text block that follows. So are ```c blocks with a main, ```python blocks, which find the module in examples/,
# and ```sql blocks, which sqlite3 runs with the extension. In a ```console block the lines behind "$ " are run with the tool
# and the commands of the project, and must print the lines that follow them.
# A block that includes a header of Qt or uriparser is left out where that library is not installed.
# Usage: snippets.sh BUILD-DIR
set -u
build=$(readlink -f "$1")
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
export PATH="$build/tools/lum:$PATH" LC_ALL=C.UTF-8
failed=0

compare() { # WHERE EXPECTED ACTUAL
    diff "$2" "$3" >"$work/diff" && return
    echo "$1 does not print what it says:"
    cat "$work/diff"
    failed=1
}

run_console() { # WHERE FILE: prints the block as it would be, each command followed by its output
    local line
    while IFS= read -r line; do
        case $line in
            '$ ./dev run '*) echo "$line"; bash -c "lum ${line#\$ ./dev run }" 2>&1 ;;
            '$ lum '*) echo "$line"; bash -c "${line#\$ }" 2>&1 ;;
        esac
    done <"$2" >"$work/actual"
    compare "$1" "$2" "$work/actual"
}

for file in README.md docs/*.md; do
    awk -v dir="$work" -v RS='' 'BEGIN { RS = "\n" }
        /^```/ && open { close(out); open = 0; next }
        /^```(cpp|c|python|sql|text|console)$/ { kind = substr($0, 4); out = sprintf("%s/%04d.%s", dir, NR, kind); open = 1; printf "" > out; next }
        /^```/ { out = "/dev/null"; open = 1; next }
        open { print > out }' "$file"
    last=
    for block in "$work"/[0-9]*; do
        [ -e "$block" ] || continue
        where="$file:$(basename "${block%.*}" | sed 's/^0*//')"
        case $block in
            *.cpp)
                last=
                grep -q 'int main' "$block" || continue
                module=$(sed -nE 's/#include <Q.*/Qt6Core/p; s/#include <uriparser.*/liburiparser/p' "$block" | sort -u)
                flags=
                [ -z "$module" ] || flags=$(pkg-config --cflags --libs "$module" | sed 's/-I/-isystem/g') || continue
                # shellcheck disable=SC2086
                if g++ -std=c++20 -fPIC -Wall -Wextra -Werror -Iinclude "$block" -o "$work/example" "$build/liblum.so" \
                    -Wl,-rpath,"$build" $flags >"$work/log" 2>&1; then
                    "$work/example" >"$work/output"
                    last=$where
                else
                    echo "$where does not compile:"; cat "$work/log"; failed=1
                fi
                ;;
            *.c)
                last=
                grep -q 'int main' "$block" || continue
                if gcc -std=c99 -pedantic -Wall -Wextra -Werror -Iinclude "$block" -o "$work/example" "$build/liblum.so" \
                    -Wl,-rpath,"$build" >"$work/log" 2>&1; then
                    "$work/example" >"$work/output"
                    last=$where
                else
                    echo "$where does not compile:"; cat "$work/log"; failed=1
                fi
                ;;
            *.python)
                last=$where
                LUM_LIBRARY=$build/liblum.so PYTHONPATH=examples/python PYTHONDONTWRITEBYTECODE=1 python3 "$block" \
                    >"$work/output" 2>&1
                ;;
            *.sql) last=$where; sqlite3 -batch -cmd ".load $build/sql/lum_sqlite" :memory: <"$block" >"$work/output" 2>&1 ;;
            *.text) [ -z "$last" ] || compare "$last" "$block" "$work/output"; last= ;;
            *.console) run_console "$where" "$block" ;;
        esac
    done
    rm -f "$work"/[0-9]*
done
exit $failed
