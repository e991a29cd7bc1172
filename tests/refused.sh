#!/usr/bin/env bash
# Code that must not compile, and the reason that the compiler must give. Beside each stands the code put right; all
# of these must compile.
# Usage: refused.sh SOURCE-DIR COMPILER
set -u
compiler="$2 -std=c++20 -fsyntax-only -Wall -Wextra -Werror -I$1/include -x c++ -"
export LC_ALL=C
failed=0 all=
# compiles CODE: the code is the body of a function.
compiles() {
    printf '#include <Lum/%s.h>\n' CString PathView QueryView TimeStamp URILiteral | cat - <(echo "using namespace Lum::Literals; void Use() { $1 }") |
        $compiler 2>&1
}
while IFS='|' read -r right wrong reason; do
    [[ $reason != clang:* || $compiler == *clang* ]] || continue
    all+="{ $right }"
    output=$(compiles "$wrong") && { echo "FAILED: this should not compile: $wrong"; failed=1; }
    [[ $output == *"${reason#clang:}"* ]] || { printf 'FAILED: not for "%s":\n%s\n' "$reason" "$output"; failed=1; }
done <<'END'
(void)"http://h/a/b"_uri;|(void)"http://h/a\\b"_uri;|a backslash in the path
(void)"mailto:a"_uri;|(void)"mailto:a\\b"_uri;|a backslash behind the scheme
(void)"cc:/dir"_uri;|(void)"c:/dir"_uri;|fewer than two characters in the scheme
(void)""_uri;|(void)"h2:x"_uri;|a character that is no letter in the scheme
(void)"unknown:x"_uri;|(void)"UNKNOWN://x"_uri;|the scheme is the word for no URI
const std::string q = "a"; Lum::QueryView v(q); (void)v;|Lum::QueryView v(std::string("a")); (void)v;|clang:temporary
const std::string p = "a"; Lum::PathView v(p); (void)v;|Lum::PathView v(std::string("a")); (void)v;|clang:temporary
const Lum::URI u("a?b"); Lum::QueryView v(u); (void)v;|Lum::QueryView v(Lum::URI("a?b")); (void)v;|clang:temporary
const Lum::URI u("a/b"); Lum::PathView v(u); (void)v;|Lum::PathView v(Lum::URI("a/b")); (void)v;|clang:temporary
CString a, b; b.Format(u"%s", a.GetAsUniCharStr());|CString a, b; b.Format(u"%s", a);|Format takes a CString as text.GetAsUniCharStr()
const Lum::URI u = {}; if (u == nullptr) { (void)u.IsValidURI(); }|const Lum::URI u = {}; if (u) { return; }|to 'bool'
const std::string t = Lum::URI("a").ToString(false); (void)t;|const std::string t = Lum::URI("a"); (void)t;|conversion from 'Lum::URI' to
const std::string t = CString(u"a").ToUTF8(); (void)t;|const std::string t = CString(u"a"); (void)t;|conversion from 'CString' to
const std::string t; CString s(CString::FromUTF8(t)); (void)s;|const std::string t; CString s(t); (void)s;|no matching
CString s(u"a"); (void)s;|CString s(L"a"); (void)s;|no matching
Lum::TimeStamp t(2008, 2, 29, 0, 0, 0, 0); (void)t;|Lum::TimeStamp t(2008, 2, 29); (void)t;|no matching
Lum::URI u("a"); (void)u.IsValidURI();|Lum::URI u("a"); u.IsValidURI();|ignoring return value
Lum::QueryEdit e("a"); auto v = e.View(); (void)v;|auto v = Lum::QueryEdit("a").View(); (void)v;|clang:temporary
END
output=$(compiles "$all") || { printf 'FAILED: this should compile:\n%s\n' "$output"; failed=1; }
exit $failed
