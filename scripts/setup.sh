#!/bin/sh
# Installs what builds and tests need, by package name. Quick when nothing is missing.
set -eu
packages='build-essential cmake ninja-build g++-mingw-w64-i686 g++-mingw-w64-x86-64
  googletest libbenchmark-dev libcli11-dev libstb-dev nlohmann-json3-dev libmpfr-dev
  zlib1g-dev libz-mingw-w64-dev libpng-dev libjpeg62-turbo-dev libjpeg-turbo-progs
  wine wine32:i386 wine64 fonts-wine xvfb xauth x11-utils xdotool imagemagick
  clang-format-14 clang-tidy-14 clang-14 libclang-rt-14-dev zip unzip nsis'
todo=$(for p in $packages; do
  dpkg-query -W -f='${Status}\n' "$p" 2>/dev/null | grep -q '^install ok installed$' || echo "$p"; done)
[ -n "$todo" ] || exit 0
echo "Installing:" $todo >&2
if [ "$(id -u)" -ne 0 ]; then
  command -v sudo > /dev/null || { echo "These packages are missing and need root to install:" $todo >&2; exit 1; }
  exec sudo sh "$0"
fi
export DEBIAN_FRONTEND=noninteractive
dpkg --print-foreign-architectures | grep -qx i386 || dpkg --add-architecture i386
apt-get update || echo 'apt-get update failed in part; going on' >&2
. /etc/os-release; pin=$(mktemp); chmod 644 "$pin"; trap 'rm -f "$pin"' EXIT
printf 'Package: *\nPin: release n=%s\nPin-Priority: 1001\n' "$VERSION_CODENAME" > "$pin"
install='install -y --no-install-recommends'
# A library has one version on both architectures. The first form is the ordinary one; the others
# serve machines on which the security suite knows one architecture only.
# shellcheck disable=SC2086
apt-get $install $todo || apt-get $install -t "$VERSION_CODENAME" $todo ||
  apt-get -o Dir::Etc::Preferences="$pin" $install --allow-downgrades $todo
