#!/bin/sh
# jpeg-mingw.sh DIR: builds libjpeg for both Windows builds into DIR, from the source of Debian's
# package, because Debian has none for mingw. Needs no root and changes no setting of the machine;
# quick when the libraries are there. cmake/mingw.cmake finds them in DIR/<triple> for DIR = deps.
set -eu
here=$(cd "$(dirname "$0")" && pwd); mkdir -p "$1"; dir=$(cd "$1" && pwd)
triples='i686-w64-mingw32 x86_64-w64-mingw32'

complete() {
  for triple in $triples; do
    [ -e "$dir/$triple/lib/libjpeg.a" ] || return 1
  done
}
complete && exit 0

work=$(mktemp -d); trap 'rm -rf "$work"' EXIT
log=$work/log
quietly() {
  "$@" >> "$log" 2>&1 || { cat "$log" >&2; exit 1; }
}

# apt with the machine's own sources as deb-src, and lists and a cache of its own.
mkdir -p "$work/parts" "$work/lists/partial" "$work/cache/archives/partial"
for file in /etc/apt/sources.list /etc/apt/sources.list.d/*; do
  case $file in
    *.sources) sed 's/^Types:.*/Types: deb-src/' "$file" > "$work/parts/${file##*/}" ;;
    *.list) [ ! -e "$file" ] ||
      sed -n 's/^[[:space:]]*deb[[:space:]]/deb-src /p' "$file" > "$work/parts/${file##*/}" ;;
  esac
done
source_apt() {
  apt-get -q -o Dir::Etc::sourcelist=/dev/null -o Dir::Etc::sourceparts="$work/parts" \
    -o Dir::State::lists="$work/lists" -o Dir::Cache="$work/cache" -o APT::Sandbox::User= "$@"
}

# build TRIPLE: -fexceptions gives the library's own frames unwind tables whatever the compiler's
# default is: our error manager throws through them.
build() {
  case $1 in i686*) sse='-msse2 -mfpmath=sse' ;; *) sse= ;; esac
  cmake -G Ninja -S "$source" -B "$work/$1" -Wno-dev -DCMAKE_BUILD_TYPE=Release \
    -DCMAKE_TOOLCHAIN_FILE="$here/../cmake/mingw.cmake" -DMINGW_TRIPLE="$1" \
    -DCMAKE_C_FLAGS="-fexceptions -ffile-prefix-map=$work/= $sse" \
    -DCMAKE_INSTALL_PREFIX="$work/unused" \
    -DENABLE_SHARED=OFF -DWITH_TURBOJPEG=OFF -DWITH_SIMD=OFF
  cmake --build "$work/$1" --target jpeg-static
}

# The library last: it is what tells that all of it is there.
install_into() {
  mkdir -p "$dir/$1/include" "$dir/$1/lib"
  cp "$source/jpeglib.h" "$source/jmorecfg.h" "$source/jerror.h" "$work/$1/jconfig.h" \
    "$dir/$1/include/"
  cp "$work/$1/libjpeg.a" "$dir/$1/lib/libjpeg.part"
  mv "$dir/$1/lib/libjpeg.part" "$dir/$1/lib/libjpeg.a"
}

echo 'Building libjpeg for Windows' >&2
source_apt update >> "$log" 2>&1 || echo 'apt-get update failed in part; going on' >&2
cd "$work"
quietly source_apt source libjpeg-turbo
source=$(echo "$work"/libjpeg-turbo-*/)
for triple in $triples; do
  quietly build "$triple"
  install_into "$triple"
done
