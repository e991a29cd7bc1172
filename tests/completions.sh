#!/usr/bin/env bash
# The manual page and the completions that the tool writes: each shell reads them, and bash and fish complete with them.
# Needs man, zsh and fish. Usage: completions.sh PATH-TO-LUM
set -u
lum=$(readlink -f "$1")
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
failed=0
fail() { echo "FAILED: $*"; failed=1; }

for what in man bash zsh fish; do
    "$lum" generate $what >"$work/$what" || fail "lum generate $what"
done
complaints=$(LC_ALL=C.UTF-8 MANWIDTH=80 man --warnings -l "$work/man" 2>&1 >"$work/page")
[ -z "$complaints" ] || fail "man: $complaints"
# Every subcommand and every option of it is on the page.
for subcommand in $("$lum" --help | sed -n '/^Subcommands:/,/^$/s/^  \([a-z]\+\) .*/\1/p'); do
    grep -q "lum $subcommand " "$work/page" || fail "the page lacks $subcommand"
    for option in $("$lum" "$subcommand" --help | grep -oE '^ +(-.,)?--[a-z-]+' | grep -oE -- '--[a-z-]+'); do
        grep -qE -- "$option\>" "$work/page" || fail "the page lacks $option of $subcommand"
    done
done
for shell in bash zsh fish; do
    $shell -n "$work/$shell" || fail "$shell -n"
done

# completes EXPECTED WORD...: what follows these words, the last of which has begun.
completes() {
    local expected=$1 said
    shift
    said=$(bash -c 'source "$0"; COMP_WORDS=(lum "$@"); COMP_CWORD=$#; _lum; printf "%s\n" "${COMPREPLY[@]}"' \
        "$work/bash" "$@" 2>/dev/null | sort -u | xargs)
    [ "$said" = "$expected" ] || fail "bash, lum $*: $said"
    said=$(HOME=$work fish -c 'source $argv[1]; complete -C "$argv[2]"' "$work/fish" "lum $*" | cut -f1 | sort -u | xargs)
    [ "$said" = "$expected" ] || fail "fish, lum $*: $said"
}
cd "$work" || exit 1
completes 'parent parse path' pa
completes 'mac unix win' path --to ''
completes 'utf-16 utf-16be utf-16le' convert --from utf-16
completes 'man' convert ma
completes 'host' get ho
completes '--color' relation --co
completes '' edit --host ''
completes '' get path --hos
exit $failed
