#!/usr/bin/env bash
# Fails where a built shared library or program lacks a protection, or names the folder it was built in.
# Usage: hardening.sh FILE...
set -u -o pipefail
export LC_ALL=C
failed=0
fail() { echo "$1: $2"; failed=1; }
for file; do
    segments=$(readelf -lW "$file") && dynamic=$(readelf -dW "$file") || exit 1
    grep -q GNU_RELRO <<<"$segments" || fail "$file" "no RELRO"
    grep -qE 'BIND_NOW|FLAGS_1.*NOW' <<<"$dynamic" || fail "$file" "functions are bound late"
    stack=$(grep GNU_STACK <<<"$segments") || fail "$file" "does not say whether its stack is executable"
    grep -qE 'RWE' <<<"$stack" && fail "$file" "executable stack"
    grep -qE 'TEXTREL' <<<"$dynamic" && fail "$file" "relocations in the code"
    # What _FORTIFY_SOURCE calls.
    imports=$(nm -D --undefined-only "$file")
    grep -qE '__[a-z]+printf_chk' <<<"$imports" || fail "$file" "calls of the C library are not checked"
    grep -q '__stack_chk_fail' <<<"$imports" || fail "$file" "the stack is not protected"
    grep -qaF "$PWD/" "$file" && ! grep -qF "$PWD/" <<<"$dynamic" && fail "$file" "names the folder $PWD"
done
exit $failed
