#!/usr/bin/env bash
# Installs the library and asks gdb, and lldb where it is, for the values of a program that stands at a breakpoint. gdb
# has to find the printers by itself. Once with the library as it was built, and once without debug information.
# Usage: debuggers.sh BUILD-DIR COMPILER COMPILER-FLAGS
set -eu
build=$1 compiler=$2 flags=$3
export LC_ALL=C.UTF-8
# gdb knows a file by its real path.
work=$(readlink -f "$(mktemp -d)")
trap 'rm -rf "$work"' EXIT
failed=0

cat >"$work/program.cpp" <<'END'
#include <Lum/Lum.h>
void StopHere() {}
int main() {
    const Lum::URI uri("http://u:p@h:1/a?b=\xC3\xA9#c"), relative("x/y?q"), mail("mailto:a@b"), invalid("a\\b");
    const Lum::URI file("file:///C|/x");
    CString text(u"a\u00E9\U0001F600\n"), shared(text), empty, locked(u"lock");
    locked.LockBuffer();
    const Lum::URI::StringProxy proxy("p\"q");
    const Lum::TimeStamp time(2008, 2, 29, 12, 30, 45, 5), late(30828, 9, 14, 2, 48, 5, 0), early(1600, 1, 1, 0, 0, 0, 0);
    const auto bytes = Lum::ConvertText("3 \xE2\x82\xAC", "utf-8", "iso-8859-1");
    Lum::ConversionResult block{Lum::ConversionStatus::kDone, 3, 6};
    const void* const nothing = &time;
    const CString* const broken = static_cast<const CString*>(nothing);
    StopHere();
    return broken == &text;
}
END

# expects DEBUGGER OUTPUT: the lines of standard input are in the output, as whole lines.
expects() {
    local line
    while IFS= read -r line; do
        grep -qxF -- "$line" <<<"$2" && continue
        printf '%s does not say: %s\n%s\n' "$1" "$line" "$2"
        failed=1
        return
    done
}

for strip in "" --strip; do
    prefix=$work/prefix$strip
    # The package's test installs everything; of the tool nothing is needed.
    cmake --install "$build" --prefix "$prefix" $strip >"$work/log" 2>&1 || { cat "$work/log"; exit 1; }
    library=$(readlink -f "$(find "$prefix" -name liblum.so)")
    # shellcheck disable=SC2086
    "$compiler" $flags -O0 -g -std=c++20 -I"$prefix/include" "$work/program.cpp" -o "$work/program" "$library" \
        -Wl,-rpath,"${library%/*}"

    uris=(uri relative mail file invalid)
    # What describes a URI is in the library.
    if [ -z "$strip" ] && readelf -S "$library" | grep -q debug_info; then
        expression=()
    else
        expression=('$lum(' ')')
    fi
    commands=()
    for name in "${uris[@]}"; do commands+=(-ex "output ${expression[0]-}$name${expression[1]-}" -ex 'echo \n'); done
    for name in text shared empty locked proxy time late early bytes block '*broken' '$lum(&file)'; do
        commands+=(-ex "output $name" -ex 'echo \n')
    done
    output=$(gdb -nx -batch -iex "add-auto-load-scripts-directory $prefix/share/gdb/auto-load" \
        -iex "add-auto-load-safe-path $prefix" -iex "set startup-with-shell off" -iex "set debuginfod enabled off" \
        -ex "break StopHere" -ex run -ex up "${commands[@]}" -ex kill "$work/program" 2>&1) || true
    if [ ${#expression[@]} = 0 ]; then
        expects gdb "$output" <<'END'
"http://u:p@h:1/a?b=é#c" = {scheme = "http", user = "u", password = "p", host = "h", port = "1", path = "/a", query = "b=é", fragment = "c"}
"x/y?q" = {path = "x/y", query = "q"}
"mailto:a@b" = {scheme = "mailto", non-hierarchical part = "a@b"}
<not valid> = {scheme = "unknown"}
END
    else
        expects gdb "$output" <<'END'
"http://u:p@h:1/a?b=é#c"
"x/y?q"
"mailto:a@b"
"<not valid>"
END
    fi
    expects gdb "$output" <<'END'
"file:///C|/x"
"aé😀\n" = {length = 5, count = 2, locked = false, capacity = 64}
"" = {length = 0, count = -1, locked = false, capacity = 0}
"lock" = {length = 4, count = -1, locked = true, capacity = 64}
"p\"q"
2008-02-29T12:30:45.5Z = {ticks = 128487618455000000}
30828-09-14T02:48:05Z = {ticks = 9223372036850000000}
<before 1601> = {ticks = -316224000000000}
unmappable = {text = "3 ", offset = 2}
done = {read = 3, written = 6}
<not constructed>
END

    # Debian's package does not know where its own module is.
    module=$(compgen -G '/usr/lib/llvm-14/lib/python3*/dist-packages/lldb/embedded_interpreter.py') || continue
    output=$(PYTHONPATH=${module%/lldb/*} lldb-14 --no-lldbinit -b \
        -o "command script import $prefix/share/lum/debuggers/lum_lldb.py" -o "breakpoint set -n StopHere" -o run -o up \
        -o "frame variable" "$work/program" 2>&1 | sed -E 's/ \{\}?$//') || true
    expects lldb "$output" <<'END'
(const Lum::URI) uri = "http://u:p@h:1/a?b=é#c"
(const Lum::URI) relative = "x/y?q"
(const Lum::URI) mail = "mailto:a@b"
(const Lum::URI) invalid = <not valid>
(const Lum::URI) file = "file:///C|/x"
(CString) text = "aé😀\n" (length 5, count 2, capacity 64)
(CString) empty = "" (length 0, count -1, capacity 0)
(CString) locked = "lock" (length 4, locked, capacity 64)
(const Lum::URI::StringProxy) proxy = "p\"q"
(const Lum::TimeStamp) time = 2008-02-29T12:30:45.5Z
(const Lum::TimeStamp) late = 30828-09-14T02:48:05Z
(const Lum::TimeStamp) early = <-316224000000000 ticks, before 1601>
(Lum::ConversionResult) block = done
END
done
exit $failed
