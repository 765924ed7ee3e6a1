#!/bin/sh
# Every source is as clang-format leaves it.
set -eu
find . \( -path ./build -o -path ./deps -o -path ./out -o -path './.*' \) -prune -o \
  \( -name '*.cpp' -o -name '*.h' \) -print | xargs clang-format-14 --dry-run --Werror
