#!/bin/sh
# Every source is as clang-format leaves it.
set -eu
find base bench dialogs editor files framework host hostapi paint plain raster recipe resources shell tests \
  -name '*.cpp' -o -name '*.h' | xargs clang-format-14 --dry-run --Werror
