#!/bin/sh
# The pages of the help lead nowhere wrong: every page, picture and style that they name is there, and
# every page can be reached from the first.
set -eu
cd docs/help
failed=0
reached=' WHStart.htm '
for page in *.htm; do
  names=$(grep -oE '(href|src)="[^"]+"' "$page" | sed 's/^[^"]*"//; s/"$//' | sort -u)
  [ -n "$names" ] || { echo "$page names nothing" >&2; failed=1; }
  for name in $names; do
    [ -f "$name" ] || { echo "$page: $name is missing" >&2; failed=1; }
    [ "$page" != WHStart.htm ] || reached="$reached$name "
  done
done
for page in *.htm; do
  case $reached in
    *" $page "*) ;;
    *) echo "$page cannot be reached from WHStart.htm" >&2; failed=1 ;;
  esac
done
exit $failed
