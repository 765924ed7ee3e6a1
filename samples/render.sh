#!/bin/sh
# Makes the sample pictures anew from their scenes: samples/render.sh [NAME...]
# Needs povray and imagemagick; takes some minutes of computing a picture.
# POV-Ray runs on one thread, because what it gathers of indirect light depends on the
# order of the work. With TRACED=DIR the traced pictures stay in DIR and are taken from there the next
# time, so that the steps after the tracing can be tried at once.
set -eu
cd "$(dirname "$0")"
convert=/usr/bin/convert
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
traced=${TRACED:-$work}

# trace SCENE WIDTH HEIGHT DEPTH [OPTIONS]: $traced/SCENE.png, DEPTH bits a channel.
trace() {
    scene=$1 width=$2 height=$3 depth=$4
    shift 4
    [ ! -e "$traced/$scene.png" ] || return 0
    povray "+I$scene.pov" "+O$work/tracing.png" "+FN$depth" "+W$width" "+H$height" \
        +A0.06 +AM2 +R2 -J -D +WT1 "$@" > "$work/$scene.log" 2>&1 || {
        tail -n 20 "$work/$scene.log" >&2
        return 1
    }
    mv "$work/tracing.png" "$traced/$scene.png"
}

# film_curve EXPOSURE: for light from 0 to 4 times white, as the scenes leave it; a soft shoulder.
film_curve() {
    "$convert" -size 4096x1 xc: -depth 16 \
        -fx "xx = 4 * $1 * i / (w - 1); (xx * (2.51 * xx + 0.03)) / (xx * (2.43 * xx + 0.59) + 0.14)" \
        -set colorspace RGB "$work/curve.miff"
}

# photograph SCENE DPI EXPOSURE QUALITY: glow around highlights, film curve, the lens's darker
# corners; a baseline JPEG.
photograph() {
    trace "$1" 800 600 16
    film_curve "$3"
    "$convert" "$traced/$1.png" -alpha off -colorspace RGB \
        \( +clone -blur 0x10 -evaluate multiply 0.06 \) -compose plus -composite \
        "$work/curve.miff" -clut -colorspace sRGB \
        \( -size 1000x1000 radial-gradient:white-gray78 -resize '800x600!' \) \
        -compose multiply -composite \
        -strip -depth 8 -density "$2" -units PixelsPerInch \
        -sampling-factor 2x2 -quality "$4" "$1.jpg"
}

# cut_out SCENE WIDTH HEIGHT: a PNG with transparency.
cut_out() {
    trace "$1" "$2" "$3" 8 +UA
    "$convert" "$traced/$1.png" -strip -define png:exclude-chunks=date,time,gama,bkgd \
        -define png:compression-level=9 -define png:compression-filter=5 "PNG32:$1.png"
}

render() {
    case $1 in
        room) photograph room 300 0.85 86 ;;
        stilllife) photograph stilllife 72 0.9 86 ;;
        courtyard) photograph courtyard 72 0.9 82 ;;
        bottle) cut_out bottle 300 400 ;;
        *) echo "render.sh: no scene called '$1'" >&2; return 2 ;;
    esac
}

[ $# -gt 0 ] || set -- room stilllife courtyard bottle
for name in "$@"; do
    render "$name"
done
