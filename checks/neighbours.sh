#!/usr/bin/env bash
# Lum's headers in one source with those of other libraries, before and behind them, with both compilers. No macro of
# theirs may be without LUM_ in front of its name.
# Usage: neighbours.sh, from the root
set -u -o pipefail
others=$(printf '#include <%s>\n' QString QUrl Poco/Mutex.h Poco/URI.h absl/strings/str_cat.h absl/time/time.h boost/url.hpp \
    fmt/format.h nlohmann/json.hpp unicode/ucnv.h unicode/unistr.h)
ours=$(for header in include/Lum/*.h include/Lum/Bridges/*.h; do echo "#include <${header#include/}>"; done)
# shellcheck disable=SC2046
arguments=(-std=c++20 -fPIC -Iinclude $(pkg-config --cflags Qt6Core | sed 's/-I/-isystem/g'))

foreign=$(echo "$ours" | g++ "${arguments[@]}" -E -dD -x c++ - |
    awk '/^# [0-9]+ "/ { ours = $3 ~ /include\/Lum\// } /^#define / && ours { sub(/\(.*/, "", $2); if ($2 ~ /^LUM_/) ++good; else print $2 }
         END { if (!good) print "no macro at all is seen" }')
[ -z "$foreign" ] || { printf 'macros without LUM_:\n%s\n' "$foreign"; exit 1; }

compile() { printf '%s\n%s\n' "$2" "$3" | $1 "${arguments[@]}" -fsyntax-only -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror -x c++ -; }
processes=()
for compiler in g++ clang++-14; do
    compile $compiler "$ours" "$others" & processes+=($!)
    compile $compiler "$others" "$ours" & processes+=($!)
    wait "${processes[@]: -1}"
done
failed=0
for process in "${processes[@]}"; do wait "$process" || failed=1; done
exit $failed
