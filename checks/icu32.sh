#!/usr/bin/env bash
# Unpacks Debian's 32-bit ICU into build/icu-i386, where the m32 preset looks for it. Nothing is
# installed, and the machine's own list of architectures stays as it is.
set -eu
cd "$(dirname "$(readlink -f "$0")")/.."
target=$PWD/build/icu-i386
[ -e "$target/complete" ] && exit
work=$target.work
rm -rf "$target" "$work"
mkdir -p "$work/lists/partial" "$work/cache/archives/partial" "$target"

apt() {
    command apt-get -qq -o APT::Architectures::=amd64 -o APT::Architectures::=i386 -o Dir::State="$work" \
        -o Dir::State::status=/var/lib/dpkg/status -o Dir::Cache="$work/cache" -o APT::Sandbox::User=root "$@"
}
cd "$work"
# A mirror in the middle of its own update gives some of the lists only; the download tells.
apt update || true
apt download libicu-dev:i386
# Its run-time library is the one that it was built with.
runtime=$(dpkg-deb -f libicu-dev_*_i386.deb Depends | grep -oE 'libicu[0-9]+' | head -1)
apt download "$runtime:i386"
for package in *.deb; do
    dpkg-deb -x "$package" "$target"
done
rm -rf "$work"
touch "$target/complete"
