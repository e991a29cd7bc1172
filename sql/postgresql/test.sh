#!/usr/bin/env bash
# Runs the extension in a PostgreSQL server of its own, in a temporary folder and without privileges, and compares
# what it answers. The installed server is not touched: a copy of its programs finds the extension beside itself.
# Usage: test.sh BUILD-DIR [FILE-OF-URLS [ROWS]]: the file is read again and again, 20,000 rows without another number
set -u -o pipefail
build=$(readlink -f "$1") urls=${2:-} rows=${3:-20000}
here=$(dirname "$(readlink -f "$0")")
module=$build/sql/postgresql/lum.so
[ -e "$module" ] || { echo "not built: the headers of PostgreSQL's server are missing"; exit 1; }
work=$(mktemp -d)
user=() && [ "$(id -u)" -ne 0 ] || user=(runuser -u nobody --)
failed=0

# The server looks for its files from its own place, in the same way as in the folders it was built for.
bin=$work$(pg_config --bindir) modules=$work$(pg_config --pkglibdir) shared=$work$(pg_config --sharedir)
cleanup() { "${user[@]}" "$bin/pg_ctl" -D "$work/data" -m immediate stop >/dev/null 2>&1; rm -rf "$work"; }
trap cleanup EXIT
mkdir -p "$bin" "$modules" "$shared" "$work/data"
cp "$(pg_config --bindir)"/{postgres,initdb,pg_ctl,psql} "$bin"
cp -rs "$(pg_config --pkglibdir)/." "$modules"
cp -rs "$(pg_config --sharedir)/." "$shared"
cp "$module" "$modules/lum.so"
cp "$build"/liblum.so.1 "$modules"
cp "$here"/lum.control "$here"/lum--*.sql "$shared/extension"
chmod -R a+rX "$work"
[ ${#user[@]} -eq 0 ] || chown nobody "$work" "$work/data"

export LC_ALL=C.UTF-8 LD_LIBRARY_PATH=$modules PGHOST=$work PGDATABASE=postgres PGUSER=lum
cd "$work" || exit 1
"${user[@]}" "$bin/initdb" -D "$work/data" -U lum -A trust -N -E UTF8 >"$work/log" 2>&1 &&
    "${user[@]}" "$bin/pg_ctl" -w -D "$work/data" -l "$work/server.log" -o "-c listen_addresses= -k $work -c fsync=off" start >>"$work/log" 2>&1 ||
    { cat "$work/log" "$work/server.log"; exit 1; }
sql() { "$bin/psql" -XqAt -v ON_ERROR_STOP=1 "$@" 2>&1; }
expect() { # EXPECTED STATEMENT
    local actual
    actual=$(sql -c "$2")
    [ "$actual" = "$1" ] || { printf 'FAILED: %s\n  expected: %s\n  got:      %s\n' "$2" "$1" "$actual"; failed=1; }
}

expect '' 'CREATE EXTENSION lum'
[ $failed = 0 ] || exit 1
diff "$here/../statements.txt" <(sql <"$here/../statements.sql") || failed=1
expect 't|f' "SELECT lum_valid('http://h/'), lum_valid('c:\\x')"
expect '82a0|e38182' "SELECT encode(lum_convert('あ', 'utf-8', 'shift_jis'), 'hex'), encode(lum_convert('\\x82A0', 'shift_jis', 'utf-8'), 'hex')"
expect 't' "SELECT lum_convert('€'::text::bytea, 'utf-8', 'iso-8859-1') IS NULL"
expect 'ERROR:  no such encoding' "SELECT lum_convert('a', 'utf-8', 'no such')"
# What is no text of the database.
expect 't|t' "SELECT lum_path('http://h/a%00') IS NULL, lum_path('http://h/%FF') IS NULL"
expect 'a|t' "SELECT key, value IS NULL FROM lum_query_pairs('?a=%FF')"
# Longer than every buffer that is there at first.
expect '90001|60000' "WITH t(s) AS (SELECT repeat('x', 30000)) SELECT length(lum_path('http://h/' || s || '%20' || s || s)) - 1, length(value)
    FROM t, lum_query_pairs('?' || s || '=' || s || s)"
expect '15|15' "SELECT count(*), sum((p.provolatile = 'i' AND p.proisstrict AND p.proparallel = 's')::int) FROM pg_proc p WHERE proname LIKE 'lum\\_%'"

# Many rows, by several workers and by one, and an index.
[ -n "$urls" ] && cp "$urls" "$work/urls" || printf 'http://h%d.example/a/%d?k=%d&x=y\n' $(seq 3000) >"$work/urls"
chmod a+r "$work/urls"
expect '' "CREATE TABLE t(url text); CREATE TABLE u(id bigint, url text)"
expect '' "\\copy t FROM '$work/urls' WITH (FORMAT csv, DELIMITER E'\\x01', QUOTE E'\\x02')"
expect '' "INSERT INTO u SELECT row_number() OVER (), url FROM (SELECT url FROM t, generate_series(1, $rows / (SELECT count(*) FROM t) + 1) LIMIT $rows) s"
expect '' 'ANALYZE u'
question="SELECT count(*), count(lum_host(url)), sum(length(lum_path(url))), sum(lum_relation(url, lum_parent(url, url))), max(lum_query_value(url, 'k')) FROM u"
parallel='SET max_parallel_workers_per_gather = 2; SET parallel_setup_cost = 0; SET parallel_tuple_cost = 0; SET min_parallel_table_scan_size = 0;'
sql -c "$parallel EXPLAIN $question" | grep -q 'Workers Planned: 2' || { echo "FAILED: no workers are planned"; failed=1; }
several=$(sql -c "$parallel EXPLAIN (ANALYZE, COSTS OFF, TIMING OFF, SUMMARY ON) $question" | grep -E 'Launched|Execution')
answer=$(sql -c "$parallel $question")
start=$(date +%s%N)
expect "$answer" "SET max_parallel_workers_per_gather = 0; $question"
one=$((($(date +%s%N) - start) / 1000000))
expect '' 'CREATE INDEX i ON u(lum_host(url))'
sql -c "SET enable_seqscan = off; EXPLAIN SELECT count(*) FROM u WHERE lum_host(url) = 'h7.example'" | grep -q 'Index' || { echo "FAILED: the index is not used"; failed=1; }
[ -z "$urls" ] || printf '%s\nby several: %s\nby one: %d ms\n' "$answer" "$(echo "$several" | tr -s ' \n' ' ')" $one
expect '' 'SET client_min_messages = warning; DROP EXTENSION lum CASCADE'
exit $failed
