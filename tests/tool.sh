#!/usr/bin/env bash
# Runs the command-line tool as a user would and compares what it prints and answers. What docs/tool.md shows
# runs with the guides (checks/snippets.sh) and is not repeated here.
# Usage: tool.sh PATH-TO-LUM
set -u
lum=$1
export LC_ALL=C TERM=xterm
unset COLUMNS NO_COLOR
failed=0

# expect STATUS OUTPUT COMMAND...: standard output and error together, and the exit status.
expect() {
    local status=$1 output=$2 actual
    shift 2
    actual=$("$@" 2>&1)
    local answer=$?
    if [ "$answer" != "$status" ] || [ "$actual" != "$output" ]; then
        printf 'FAILED: %s\n  expected (%s): %s\n  got      (%s): %s\n' "$*" "$status" "$output" "$answer" "$actual"
        failed=1
    fi
}

# expect_lines STATUS OUTPUT INPUT COMMAND...: the same with standard input, in printf's notation.
expect_lines() {
    local input=$3
    expect_input() { printf "$input" | "${@}"; }
    expect "$1" "$2" expect_input "${@:4}"
}

expect 1 'é/b\c
   ^
  not valid         backslash in the path

mailto:a%40b
  valid             absolute, non-hierarchical
  scheme            mailto
  non-hierarchical  a%40b  = a@b
  text              mailto:a%40b' "$lum" parse 'é/b\c' 'mailto:a%40b'
expect 1 '\xff\x1b[2Jh:x
^^^^
  not valid         scheme with a character that is no letter' "$lum" parse $'\xff\x1b[2Jh:x'

empty='"scheme":"","user":"","password":"","host":"","port":"","path":"","query":"","fragment":"","nonHierarchical":""'
unknown=${empty/'"scheme":""'/'"scheme":"unknown"'}
expect_lines 1 '{"input":"","valid":true,"relative":true,"hierarchical":true,'"$empty"',"text":""}
{"input":"a\\b","valid":false,"relative":false,"hierarchical":false,'"$unknown"',"text":"unknown:","reason":"backslash in the path","offset":1}
{"input":"�\u0000","valid":true,"relative":true,"hierarchical":true,'"${empty/'"path":""'/'"path":"�\u0000"'}"',"text":"�\u0000"}' \
    '\na\\b\r\n\377\000' "$lum" parse --json
expect 0 '[a,b]
  valid             relative, hierarchical
  path              [a,b]
  text              [a,b]' "$lum" parse '[a,b]'
expect 0 '%5Bx%20y%5D' "$lum" escape '[x y]'

expect_lines 1 'http://h/b

lum: standard input, line 2: not valid: backslash in the path (lum explain says what to do)' 'b\na\\b' "$lum" resolve http://h/a
expect 0 '{"base":"http://h/a","reference":"b","valid":true,"text":"http://h/b"}' "$lum" resolve --json http://h/a b
expect 0 b "$lum" relative --ignore-case http://h/A/b http://h/a/c
expect 1 '' "$lum" relative http://h/a ftp://h/
expect 1 '{"target":"http://h/a","base":"b","possible":false,"text":""}' "$lum" relative --json http://h/a b
expect 1 '' "$lum" relative 'a\b' 'c\d'
expect 1 'none 0' "$lum" relation 'a\b' 'a\b'
expect 0 '{"a":"a","b":"b","valid":true,"relation":"none","code":0}' "$lum" relation --json a b
expect 1 '{"a":"a","b":"b","valid":false,"text":""}' "$lum" parent --json a b
expect_lines 0 '{"input":"/x/","valid":true,"filename":"","extension":"","lastComponent":"x","directory":true}' \
    '/x/' "$lum" name --json
expect 0 'a = 1 x
b = 3&' "$lum" query 'http://h/?b=2&a=1+x&b=3%26'
expect 0 2 "$lum" query 'http://h/?b=2' --get b
expect 1 '' "$lum" query 'http://h/?b=2' --get B
expect 0 'http://h/?a=1&b=2&c=x%20y' "$lum" query 'http://h/?b=2' --set a=1 'c=x y'
expect 0 '?%5Bk=%5Dv' "$lum" query '' --set '[k=]v'
expect_lines 0 '{"input":"?a=1&b","valid":true,"pairs":[{"key":"a","value":"1"},{"key":"b","value":""}]}' \
    '?a=1&b' "$lum" query --json
expect 0 '{"input":"?b=%7e&","valid":true,"pairs":[{"key":"b","value":"%7e"},{"key":"","value":""}]}' \
    "$lum" query --json --raw '?b=%7e&'
expect 0 %7e "$lum" query --raw '?b=%7e&b=1' --get b
expect_lines 1 '
/a b

lum: standard input, line 1: not valid: backslash in the path (lum explain says what to do), and 1 more' \
    'x\\y\nhttp://h/a%%20b\nx\\z' "$lum" get path
# Texts that end in NUL hold line feeds; JSON is a line all the same.
nul() { printf "$1" | "$lum" "${@:2}" | tr '\0\n' '|_'; }
while IFS='#' read -r output input arguments; do
    # shellcheck disable=SC2086
    expect 0 "$output" nul "$input" $arguments
done <<'END'
a%0Ab|c%0D|#a\nb\0c\r#escape -0
{"input":"a\nb","text":"a%0Ab"}_#a\nb\0#escape --null --json
file:///a%0Ab|#/a\nb#path --from unix -0
/Volumes/a_b|#file:///a%%0Ab#path --to unix -0
/x_y|#http://h/x%%0Ay#parse --null --format {path}#
a@b|#x#get -0 non-hierarchical mailto:a@b
END
# An answer comes before the next line is asked for.
# Colors are there where they are asked for, and lines are cut on a terminal only.
expect 1 $'\e[1mé/b\\c\e[0m
   \e[1;31m^\e[0m
  \e[1;31mnot valid\e[0m         backslash in the path' env NO_COLOR=1 "$lum" parse --color=always 'é/b\c'
on_terminal() { script -qec "stty cols $1; $2" /dev/null </dev/null | tr -d '\r'; }
combining=$'e\xCC\x81'
expect 0 "漢字/$combining/漢字漢字漢字漢字漢字漢字漢
字\\漢字
  ^
  not valid         backslash in
                    the path" on_terminal 34 "'$lum' parse --color=never '漢字/$combining/漢字漢字漢字漢字漢字漢字漢字\\漢字'"
expect 0 $'\e[1mhttp://h/a\e[0m' bash -c "script -qec \"'$lum' parse 'http://h/a'\" /dev/null | head -1 | tr -d '\\r'"
coproc "$lum" parse --format '{host}'
echo http://h/ >&"${COPROC[1]}"
read -rt 20 answer <&"${COPROC[0]}"
[ "${answer-}" = h ] || { echo "FAILED: a co-process waits for its answer"; failed=1; }
exec {COPROC[1]}>&-
expect 0 '{"input":"http://[::1]/","valid":true,"host":"[::1]"}' "$lum" get --json --raw host 'http://[::1]/'
expect 0 'h	/a%20b{}' "$lum" parse --format '{host}\t{path:raw}{{}}' 'http://h/a%20b'
expect 1 $'http://h/\t\n\tbackslash in the path' "$lum" parse --format '{text}\t{reason}' http://h/ 'a\b'
while IFS='#' read -r form problem; do
    expect 2 "lum: --format: $problem (lum parse --help tells more)" "$lum" parse --format "$form" x
done <<'END'
{hst}#no field "hst"
{host} }#a lone "}"; write it twice
a\q#what does "\q" mean? Known are \t \n \r \0 \\
END
# Set, and read back from the result: a path is rooted behind a host; what a relative reference cannot hold is refused.
while read -r status result arguments; do
    # shellcheck disable=SC2086
    expect "$status" "${result/#-/}" bash -c '"$@" 2>/dev/null' - "$lum" edit $arguments
done <<'END'
0 ftp://u:p@[::1]:2/a/b?q#f --scheme ftp --user u --password p --host [::1] --port 2 --query q --fragment f a/b
0 mailto:b mailto:a --non-hierarchical b
0 http://h/%252F?a=1&a=2&b= http://h/?b --path /%2F --set a=1 --append a=2 --remove b --append b=
1 - --host h a/b
1 - --scheme h2 http://h/
1 - --password p http://h/
1 - x\y
END
expect_lines 0 '{"input":"http://h/?a","valid":true,"text":"http://h/"}' 'http://h/?a' "$lum" edit --json --query ''
expect 1 '
lum: "http://h/": the result would not read back as it was set' "$lum" edit --scheme h2 http://h/
expect 2 'lum: --append: no "=" in "k" (lum edit --help tells more)' "$lum" edit x --append k
# What is left of a text for a log: "text>what is printed", with "token" named.
while IFS='>' read -r text left; do
    expect "$([[ $left == *'\'* ]]; echo $((1 - $?)))" "$left" "$lum" parse --redact-key token --format '{input}' "$text"
done <<'END'
http://u:s@h:80/x@y?a=b:c@d>http://u@h:80/x@y?a=b:c@d
http://u:a@b:c@h/>http://u@h/
http://u:12/s@h/>http://u:12/s@h/
http://u:s/t@h/x>http://u@h/x
http://u:s?t#v@h/>http://u@h/
http://[::1]:8/a@b>http://[::1]:8/a@b
http://::1/a@b>http://::1/a@b
http:u:s@h>http:u@h
mailto:a@b>mailto:a@b
http://h/?next=http://u:s@g/&ToKen=s=t&x=1#token=>http://h/?next=http://u@g/&ToKen=&x=1#token=
a?t%6Fken=s?t;u#v#f>a?t%6Fken=#f
a;token=s&b#token=s>a;token=&b#token=
c1:u:s@h\>c1@h\
http://u:s/@h/\>http://u@h/\
END
expect 0 'http://u@h/?k=' "$lum" edit --redact-key k --user u --password s --set k=s http://h/
expect_lines 0 '{"input":"http://u@h/","valid":true,"text":"http://u@h/"}' 'http://u:s@h/' "$lum" edit --redact --json
expect 0 'C:\a b' "$lum" path --to win 'file:///C|/a%20b'
expect_lines 1 '
/Volumes/Disk/x' 'http://h/\nfile:///Disk/x' "$lum" path --to unix
expect 0 '{"input":"a:b","valid":true,"text":"file:///a/b"}' "$lum" path --json --from mac a:b
expect 2 'lum: --to: foo not in {win,unix,mac} (lum path --help tells more)' "$lum" path --to foo x
expect 2 'lum: --set: no "=" in "k" (lum query --help tells more)' "$lum" query x --set k

convert() { printf "$3" | "$lum" convert --from "$1" --to "$2" | od -An -tx1 | tr -d ' \n'; return "${PIPESTATUS[1]}"; }
expect 0 61c3a9e282ac convert utf-16be utf-8 '\0a\0\351\040\254'
expect 0 1b2442253d1b284278 convert shift_jis iso-2022-jp '\203\\x'
how='(--on-error says how to go on)'
expect 1 "lum: standard input, line 2, byte 3: unmappable, not in latin1 $how
0ae9" convert utf-8 latin1 '\n\303\251\342\202\254z'
expect 1 "lum: standard input, line 1, byte 1: malformed, not utf-8 $how
0061" convert utf-8 utf-16be 'a\377'
expect 1 "lum: standard input, line 1, byte 1: incomplete, utf-8 ends within a character $how
61" convert utf-8 latin1 'a\342\202'
lossy() { printf "$3" | "$lum" convert --from "$1" --to utf-8 --on-error "$2"; }
while IFS='|' read -r from what bytes expected; do expect 0 "$expected" lossy "$from" "$what" "$bytes"; done <<'END'
utf-8|skip|a\377b\342\202|ab
auto-bom|hex|\376\377\0a\330\0|a\xD8\x00
auto-bom|hex|\377\376a\0b|a\x62
auto-bom|hex|\377\376\0\0a\0\0\0b|a\x62
auto-bom|hex|\357\273|\xEF\xBB
auto-bom|stop||
END
expect 1 "lum: standard input, line 1, byte 4: malformed, not utf-8 $how
61" convert auto-bom utf-8 '\357\273\277a\377'
expect 2 'lum: --to: no encoding "x\x1b", see lum encodings (lum convert --help tells more)' \
    "$lum" convert --from utf-8 --to $'x\x1b'
expect 2 'lum: --from: no converter for "x-mac-hebrew", see lum encodings (lum convert --help tells more)' \
    "$lum" convert --from x-mac-hebrew --to utf-8
expect 2 'lum: The following argument was not expected: --bogus (lum convert --help tells more)' "$lum" convert --bogus
expect 2 'lum: cannot open "no/such": No such file or directory' "$lum" convert --from utf-8 --to utf-16 no/such
expect 2 'lum: cannot open "": No such file or directory' "$lum" convert --from utf-8 --to utf-16 ''
expect 2 'lum: cannot read "/": Is a directory' "$lum" convert --from utf-8 --to utf-16 /
expect_lines 0 é '\351' "$lum" convert --from latin1 --to utf-8 -
expect 0 '0x00000201  iso-8859-1 latin1' bash -c "'$lum' encodings | sed -nE '/iso-8859-1 /s/  +/ /g;s/^(0x00000201) (iso-8859-1).* (latin1) .*/\1  \2 \3/p'"
expect 0 '1' bash -c "'$lum' encodings --json | grep -c '{\"name\":\"utf-8\",\"number\":134217984,\"aliases\":.*,\"convertible\":true}'"
expect 0 'http://h/é%E9
  valid             absolute, hierarchical
  scheme            http
  host              h
  path              /éé
  default port      80
  text              http://h/éé' "$lum" parse --encoding latin1 $'http://h/\xE9%E9'
expect 1 '
  not valid         neither host nor path' "$lum" parse --encoding latin1 ''
expect 1 'http://h/é
         ^
  not valid         byte 9: malformed, not us-ascii' "$lum" parse --encoding us-ascii http://h/é
incomplete='incomplete, shift_jis ends within a character'
while IFS='|' read -r encoding text component problem; do
    expect 1 '{"input":"'"$text"'","valid":false,"relative":false,"hierarchical":false,'"$unknown"',"text":"unknown:","reason":"'"$component with escapes that are $problem"'"}' \
        "$lum" parse --json --encoding "$encoding" "$text"
done <<END
us-ascii|ab%E9|path|malformed, not us-ascii
shift_jis|xy:%82|non-hierarchical|$incomplete
shift_jis|http://%82@h/|user|$incomplete
END
expect 2 'lum: --encoding: no encoding "x", see lum encodings (lum parse --help tells more)' "$lum" parse --encoding x a

expect 0 '2008-02-29T14:30:45.0500000+02:00
  text              2008-02-29T12:30:45Z
  ticks             128487618450500000
  year              2008
  month             2
  day               29
  hour              12
  minute            30
  second            45
  fraction          500000' "$lum" time 2008-02-29T14:30:45.0500000+02:00
expect 0 '{"input":"-1","valid":true,"text":"1601-01-01T00:00:00Z","ticks":-1,"year":1601,"month":1,"day":1,"hour":0,"minute":0,"second":0,"fraction":-1}' \
    "$lum" time --json --ticks -- -1
while IFS='#' read -r reason times; do
    for time in $times; do
        expect 1 '{"input":"'"$time"'","valid":false,"reason":"'"$reason"'"}' "$lum" time --json "$time"
    done
done <<END
not a date that exists#2007-02-29 2008-13-01 2008-01-00
not a time of day: 00:00:00 to 23:59:59#2008-02-29T24:00 2008-02-29T23:59:60Z
not an offset: 00:00 to 23:59#2008-02-29T12:30+24:00
not a time: expected YYYY-MM-DD[Thh:mm[:ss[.f]][Z|+hh:mm|-hh:mm]]#2008-2-9 02008-02-09 9999999999-01-01 2008-02-29T \
    2008-02-29T12:30:45. 2008-02-29T12:30Z0 2008-02-29Z 2008-02-29T12:30+2
before 1601-01-01T00:00:00Z#1601-01-01T00:00+00:01 0000-02-29
after 30828-09-14T02:48:05.4775807Z#30828-09-14T02:48:05.47758075 40000-02-29
END
expect 1 '9223372036854775808
  not valid         not a count: expected a number of 64 bits' "$lum" time --ticks 9223372036854775808
# However the counts are given, and the text of the last one read back.
for arguments in '--ticks -1 9223372036854775807' '--ticks=-1 9223372036854775807' \
    '--ticks --ticks=-1 --ticks=9223372036854775807' '1601-01-01 30828-09-14T02:48:05.4775807Z'; do
    # shellcheck disable=SC2086
    expect 0 '"text":"1601-01-01T00:00:00Z"
"text":"30828-09-14T02:48:05Z"' bash -c "'$lum' time --json $arguments | grep -o '\"text\":\"[^\"]*\"'"
done
"$lum" time --json | grep -q '"valid":true,"text":"2.*Z","ticks":1[0-9]*0000000,' || { echo "FAILED: lum time"; failed=1; }

# Numbers by index and table; a text written, and read back with the list.
samples=$(dirname "$(readlink -f "$0")")/../examples
file=$(mktemp)
trap 'rm -f "$file"' EXIT
cp "$samples/strings.rsrc" "$file"
expect 0 'Save as…
Hello, world
Bereit
7' env LC_ALL=de_AT.UTF-8 "$lum" strings "$file" 1003 128 2001 7 --bundle "$samples/bundle"
expect 0 '{"number":1003,"found":true,"text":"Save as…"}' "$lum" strings --json "$file" 1003
expect 0 '' "$lum" strings "$file" --set STR Füll 'Größe'
expect 0 '' "$lum" strings "$file" --set utxt w $'\e€'
expect 0 '' "$lum" strings "$file" --encoding latin1 --set TEXT ABOUT é
expect 0 '{"type":"STR ","id":128,"name":"Greeting","size":13,"texts":["Hello, world"]}
{"type":"STR ","id":129,"name":"Füll","size":8,"texts":["Größe"]}' bash -c "'$lum' strings --json '$file' | head -2"
expect 0 'TEXT    128  About
             \xe9
utxt    128  w
             \x1b€' bash -c "'$lum' strings '$file' | tail -4"
expect 0 'lum: '"$samples"'/bundle/Resources: no table "T"
Ready' "$lum" strings "$file" 2001 --table T --bundle "$samples/bundle"
expect 2 'lum: more than a text: "STR#"' "$lum" strings "$file" --set STR# a b
expect 2 'lum: a type has four characters, not "TEXTS"' "$lum" strings "$file" --set TEXTS a b
expect 2 'lum: a text of this type has at most 255 bytes, all of them in the encoding' \
    "$lum" strings "$file" --set STR a "$(printf %0256d 0)"
for row in 'TEXT|n|日本|the encoding has no room for all of the text; type "utxt" has' $'TEXT|n|a\xff|not UTF-8: "a\\xff"' \
    "TEXT|$(printf %0255d 0)|a|a name has at most 254 bytes in the encoding: \"$(printf %0255d 0)\""; do
    IFS='|' read -r type name text problem <<<"$row"
    expect 2 "lum: $problem" "$lum" strings "$file" --encoding utf-8 --set "$type" "$name" "$text"
done
expect 2 "lum: \"$file\" is the output as well; --in-place replaces a file" \
    bash -c "'$lum' convert --from utf-8 --to utf-8 '$file' >>'$file'"
expect 0 'http://h/' "$lum" edit --fragment= 'http://h/#x'
# Several at a time lose nothing of each other, also where the first makes the file and the folder is not named.
(cd "$(dirname "$file")" && for i in 1 2 3 4 5 6; do "$lum" strings "$(basename "$file")-new" --set TEXT "$i" x & done; wait)
expect 0 6 bash -c "'$lum' strings --json '$file-new' | wc -l"
expect 2 'lum: 1x: no file that can be opened' "$lum" strings 1x
expect 2 'lum: no string number: "1x"' "$lum" strings "$file" 1 1x
expect 2 'lum: no file before the numbers; write ./ before a file'"'"'s name that is a number' "$lum" strings 1
expect 0 '{"number":1003,"found":true,"text":"Save as…"}' "$lum" strings --json "$samples/strings.rsrc" "$file" 1003
expect 0 2 bash -c "'$lum' strings '$samples/strings.rsrc' '$file' | grep -c 'rsrc\$\|^$file\$'"
expect 2 'lum: --encoding: no encoding "x", see lum encodings (lum strings --help tells more)' "$lum" strings "$file" --encoding x
expect 2 "lum: $0: data or map lie outside the file" "$lum" strings "$0"
expect 2 "lum: /none/x: no file that can be opened" "$lum" strings /none/x --set TEXT a b
expect 2 "lum: /none: no folder" "$lum" strings "$file" 1003 --bundle /none

expect 2 'lum: A subcommand is required (lum --help tells more)' "$lum"
expect 2 'lum: no subcommand "bogus" (lum --help tells more)' "$lum" bogus
expect 2 'lum: no subcommand "prase"; did you mean "parse"? (lum --help tells more)' "$lum" prase
expect 2 'lum: no subcommand "\x1b[2J" (lum --help tells more)' "$lum" $'\x1b[2J'
expect 2 'lum: --to: [x] not in {win,unix,mac} (lum path --help tells more)' "$lum" path --to '[x]' a
expect 2 'lum: COMPONENT is required (lum get --help tells more)' "$lum" get
expect 2 'lum: cannot read standard input: Is a directory' bash -c "'$lum' parse < /"
expect 2 'lum: cannot write standard output: No space left on device' bash -c "'$lum' parse x > /dev/full"
for arguments in --version --help 'parse --help'; do
    # shellcheck disable=SC2086
    "$lum" $arguments | grep -qi lum || { echo "FAILED: lum $arguments"; failed=1; }
done
exit $failed
