#!/usr/bin/env bash
# Fails where an include points up. Modules are listed from the bottom; a file may include its own module,
# those its row names, and public headers where the row says "include".
set -u -o pipefail
failed=0

# module | modules it may include
rules='
Source/Base|Source/Base
Source/Utf8|Source/Utf8 Source/Base
Platform/Host|Platform/Host include
Platform/Script|Platform/Script Platform/Host include
Platform/TextEncoding|Platform/TextEncoding Platform/Script Platform/Host Platform Source/Base Source/Utf8 include
Platform|Platform Platform/TextEncoding Platform/Script Platform/Host Platform/Uc16 Source/Base include
Platform/Uc16|Platform Platform/TextEncoding Platform/Uc16 Source/Base
Mac|Mac Platform Platform/TextEncoding include
Source/Mutex|Source/Mutex include
Source/TimeStamp|Source/TimeStamp Source/Base include
Source/Transcoder|Source/Transcoder Source/Base Source/Utf8 Mac include
Source/URI|Source/URI Source/Base Mac include
Source/CInterface|Source/CInterface include
cstring|cstring Source/Base Platform/Uc16 include
cstring/host|cstring cstring/host Source/Base Platform Platform/TextEncoding Platform/Script Platform/Uc16 include
tools/lum|tools/lum include
examples|include
sql|include
fuzz|fuzz tests include
benchmarks|benchmarks include Source/Base
tests|tests Source/Base Source/Utf8 Source/Mutex Source/Transcoder Source/TimeStamp Source/URI cstring cstring/host Mac Platform Platform/TextEncoding Platform/Script Platform/Uc16 include
include/Lum|include
'
# The files of cstring that know the host's services are a module of their own, above the others.
module_of() { case $1 in
    cstring/Host* | cstring/StringResources*) echo cstring/host ;;
    Platform/Uc16/* | Platform/Host/* | Platform/Script/* | Platform/TextEncoding/* | Source/* | include/* | tools/*) echo "$1" | cut -d/ -f1-2 ;;
    *) echo "${1%%/*}" ;;
esac; }

files=$(git ls-files -co --exclude-standard -- '*.h' '*.c' '*.cpp')
[ -n "$files" ] || { echo "no sources: not a git checkout?"; exit 1; }
while IFS=: read -r file include; do
    module=$(module_of "$file")
    case $include in
        ../* | */../*) echo "$file includes $include: say it from the root"; failed=1; continue ;;
        Lum/Platform.h | Lum/ResourceFile.h | Lum/Export.h) target=include ;;
        Lum/*) [[ $module != Platform* ]] || { echo "$file includes $include: of Lum only its host set-up"; failed=1; }
            target=include ;;
        *) target=$(module_of "$include") ;;
    esac
    [ -e "$include" ] || [ "$target" = include ] || target=$module
    allowed=$(echo "$rules" | sed -n "s#^$module|##p")
    case " $allowed " in
        *" $target "*) ;;
        *) echo "$file includes $include: $module may include only: ${allowed:-nothing}"; failed=1 ;;
    esac
done < <(echo "$files" |
    xargs grep -oHE '^ *# *include +("[^"]+"|<(Lum|Source|Mac|Platform|tools|tests)/[^>]+>)' | sed -E 's/ *# *include +["<]([^">]+)[">]/\1/')
exit $failed
