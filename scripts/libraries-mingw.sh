#!/bin/sh
# libraries-mingw.sh DIR: builds libjpeg and libpng for both Windows builds into DIR, from the sources
# of Debian's packages, because Debian has none for mingw. Needs no root and changes no setting of the
# machine; quick when the libraries are there. cmake/mingw.cmake finds them in DIR/<triple> for
# DIR = deps.
set -eu
here=$(cd "$(dirname "$0")" && pwd); mkdir -p "$1"; dir=$(cd "$1" && pwd)
triples='i686-w64-mingw32 x86_64-w64-mingw32'

# options TRIPLE: -fexceptions gives the libraries' own frames unwind tables whatever the compiler's
# default is: our error handlers throw through them.
options() {
  case $1 in i686*) sse='-msse2 -mfpmath=sse' ;; *) sse= ;; esac
  echo "-fexceptions -fstack-protector-strong $sse"
}

# complete LIBRARY: there, and built with these options.
complete() {
  for triple in $triples; do
    [ -e "$dir/$triple/lib/$1.a" ] || return 1
    [ "$(cat "$dir/$triple/lib/$1.options" 2> /dev/null)" = "$(options "$triple")" ] || return 1
  done
}
complete libjpeg && complete libpng && exit 0

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
# own_apt COMMAND ...
own_apt() {
  command=$1; shift
  "$command" -q -o Dir::Etc::sourcelist=/dev/null -o Dir::Etc::sourceparts="$work/parts" \
    -o Dir::State::lists="$work/lists" -o Dir::Cache="$work/cache" -o APT::Sandbox::User= "$@"
}

# flags TRIPLE
flags() {
  echo "$(options "$1") -ffile-prefix-map=$work/="
}

# Each library's own: build_NAME TRIPLE leaves NAME.a in $work/TRIPLE, headers_NAME TRIPLE names the
# headers.
build_libjpeg() {
  cmake -G Ninja -S "$source" -B "$work/$1" -Wno-dev -DCMAKE_BUILD_TYPE=Release \
    -DCMAKE_TOOLCHAIN_FILE="$here/../cmake/mingw.cmake" -DMINGW_TRIPLE="$1" \
    -DCMAKE_C_FLAGS="$(flags "$1")" -DCMAKE_INSTALL_PREFIX="$work/unused" \
    -DENABLE_SHARED=OFF -DWITH_TURBOJPEG=OFF -DWITH_SIMD=OFF
  cmake --build "$work/$1" --target jpeg-static
}
headers_libjpeg() {
  echo "$source/jpeglib.h $source/jmorecfg.h $source/jerror.h $work/$1/jconfig.h"
}

# The configuration is the one that the source brings along, which asks for no processor's own code.
build_libpng() {
  mkdir -p "$work/$1/png" && cp "$source/scripts/pnglibconf.h.prebuilt" "$work/$1/pnglibconf.h"
  for file in png pngerror pngget pngmem pngpread pngread pngrio pngrtran pngrutil pngset pngtrans \
              pngwio pngwrite pngwtran pngwutil; do
    # shellcheck disable=SC2046
    "$1-gcc" -O2 -DNDEBUG $(flags "$1") -I"$work/$1" -c "$source/$file.c" \
      -o "$work/$1/png/$file.o" || return 1
  done
  "$1-ar" rcs "$work/$1/libpng.a" "$work/$1/png/"*.o
}
headers_libpng() {
  echo "$source/png.h $source/pngconf.h $work/$1/pnglibconf.h"
}

# install_into TRIPLE NAME: the library, then its options, which tell that all of it is there.
install_into() {
  mkdir -p "$dir/$1/include" "$dir/$1/lib"
  # shellcheck disable=SC2046
  cp $(headers_"$2" "$1") "$dir/$1/include/"
  cp "$work/$1/$2.a" "$dir/$1/lib/$2.part"
  mv "$dir/$1/lib/$2.part" "$dir/$1/lib/$2.a"
  options "$1" > "$dir/$1/lib/$2.options"
}

# fetch PACKAGE: the newest version that can be had; a mirror may list one whose files it lacks.
fetch() {
  for version in $(own_apt apt-cache showsrc --only-source "$1" | sed -n 's/^Version: //p' | sort -ruV); do
    own_apt apt-get source "$1=$version" && return
    rm -rf "$1"[-_]*
  done
  return 1
}

# provide NAME PACKAGE
provide() {
  if complete "$1"; then return; fi
  echo "Building $1 for Windows" >&2
  cd "$work"
  quietly fetch "$2"
  source=$(echo "$work/$2"-*/); source=${source%/}
  builds=
  for triple in $triples; do
    quietly build_"$1" "$triple" &
    builds="$builds $!"
  done
  for build in $builds; do wait "$build"; done
  for triple in $triples; do install_into "$triple" "$1"; done
}

own_apt apt-get update >> "$log" 2>&1 || echo 'apt-get update failed in part; going on' >&2
provide libjpeg libjpeg-turbo
provide libpng libpng1.6
