#!/usr/bin/env bash
# shellcheck disable=SC2046 # lists of words
# Builds the Debian packages twice, in two folders: both must be the same byte for byte, and lintian must have nothing to
# say. Then a stranger's machine: a fresh Debian 12 below build/worlds gets them, compiles README's first program, runs
# the tool and both databases' modules, gets a later version, and loses them; no file may be left.
# Usage: packages.sh, from the root of the tree; the second half as root only
set -u -o pipefail
export LC_ALL=C
folder=$PWD/build/packages root=$PWD/build/worlds/root-packages version=$(sed -nE 's/^project\(Lum VERSION ([0-9.]+) .*/\1/p' CMakeLists.txt)
failed=0
fail() { echo "FAILED: $*"; failed=1; }
[ "$(dpkg-parsechangelog -S Version)" = "$version" ] || fail "debian/changelog is for another version than $version"

packaging/debs.sh "$folder/one" && packaging/debs.sh "$folder/another/deeper" || exit 1
for package in "$folder"/one/*.deb; do
    cmp "$package" "$folder/another/deeper/$(basename "$package")" || failed=1
done
lintian --allow-root --fail-on error,warning --tag-display-limit 0 "$folder"/one/*.changes || fail "lintian"
packages=$(cd "$folder/one" && find . -name '*.deb' ! -name '*-dbgsym_*')

if [ "$(id -u)" -ne 0 ]; then
    echo "Not installed anywhere: only root can enter another root."
    exit $failed
fi
if [ ! -e "$root/complete" ]; then
    rm -rf "$root"
    mirror=$(apt-get indextargets --format '$(REPO_URI)' 'Created-By: Packages' 'Origin: Debian' 'Label: Debian' 'Component: main' | head -1)
    # What they depend on, so that nothing has to be fetched from inside, a compiler, and what a stranger has at hand.
    mmdebstrap --quiet --variant=apt --include=g++,pkg-config,sqlite3,postgresql-15,libicu72,libplist3,man-db,bash-completion \
        bookworm "$root" "${mirror:-http://deb.debian.org/debian}" && touch "$root/complete" || exit 1
fi
work=$(mktemp -d "$folder/root.XXXX")
trap 'rm -rf "$work"' EXIT
cp -a --reflink=auto "$root/." "$work"
inside() { unshare -n chroot "$work" env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin DEBIAN_FRONTEND=noninteractive LC_ALL=C.UTF-8 HOME=/root "$@"; }
# Everything but what dpkg and the loader write down for themselves.
files() { (cd "$work" && find . \( -path ./proc -o -path ./sys -o -path ./dev -o -path ./tmp -o -path ./var/log \) -prune -o -printf '%p %y %l\n') |
    grep -vE '^\./(var/lib/dpkg/|var/cache/(ldconfig|man|debconf)/|etc/ld\.so\.cache)' | sort; }
quietly() { "$@" >"$work/tmp/log" 2>&1 || { cat "$work/tmp/log"; fail "$*"; return 1; }; }

cp "$folder"/one/*.deb "$work/tmp"
# The next version, as far as a package manager sees.
for package in $packages; do
    dpkg-deb -R "$folder/one/$package" "$work/tmp/next" && sed -i "s/${version//./\\.}/$version+next/" "$work/tmp/next/DEBIAN/control" &&
        dpkg-deb --root-owner-group -b "$work/tmp/next" "$work/tmp/next-$(basename "$package")" >/dev/null && rm -r "$work/tmp/next" || exit 1
done
awk '/^```cpp/ { inside = 1; next } /^```/ && inside { exit } inside' README.md >"$work/tmp/first.cpp"
awk '/^```text/ { inside = 1; next } /^```/ && inside { exit } inside' README.md >"$work/tmp/expected"
mkdir "$work/tmp/data" && inside chown postgres /tmp/data &&
    quietly inside runuser -u postgres -- /usr/lib/postgresql/15/bin/initdb -N -D /tmp/data -E UTF8 || exit 1
files >"$folder/before"

# The installed packages do what they are for.
try() {
    quietly inside g++ -std=c++20 -Wall -Wextra -Werror /tmp/first.cpp -o /tmp/first $(inside pkg-config --cflags --libs lum) &&
        inside /tmp/first | diff "$work/tmp/expected" - || fail "README's first program, $1"
    [ "$(inside lum get host HTTP://Host/a)" = host ] || fail "the tool, $1"
    [ "$(inside sqlite3 -cmd ".load /usr/lib/$(dpkg-architecture -qDEB_HOST_MULTIARCH)/lum/lum_sqlite" :memory: "SELECT lum_host('HTTP://Host/a')")" = host ] ||
        fail "SQLite, $1"
    printf '%s\n' 'CREATE EXTENSION IF NOT EXISTS lum' "SELECT lum_host('HTTP://Host/a')" |
        inside runuser -u postgres -- /usr/lib/postgresql/15/bin/postgres --single -D /tmp/data postgres 2>&1 | grep -q 'lum_host = "host"' || fail "PostgreSQL, $1"
}
quietly inside dpkg -i $(printf ' /tmp/%s' $packages) && try "installed"
[ ! -e "$work/usr/share/man/man1/lum.1.gz" ] || inside man lum >/dev/null || fail "the manual page"
quietly inside dpkg -i $(cd "$work" && ls tmp/next-*.deb) && try "upgraded"
quietly inside dpkg --purge lum-sqlite postgresql-15-lum lum-tools liblum-dev liblum1
files | diff "$folder/before" - || fail "these are left behind, or missing"
exit $failed
