#!/bin/sh
# What ImageMagick takes for the nearest things, on 512 by 512 pixels of noise with wrapped borders, on
# one thread: milliseconds each. Needs its command `convert` (CONVERT=PATH takes another).
set -eu
convert=${CONVERT:-/usr/bin/convert}
runs=10
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
"$convert" -size 512x512 xc: -seed 1 +noise Random -depth 8 "$work/noise.png"

# measure ROW OPERATION...
measure() {
    row=$1
    shift
    "$convert" "$work/noise.png" -limit thread 1 -virtual-pixel tile -bench $runs "$@" null: 2>&1 |
        sed -n "s/^ *Performance\[1\]: [0-9]*i \([0-9.]*\)ips.*/\1/p" |
        awk -v row="$row" '{ printf "%-28s %10.3f ms\n", row, 1000 / $1 }'
}

measure 'Blur, amount 20' -gaussian-blur 3x1.2
measure 'Blur, amount 100' -gaussian-blur 11x5.8
measure 'Motion Blur, length 25' -motion-blur 25x12+315
measure 'Sharpen' -morphology Convolve '3x3: -0.07,-0.1,-0.07 -0.1,1.68,-0.1 -0.07,-0.1,-0.07'
measure 'Noise' -attenuate 0.5 +noise Uniform
measure 'Saturation' -define modulate:colorspace=HSL -modulate 100,150
measure 'Brightness and Contrast' -brightness-contrast 5x25
measure 'Add Color' -fill '#804020' -colorize 25
measure 'Invert' -negate
measure 'Mosaic' -sample '25%' -sample '512x512!'
measure 'Flip, both' -flip -flop
measure 'Waves' -interpolate bilinear -wave 20x256
measure 'Twirl, one' -interpolate bilinear -swirl 180
measure 'Fill, whole tile' -fuzz '100%' -fill red -draw 'color 0,0 floodfill'
