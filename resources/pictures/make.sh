#!/bin/sh
# Converts the drawings beside it to what Pictures.rc names. Needs librsvg2-bin, icoutils, imagemagick.
# Run it after a change and commit the outcome: a build needs none of these. A test compares sums.txt,
# which the last line writes, with what is there.
set -eu
cd "$(dirname "$0")"
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# White is the colour that controls let through. At most 256 colours.
to_bitmap() { # PNG OUTPUT
    convert "$1" -background white -flatten -strip -compress none -dither None -colors 256 -type Palette BMP3:"$2"
}
bitmap() { # NAME...
    for name; do
        rsvg-convert -o "$work/$name.png" "$name.svg"
        to_bitmap "$work/$name.png" "$name.bmp"
    done
}
# Cells of 25 by 21: a tool of 24 by 20, and a line at the right and the bottom.
palette() { # OUTPUT TOOL...
    output=$1; shift
    for tool; do
        rsvg-convert -o "$work/$tool.png" "tool-$tool.svg"
        convert -size 25x21 'xc:#c0c0c0' -fill white -draw 'rectangle 0,0 23,19' \
            "$work/$tool.png" -composite "$work/cell-$tool.png"
        set -- "$@" "$work/cell-$tool.png"; shift
    done
    montage "$@" -geometry +0+0 -tile 2x "$work/palette.png"
    to_bitmap "$work/palette.png" "$output"
}
icon() { # NAME...
    for name; do
        rsvg-convert -o "$work/$name.png" "icon-$name.svg"
        icotool -c -o "icon-$name.ico" "$work/$name.png"
    done
}
cursor() { # NAME X Y: with its hot spot
    rsvg-convert -o "$work/$1.png" "cursor-$1.svg"
    icotool -c --cursor -X "$2" -Y "$3" -o "cursor-$1.cur" "$work/$1.png"
}

palette palette-paint.bmp move brush eraser pencil gradient stamp fill eyedropper
palette palette-view.bmp hand zoom
# shellcheck disable=SC2046
bitmap $(ls button-*.svg card-*.svg | sed 's/\.svg$//')
icon blur-direction default-colors dial-knob mosaic-horizontal mosaic-vertical size-marks \
    switch-colors zoom-in zoom-out
cursor move 16 16
cursor brush 7 25
cursor eraser 9 22
cursor pencil 6 26
cursor gradient 12 12
cursor stamp 16 21
cursor fill 6 24
cursor eyedropper 7 26
cursor hand 16 17
cursor zoom-in 12 12
cursor hand-drag 16 17
cursor stamp-source 15 15
cursor move-drag 16 16
cursor zoom-out 12 12

sha256sum make.sh *.svg *.bmp *.ico *.cur > sums.txt
