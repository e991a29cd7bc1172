#!/usr/bin/env bash
# Converts files in place: what is kept, what is refused, and what is there after a kill at any moment.
# Usage: convert-in-place.sh PATH-TO-LUM
set -u
lum=$(readlink -f "$1")
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cd "$work" || exit 1
failed=0
fail() { echo "FAILED: $*"; failed=1; }
latin1() { "$lum" convert --from latin1 --to utf-8 --in-place "$@"; }
says() { # STATUS TEXT COMMAND...: the exit status, and standard error
    local status=$1 text=$2 said answer
    shift 2
    said=$("$@" 2>&1)
    answer=$?
    [ "$answer" = "$status" ] && [ "$said" = "$text" ] || fail "$*: ($answer) $said"
}

# The mode stays, a link leads to the file still, and only what was asked for is converted.
mkdir folder
printf '\351\n' >folder/a
printf '\350' >b
chmod 4751 folder/a
ln -s folder/a link
says 0 '' latin1 link b
[ "$(cat folder/a b)" = $'é\nè' ] && [ "$(stat -c %a folder/a)" = 4751 ] && [ -L link ] || fail "content, mode or link"

# A text that cannot be converted stays, and does not keep the next one from it.
printf 'a\n\377' >bad
printf 'c' >c
says 1 'lum: "'"$work"'/bad", line 2, byte 2: malformed, not utf-8; the file is as it was (--on-error says how to go on)' \
    "$lum" convert --from utf-8 --to utf-16be -i bad c
[ "$(od -An -tx1 bad c | tr -d ' \n')" = 610aff0063 ] || fail "a text that cannot be converted"

printf '\351' >one
ln one other
says 0 'lum: "one" has other names (hard links), which keep the old text' latin1 one
[ "$(cat one)" = é ] && [ "$(cat other)" = $'\351' ] || fail "hard links"
says 2 'lum: "./b" has been converted already; give each file once' latin1 b ./b
says 2 "lum: cannot be converted in place; no regular file: \"$work/folder\"" latin1 folder
says 2 'lum: cannot open "none": No such file or directory' latin1 none
says 2 'lum: --in-place: needs files, not standard input (lum convert --help tells more)' latin1
[ "$(ls -A | tr '\n' ' ')" = 'b bad c folder link one other ' ] || fail "something is left: $(ls -A)"

# Killed at moments that are spread over the whole run, it leaves the old content or the new one.
head -c 3000000 /dev/zero | tr '\0' '\351' >old
"$lum" convert --from latin1 --to utf-8 <old >new
start=$(date +%s%N)
cp old file && latin1 file
took=$((($(date +%s%N) - start) / 1000))
killed=0
for moment in $(seq 0 39); do
    cp old file
    "$lum" convert --from latin1 --to utf-8 --in-place file &
    [ "$moment" -eq 0 ] || sleep "$(printf '0.%06d' $((took * moment / 32 % 1000000)))"
    kill -KILL $! 2>/dev/null
    wait $! 2>/dev/null || killed=$((killed + 1))
    cmp -s file old || cmp -s file new || { fail "after a kill the file is neither"; break; }
    rm -f .lum-*
done 2>/dev/null
[ "$killed" -gt 0 ] || fail "no kill came in time"

# An interruption that can be caught leaves nothing beside the file.
cp old file
"$lum" convert --from latin1 --to utf-8 --in-place file &
for _ in $(seq 200); do
    [ -z "$(ls .lum-* 2>/dev/null)" ] || break
done
kill -TERM $! 2>/dev/null
wait $! 2>/dev/null
[ -z "$(ls .lum-* 2>/dev/null)" ] || fail "an interruption leaves $(ls .lum-*)"
cmp -s file old || cmp -s file new || fail "after an interruption the file is neither"
exit $failed
