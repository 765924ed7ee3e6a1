#!/bin/sh
# What ImageMagick takes for the nearest things, on 512 by 512 pixels of noise with wrapped borders, on
# one thread: the name of bench-core's row, a tab, milliseconds of the processor's time. Needs its command
# `convert` (CONVERT=PATH takes another).
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
        sed -n 's/^ *Performance\[1\]: .* \([0-9.]*\)u .*/\1/p' |
        awk -v row="$row" -v runs=$runs '{ printf "%s\t%.3f\n", row, 1000 * $1 / runs }'
}

measure 'blur, default' -gaussian-blur 3x1.2
measure 'blur, worst case' -gaussian-blur 11x5.8
measure 'blur, motion, worst case' -motion-blur 25x12+315
measure 'sharpen, default' -morphology Convolve '3x3: -0.07,-0.1,-0.07 -0.1,1.68,-0.1 -0.07,-0.1,-0.07'
measure 'noise, default' -attenuate 0.5 +noise Uniform
measure 'saturation, default' -define modulate:colorspace=HSL -modulate 100,150
measure 'brightnessContrast, default' -brightness-contrast 5x25
measure 'addColor, default' -fill '#804020' -colorize 25
measure 'Invert' -negate
measure 'mosaic, 3 by 3' -sample '25%' -sample '512x512!'
measure 'flip, worst case' -flip -flop
measure 'waves, default' -interpolate bilinear -wave 20x256
measure 'one twirl of the whole picture' -interpolate bilinear -swirl 180
measure 'Fill, whole tile' -fuzz '100%' -fill red -draw 'color 0,0 floodfill'
