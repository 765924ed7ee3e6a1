#!/bin/sh
# Converts the drawings beside it to what Pictures.rc names. Needs librsvg2-bin, icoutils, imagemagick.
# Run it after a change and commit the outcome: a build needs none of these. A test compares sums.txt,
# which the last line writes, with what is there.
set -eu
cd "$(dirname "$0")"
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# Every picture is made at 100, 150 and 200 percent. Bitmaps of the larger scales stand in 150/ and 200/;
# an icon or a cursor has all three, the smallest first.
scales='100 150 200'
# scaled PIXELS SCALE: as the program rounds.
scaled() { echo $((($1 * $2 + 50) / 100)); }
# draw NAME SCALE PNG
draw() {
    width=$(sed -n '1s/.* width="\([0-9]*\)".*/\1/p' "$1.svg")
    height=$(sed -n '1s/.* height="\([0-9]*\)".*/\1/p' "$1.svg")
    rsvg-convert -w "$(scaled "$width" "$2")" -h "$(scaled "$height" "$2")" -o "$3" "$1.svg"
}
# place NAME SCALE: where the bitmap goes.
place() { case $2 in 100) echo "$1.bmp" ;; *) mkdir -p "$2"; echo "$2/$1.bmp" ;; esac; }

# White is the colour that controls let through. At most 256 colours.
to_bitmap() { # PNG OUTPUT
    convert "$1" -background white -flatten -strip -compress none -dither None -colors 256 -type Palette BMP3:"$2"
}
bitmap() { # NAME...
    for name; do
        for scale in $scales; do
            draw "$name" "$scale" "$work/$name.png"
            to_bitmap "$work/$name.png" "$(place "$name" "$scale")"
        done
    done
}
# Cells of 25 by 21: a tool of 24 by 20, and a line at the right and the bottom.
palette() { # NAME TOOL...
    palette=$1; shift
    for scale in $scales; do
        cells=
        inside="$(($(scaled 24 "$scale") - 1)),$(($(scaled 20 "$scale") - 1))"
        for tool; do
            draw "tool-$tool" "$scale" "$work/$tool.png"
            convert -size "$(scaled 25 "$scale")x$(scaled 21 "$scale")" 'xc:#c0c0c0' -fill white \
                -draw "rectangle 0,0 $inside" "$work/$tool.png" -composite "$work/cell-$tool.png"
            cells="$cells $work/cell-$tool.png"
        done
        # shellcheck disable=SC2086
        montage $cells -geometry +0+0 -tile 2x "$work/palette.png"
        to_bitmap "$work/palette.png" "$(place "$palette" "$scale")"
    done
}
icon() { # NAME...
    for name; do
        for scale in $scales; do
            draw "icon-$name" "$scale" "$work/$name-$scale.png"
        done
        icotool -c -o "icon-$name.ico" "$work/$name-100.png" "$work/$name-150.png" "$work/$name-200.png"
    done
}
# le32 NUMBER: its four bytes, the lowest first.
le32() {
    for shift in 0 8 16 24; do
        printf "\\$(printf %03o $((($1 >> shift) & 255)))"
    done
}
# join OUTPUT CURSOR...: one cursor of those that have one picture each: their directory entries with
# new offsets, then their pictures.
join() {
    output=$1; shift
    offset=$((6 + 16 * $#))
    {
        printf '\0\0\2\0'; le32 $# | head -c 2
        for single; do
            tail -c +7 "$single" | head -c 12; le32 $offset
            offset=$((offset + $(wc -c < "$single") - 22))
        done
        for single; do tail -c +23 "$single"; done
    } > "$output"
}
cursor() { # NAME X Y: with its hot spot
    for scale in $scales; do
        draw "cursor-$1" "$scale" "$work/$1.png"
        # The pixel that the spot's own one becomes, not the rounded spot.
        icotool -c --cursor -X $(($2 * scale / 100)) -Y $(($3 * scale / 100)) -o "$work/$1-$scale.cur" \
            "$work/$1.png"
    done
    join "cursor-$1.cur" "$work/$1-100.cur" "$work/$1-150.cur" "$work/$1-200.cur"
}

palette palette-paint move brush eraser pencil gradient stamp fill eyedropper
palette palette-view hand zoom
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

sha256sum make.sh *.svg *.bmp */*.bmp *.ico *.cur > sums.txt
