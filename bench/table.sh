#!/bin/sh
# Prints the whole table of bench/README.md in one run on one thread: each operation beside its plain form,
# OpenCV, ImageMagick and a plain copy. Installs what is missing for that, and builds. Arguments go to
# bench-core: --benchmark_filter='twirls.*', --benchmark_min_time=1.
set -eu
cd "$(dirname "$0")/.."
packages='build-essential cmake ninja-build googletest libbenchmark-dev libcli11-dev libstb-dev
  nlohmann-json3-dev libmpfr-dev zlib1g-dev libpng-dev libjpeg62-turbo-dev imagemagick
  libopencv-imgproc-dev'
todo=$(for p in $packages; do
  dpkg-query -W -f='${Status}\n' "$p" 2>/dev/null | grep -q '^install ok installed$' || echo "$p"
done)
if [ -n "$todo" ]; then
  echo "Installing:" $todo >&2
  as_root=
  [ "$(id -u)" -eq 0 ] || as_root=sudo
  $as_root apt-get update >&2
  # shellcheck disable=SC2086
  $as_root env DEBIAN_FRONTEND=noninteractive apt-get install -y --no-install-recommends $todo >&2
fi
cmake --preset linux -D ZANDERMOLITE_BENCH_OPENCV=ON >&2
cmake --build build/linux --target bench-core >&2
times=$(mktemp)
trap 'rm -f "$times"' EXIT
bench/imagemagick.sh > "$times"
build/linux/bench/bench-core --table --imagemagick="$times" "$@"
