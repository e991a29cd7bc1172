#!/usr/bin/env bash
# Writes the sample resource file: examples/strings.sh >examples/strings.rsrc
# Bytes are pairs of hexadecimal digits until the end, for a shell cannot keep a NUL.
set -eu

number() { printf "%0$(($2 * 2))x" "$1"; } # VALUE BYTES, big-endian
size() { echo $((${#1} / 2)); }
text() { printf %s "$1" | od -An -v -tx1 | tr -d ' \n'; }
pascal() { local bytes; bytes=$(text "$1"); number "$(size "$bytes")" 1; echo "$bytes"; }
list() { number $# 2; for string in "$@"; do pascal "$string"; done; }

data='' types='' references='' names='' count=0

# resource ID NAME BYTES...: one of the type that `type` ends
resource() {
    local id=$1 name=$2 bytes
    bytes=$(printf %s "${@:3}" | tr -d '\n')
    references+=$(number "$id" 2)$([ -z "$name" ] && echo ffff || number "$(size "$names")" 2)00$(number "$(size "$data")" 3)00000000
    [ -z "$name" ] || names+=$(pascal "$name" | tr -d '\n')
    data+=$(number "$(size "$bytes")" 4)$bytes
    count=$((count + 1))
}
# type CODE: the resources since the last one; five types in all, whose entries come before the references
type() {
    types+=$(text "$1")$(number $((count - 1)) 2)$(number $((2 + 8 * 4 + $(size "$references") - 12 * count)) 2)
    count=0
}

resource 128 Greeting "$(pascal 'Hello, world')"
resource 1200 '' "$(pascal 'A string of its own')"
type 'STR '
resource 200 Menus "$(list Open Close Save 'Save as…')"
resource 201 '' "$(list Cut Copy Paste)"
type 'STR#'
resource 0 '' "$(for entry in 1002:2 1000:0 1001:1 1003:3 1100:500 1101:501; do number "${entry%:*}" 2; number "${entry#*:}" 2; done)"
type STRm
resource 128 About "$(text 'Made by examples/strings.sh.')"
type TEXT

map=0000000000000000001c$(number $((28 + 2 + $(size "$types$references"))) 2)$(number 3 2)$types$references$names
header=$(number 256 4)$(number $((256 + $(size "$data"))) 4)$(number "$(size "$data")" 4)$(number $((16 + $(size "$map"))) 4)
printf %b "$(printf %s "$header$(printf %0480d 0)$data$header$map" | sed 's/../\\x&/g')"
