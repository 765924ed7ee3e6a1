#!/bin/sh
# No module includes one that stands above it. The levels, from the bottom:
#   hostapi; base; raster; paint; framework; files; dialogs; editor; shell.
# The host knows hostapi and the rectangles of base. The plain forms stand on paint; the recipe tool
# and the tests stand above everything.
set -eu
lower='base/'
texts='resources/Strings\.(h|def)'
ids='resources/Ids\.h'
failed=0

# allow FILES PATTERN: each project include in FILES must match PATTERN.
allow() {
  files=$1; pattern=$2
  # shellcheck disable=SC2086
  wrong=$(grep -HnE '^#include "' $files | grep -vE "#include \"($pattern)" || true)
  if [ -n "$wrong" ]; then
    printf 'These includes point upwards:\n%s\n' "$wrong" >&2
    failed=1
  fi
}

allow 'hostapi/*.h' 'hostapi/'
allow 'base/*.h base/*.cpp' 'hostapi/|base/'
allow 'raster/*.h raster/*.cpp' "hostapi/|$lower|$texts|raster/"
allow 'paint/*.h paint/*.cpp paint/*/*.h paint/*/*.cpp' "hostapi/|$lower|raster/|paint/"
allow 'host/*/*.h host/*/*.cpp' 'hostapi/|base/Rectangles.h|host/'
allow 'files/*.h files/*.cpp' "hostapi/|$lower|$texts|$ids|raster/|paint/|files/|framework/alerts/Alert.Win.h"
allow 'editor/*.h editor/*.cpp' \
  "hostapi/|$lower|shell/(FilterContext|LastTexture).h|$texts|$ids|raster/|paint/|files/|framework/|dialogs/|editor/"
allow 'dialogs/*.h dialogs/*.cpp' \
  "hostapi/|$lower|$texts|$ids|raster/|paint/|files/|framework/|dialogs/"
allow 'framework/*/*.h framework/*/*.cpp' "hostapi/|$lower|$texts|framework/"

# Windows' own headers stand in .Win files alone.
wrong=$(grep -lE '#include <(windows|commctrl|commdlg|windowsx)\.h>' -r hostapi base raster paint files \
  framework shell editor dialogs host recipe plain 2> /dev/null | grep -vE '\.Win\.(h|cpp)$' || true)
if [ -n "$wrong" ]; then
  printf 'These files include Windows headers and are no .Win files:\n%s\n' "$wrong" >&2
  failed=1
fi
exit $failed
