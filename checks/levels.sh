#!/usr/bin/env bash
# Fails where an include points up. Rooms are listed from the bottom; a file may include its own room,
# those its row names, and public headers where the row says "include".
set -u
failed=0

# room | rooms it may include
rules='
Source/Base|Source/Base
Platform|Platform include
Mac|Mac Platform
Source/URI|Source/URI Source/Base Mac include
tools/lum|tools/lum include
examples|include
fuzz|fuzz include
benchmarks|benchmarks include
tests|tests Source/Base Source/URI Mac Platform include
include/Lum|include
'
room_of() { case $1 in Source/* | include/* | tools/*) echo "$1" | cut -d/ -f1-2 ;; *) echo "${1%%/*}" ;; esac; }

while IFS=: read -r file include; do
    room=$(room_of "$file")
    case $include in
        Lum/*) target=include ;;
        *) target=$(room_of "$include") ;;
    esac
    [ -e "$include" ] || [ "$target" = include ] || target=$room
    allowed=$(echo "$rules" | sed -n "s#^$room|##p")
    case " $allowed " in
        *" $target "*) ;;
        *) echo "$file includes $include: $room may include only: ${allowed:-nothing}"; failed=1 ;;
    esac
done < <(git ls-files -co --exclude-standard -- '*.h' '*.cpp' |
    xargs grep -oHE '^#include ("[^"]+"|<Lum/[^>]+>)' | sed -E 's/#include ["<]([^">]+)[">]/\1/')
exit $failed
