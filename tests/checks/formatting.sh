#!/bin/sh
# formatting.sh [STAMP]: every source is as clang-format leaves it.
set -eu
sources=$(find . \( -path ./build -o -path ./deps -o -path ./out -o -path './.*' \) -prune -o \
  \( -name '*.cpp' -o -name '*.h' \) -print | LC_ALL=C sort)
# shellcheck disable=SC2086
{ clang-format-14 --version; cat .clang-format; sha256sum $sources; } |
  scripts/unless-passed "${1:-}" clang-format-14 --dry-run --Werror $sources
