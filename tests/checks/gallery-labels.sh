#!/bin/sh
# What the gallery tells to click is on the buttons and in the dialogs: every word in bold is a text of the
# resources, and every recipe has its section.
set -eu
pages=docs/gallery
failed=0

# The texts of controls and menu entries, without mnemonics, keys and tabs, one a line.
texts=$(cat resources/Editor.rc resources/Effects.rc resources/Filters.rc resources/Tools.rc \
    resources/Menus.rc resources/NewAndEdit.rc resources/DialogParts.rc |
  grep -o '"[^"]*"' | sed 's/^"//; s/"$//; s/\\t.*//; s/&&/\n/; s/&//g; s/\n/\&/' | sort -u)

told=$(grep -oE '\*\*[^*]+\*\*' $pages/by-hand.md | sed 's/^\*\*//; s/\*\*$//' | sort -u)
[ "$(echo "$told" | wc -l)" -ge 30 ] || { echo 'by-hand.md cannot be read' >&2; failed=1; }
echo "$told" | {
  while read -r text; do
    printf '%s\n' "$texts" | grep -qxF -e "$text" || {
      echo "by-hand.md: no button and no label reads \"$text\"" >&2
      failed=1
    }
  done
  exit $failed
} || failed=1

for recipe in "$pages"/*.recipe; do
  name=$(basename "$recipe" .recipe)
  grep -qF "]($name.png)" $pages/by-hand.md || {
    echo "by-hand.md does not tell of $name" >&2
    failed=1
  }
done
exit $failed
