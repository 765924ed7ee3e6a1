#!/bin/sh
# jpeg-readers.sh RECIPE_TOOL: djpeg and ImageMagick read the textures that we save as JPEG, and find
# the pixels that we find in them.
set -eu
tool=$(realpath "$1")
folder=$(mktemp -d); trap 'rm -rf "$folder"' EXIT
cd "$folder"
for size in 1x1 16x16 37x21 512x512; do
  "$tool" - --quiet <<RECIPE
new width=${size%x*} height=${size#*x}
clock seconds=3
lines colorMode=11
save file=$size.jpg
open file=$size.jpg
save file=$size.tmp
RECIPE
  # Without the header; of the texture also without the fourth byte of each pixel.
  djpeg -pnm "$size.jpg" | perl -0777 -ne 's/^P6\n\d+ \d+\n255\n// or die "no picture\n"; print' > theirs
  perl -0777 -ne 'print substr($_, 4) =~ s/(...)./$1/gsr' "$size.tmp" > ours
  [ "$(wc -c < ours)" -eq $((3 * ${size%x*} * ${size#*x})) ]
  cmp ours theirs
  /usr/bin/convert "$size.jpg" -depth 8 rgb:magick
  cmp ours magick
done
