#!/bin/sh
# The pictures are those that make.sh makes of the drawings: nothing changed since it ran, no picture
# without a drawing, and none left out.
set -eu
cd resources/pictures
sha256sum --check --quiet sums.txt || {
  echo 'Run resources/pictures/make.sh and commit what it makes.' >&2
  exit 1
}
present=$(ls make.sh ./*.svg ./*.bmp ./*/*.bmp ./*.ico ./*.cur | sed 's#^\./##' | LC_ALL=C sort)
summed=$(sed 's/^[0-9a-f]*  //' sums.txt | LC_ALL=C sort)
if [ "$present" != "$summed" ]; then
  echo 'sums.txt names other files than there are; run resources/pictures/make.sh.' >&2
  exit 1
fi
named=$(cpp -P ../Pictures.rc | grep -o '"pictures/[^"]*"' | sed 's#"pictures/\(.*\)"#\1#' | LC_ALL=C sort)
made=$(ls ./*.bmp ./*/*.bmp ./*.ico ./*.cur | sed 's#^\./##' | LC_ALL=C sort)
if [ "$named" != "$made" ]; then
  echo 'Pictures.rc does not name each picture once.' >&2
  exit 1
fi
