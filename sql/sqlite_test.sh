#!/usr/bin/env bash
# Loads the extension into the real sqlite3 and compares what it answers.
# Usage: sqlite_test.sh MODULE TABLE-OF-URIS
set -u
module=$1 uris=$2
here=$(dirname "$(readlink -f "$0")")
failed=0
sql() { sqlite3 -batch -bail -cmd ".load $module" "${@}" 2>&1 | sed '/extras ignored/d'; }
expect() { # EXPECTED STATEMENT...
    local actual
    actual=$(sql :memory: "${@:2}")
    [ "$actual" = "$1" ] || { printf 'FAILED: %s\n  expected: %s\n  got:      %s\n' "${*:2}" "$1" "$actual"; failed=1; }
}

diff "$here/statements.txt" <(sql :memory: <"$here/statements.sql") || failed=1
expect '1|0|0' "SELECT lum_valid('http://h/'), lum_valid('c:\x'), lum_valid(x'00ff3a')"
expect '82A0|E38182' "SELECT hex(lum_convert('あ', 'utf-8', 'shift_jis')), hex(lum_convert(x'82A0', 'shift_jis', 'utf-8'))"
expect 'null|blob' "SELECT typeof(lum_convert('€', 'utf-8', 'iso-8859-1')), typeof(lum_convert('', 'utf-8', 'utf-16'))"
sql :memory: "SELECT lum_convert('a', 'utf-8', 'no such')" | grep -q 'no such encoding' ||
    { echo "FAILED: an unknown encoding is not an error"; failed=1; }
# Longer than every buffer that is there at first.
expect '90001|60000' "WITH t(s) AS (SELECT printf('%.*c', 30000, 'x')) SELECT
    length(lum_path('http://h/' || s || '%20' || s || s)) - 1, length(value) FROM t, lum_query_pairs('?' || s || '=' || s || s)"
# In a join, whichever table is written first; the hidden column has the argument.
expect 'a|1|HTTP://H/?a=1
b|2|?b=2' "WITH t(u) AS (VALUES ('HTTP://H/?a=1'), ('?b=2')) SELECT key, value, lum_url FROM lum_query_pairs(t.u), t"
expect '' "SELECT * FROM lum_query_pairs"

# The tests' table of URIs, and whether an index is used.
expect '0|0|1' '.mode ascii' ".separator \"\\t\" \"\\n\"" 'CREATE TABLE u(text, reason, record, printed)' ".import $uris u" '.mode list' \
    '.separator |' "SELECT sum((reason = 'valid') <> lum_valid(text)), sum(reason = 'valid' AND lum_resolve(text, '') <> printed), count(*) > 50
    FROM u WHERE reason <> 'reason'"
expect 'QUERY PLAN
`--SEARCH u USING INDEX i (<expr>=?)
1' 'CREATE TABLE u(text)' "INSERT INTO u VALUES ('http://Host/a'), ('http://other/'), ('c:\x')" 'CREATE INDEX i ON u(lum_host(text))' \
    '.eqp on' "SELECT count(*) FROM u WHERE lum_host(text) = 'host'"
# Blobs of any bytes: the same answer twice, and no crash.
expect '0' "WITH RECURSIVE n(i, b) AS (SELECT 1, x'00' UNION ALL SELECT i + 1, randomblob(i % 40) || substr('http://u:p@h:1/a/../b?k=v&k#f\', i % 31) FROM n WHERE i < 20000)
    SELECT count(*) FROM n WHERE lum_host(b) IS NOT lum_host(b) OR lum_path(b) IS NOT lum_path(b) OR lum_explain(b) IS NULL <> lum_valid(b)
    OR lum_resolve(b, b) IS NOT lum_resolve(b, b) OR lum_relation(b, b) > 3 OR lum_parent(b, b) = 0 OR lum_relative(b, b) = 0
    OR lum_query_value(b, 'k') = 0 OR lum_convert(b, 'utf-8', 'shift_jis') = 0 OR (SELECT sum(length(key)) FROM lum_query_pairs(b)) < 0"
exit $failed
