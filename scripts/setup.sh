#!/bin/sh
set -eu
packages='build-essential cmake ninja-build g++-mingw-w64-i686 g++-mingw-w64-x86-64
  googletest libbenchmark-dev libjpeg62-turbo-dev libcli11-dev libstb-dev
  wine wine32:i386 wine64 fonts-wine xvfb xdotool imagemagick clang-format-14
  nlohmann-json3-dev libmpfr-dev zip'
todo=$(for p in $packages; do
  dpkg-query -W -f='${Status}\n' "$p" 2>/dev/null | grep -q '^install ok installed$' || echo "$p"; done)
[ -n "$todo" ] || exit 0
export DEBIAN_FRONTEND=noninteractive
dpkg --print-foreign-architectures | grep -qx i386 || dpkg --add-architecture i386
apt-get update || echo 'apt-get update failed in part; going on' >&2
. /etc/os-release; pin=$(mktemp); chmod 644 "$pin"; trap 'rm -f "$pin"' EXIT
printf 'Package: *\nPin: release n=%s\nPin-Priority: 1001\n' "$VERSION_CODENAME" > "$pin"
install='install -y --no-install-recommends'
apt-get $install $todo || apt-get $install -t "$VERSION_CODENAME" $todo ||
  apt-get -o Dir::Etc::Preferences="$pin" $install --allow-downgrades $todo
