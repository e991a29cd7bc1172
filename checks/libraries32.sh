#!/usr/bin/env bash
# Unpacks Debian's 32-bit ICU and libplist into build/i386, where the m32 preset looks for them. Nothing is
# installed, and the machine's own list of architectures stays as it is.
set -eu
cd "$(dirname "$(readlink -f "$0")")/.."
target=$PWD/build/i386
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
apt download libicu-dev:i386 libplist-dev:i386
# Their run-time libraries are those that they were built with.
for package in *-dev_*_i386.deb; do
    apt download "$(dpkg-deb -f "$package" Depends | grep -oE 'lib(icu|plist)[0-9]+' | head -1):i386"
done
for package in *.deb; do
    dpkg-deb -x "$package" "$target"
done
rm -rf "$work"
touch "$target/complete"
