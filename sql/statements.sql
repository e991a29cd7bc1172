-- What both databases answer in the same way: a line of output for each statement, in statements.txt.
SELECT lum_scheme('HTTP://Host:8080/a%20b?q#f'), lum_host('HTTP://Host:8080/a%20b?q#f'), lum_port('http://h:8080');
SELECT lum_path('http://h/a%20b?q#f'), lum_query('http://h/?a%20b#f'), lum_fragment('http://h/?q#f%21');
SELECT lum_query_value('http://h/?a=1&b=x+y%26&a=3', 'a'), lum_query_value('http://h/?b=x+y%26', 'b');
SELECT coalesce(lum_query_value('http://h/?a=1', 'c'), 'none'), lum_query_value('http://h/?a', 'a') || '.';
SELECT lum_resolve('http://h/a/b/c', '../d?x'), coalesce(lum_resolve('http://h/', 'c:\x'), 'none');
SELECT lum_relative('http://h/a/b/c?q', 'http://h/a/d'), coalesce(lum_relative('http://h/a', 'ftp://h/a'), 'none');
SELECT lum_relation('http://h/a/b', 'http://h:80/a'), lum_relation('http://h/a', 'http://h/A');
SELECT lum_parent('http://h/a/b/c', 'http://h/a/d'), coalesce(lum_parent('a', 'http://h/'), 'none');
SELECT coalesce(lum_host('c:\x'), 'none'), coalesce(lum_host('mailto:a@b'), 'none') || '.';
SELECT lum_explain('http://h/a\b'), coalesce(lum_explain('a/b'), 'none');
SELECT coalesce(lum_host(NULL), 'none'), coalesce(lum_resolve('http://h/', NULL), 'none');
SELECT count(*) FROM lum_query_pairs('http://h/?a=1&b&a=x+y%26');
SELECT key, value FROM lum_query_pairs('http://h/?a=1&b&a=x+y%26') WHERE value <> '';
SELECT count(*) FROM lum_query_pairs(NULL);
SELECT count(*) FROM lum_query_pairs('http:\\h/?a=1');
