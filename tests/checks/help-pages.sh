#!/bin/sh
# The help pages are whole: every page and picture that they name is there, and every page can be reached
# from the first. Each operation has a page with its dialog and a pair of pictures, which a recipe makes,
# and the page names every control of the dialog. The folder goes into the archive, so it stays small.
set -eu
help=docs/help
most=1500000
failed=0
complain() {
  echo "$1" >&2
  failed=1
}

# Operations that have no row in the catalogue, or no recipe.
others='combine tile invert addBump move brush eraser pencil gradient stamp fill'
catalogued=$(sed -n 's/^    \(Effect\|Filter\)<.*>("\([A-Za-z]*\)".*/\2/p' paint/Catalog.cpp)
[ "$(echo "$catalogued" | wc -l)" -ge 15 ] || complain 'the catalogue cannot be read'

# --- What pages name ---

names_in() {
  grep -oE '(href|src)="[^"]+"' "$1" | sed 's/^[^"]*"//; s/"$//' | sort -u
}

nav=$(grep '^<nav>' $help/WHStart.htm)
for page in "$help"/*.htm; do
  for name in $(names_in "$page"); do
    [ -f "$help/$name" ] || complain "$page: $name is missing"
  done
  [ "$(grep '^<nav>' "$page")" = "$nav" ] || complain "$page: the line of links differs"
  ! grep -q '<script' "$page" || complain "$page: has a script"
done

reached=' WHStart.htm '
fresh=$reached
while [ -n "$fresh" ]; do
  found=
  for page in $fresh; do
    for name in $(names_in "$help/$page" | grep '\.htm$'); do
      case "$reached$found" in *" $name "*) ;; *) found="$found $name " ;; esac
    done
  done
  reached="$reached$found"
  fresh=$found
done
for page in "$help"/*.htm; do
  page=$(basename "$page")
  case $reached in *" $page "*) ;; *) complain "$page cannot be reached from WHStart.htm" ;; esac
done
for picture in "$help"/pictures/*; do
  grep -q "pictures/$(basename "$picture")\"" "$help"/*.htm || complain "$picture: no page shows it"
done

# --- Operations ---

for name in $catalogued $others; do
  page=$help/$name.htm
  if [ ! -f "$page" ]; then
    complain "$name has no page"
    continue
  fi
  for picture in "$name-before.jpg" "$name-after.jpg"; do
    grep -q "pictures/$picture\"" "$page" || complain "$page does not show $picture"
  done
  [ -f "docs/help-recipes/$name.recipe" ] || complain "$name has no recipe for its pictures"
  if [ -f "docs/screenshots/win32/$name.png" ]; then
    grep -q "pictures/$name.png\"" "$page" || complain "$page does not show its dialog"
    cmp -s "docs/screenshots/win32/$name.png" "$help/pictures/$name.png" ||
      complain "$name.png is not that of docs/screenshots"
  fi
done

# --- Controls ---

# The page of a dialog, by the caption in the resources.
page_of() {
  case $1 in
    'Brightness & Contrast') echo brightnessContrast ;;
    'Add Color') echo addColor ;;
    'Brush Tool Settings') echo brush ;;
    'Rubber Stamp Tool Settings') echo stamp ;;
    'Fill Tool Settings') echo fill ;;
    *) echo "$1" | tr 'A-Z' 'a-z' ;;
  esac
}

# A line for each text of a dialog: CAPTION|TEXT. Without the texts that all of them share, units, numbers
# and the note in place of a file's name.
texts_of_dialogs() {
  cat resources/Effects.rc resources/Filters.rc resources/Tools.rc | awk '
    /^DIALOG\(/ { split($0, part, "\""); caption = part[2]; next }
    /^END/ { caption = "" }
    caption != "" && /^    [A-Z_]+[ (]/ && split($0, part, "\"") > 2 {
      text = part[2]
      gsub(/\\t/, "", text)
      gsub(/&&/, "\001", text); gsub(/&/, "", text); gsub("\001", "\\&amp;", text)
      if (text ~ /^(|%|°|\[.*|Apply|pixels)$/) next
      if ($1 == "CONTROL" && part[1] !~ /CONTROL $/) next
      print caption "|" text
    }'
}

count=0
while IFS='|' read -r caption text; do
  page=$help/$(page_of "$caption").htm
  count=$((count + 1))
  grep -qF -e "<b>$text</b>" -e "<th>$text</th>" "$page" || complain "$page does not tell of \"$text\""
done <<TEXTS
$(texts_of_dialogs)
TEXTS
[ "$count" -ge 60 ] || complain 'the resources cannot be read'

size=$(find "$help" -type f -exec cat {} + | wc -c)
[ "$size" -le $most ] || complain "the help has $size bytes, more than $most"
exit $failed
