#!/bin/sh
# Converts the drawings beside it to resources/*.ico. Needs librsvg2-bin and icoutils.
# NAME-small.svg is drawn for 16 and 32 pixels, NAME.svg for 48 and 256.
set -eu
cd "$(dirname "$0")"
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

draw() { rsvg-convert -w "$2" -h "$2" -o "$work/$2.png" "$1.svg"; }

for name in zandermolite host recipe; do
    draw "$name-small" 16
    draw "$name-small" 32
    draw "$name" 48
    draw "$name" 256
    # Only the largest is kept as PNG: Windows XP reads icons up to 48 pixels as bitmaps alone.
    icotool -c -o "../$name.ico" "$work/16.png" "$work/32.png" "$work/48.png" -r "$work/256.png"
done
