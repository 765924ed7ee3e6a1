#!/bin/sh
# make.sh: makes the JPEG files of this folder anew, with pictures.txt, their sizes and pixels as
# djpeg has them. Needs cjpeg, djpeg, jpegtran (libjpeg-turbo-progs), ImageMagick, exiftool, a JDK,
# perl and g++ with libstb-dev.
set -eu
cd "$(dirname "$0")"
convert=${CONVERT:-/usr/bin/convert}
rm -f ./*.jpg ./*.jpeg pictures.txt
work=$(mktemp -d); trap 'rm -rf "$work"' EXIT

# picture WIDTH HEIGHT: ramps in red and green, a disc in blue, some noise; as a PPM.
picture() {
  perl -e '
    my ($w, $h) = @ARGV; binmode STDOUT; print "P6\n$w $h\n255\n"; my $seed = 7;
    for my $y (0 .. $h - 1) { for my $x (0 .. $w - 1) {
      $seed = ($seed * 1103515245 + 12345) % 2147483648; my $noise = ($seed >> 16) % 24;
      my $far = ($x - $w / 3) ** 2 + ($y - $h / 2) ** 2 > ($h / 4) ** 2;
      print pack "C3", $x * 231 / $w + $noise, $y * 231 / $h + $noise, ($far ? 30 : 200) + $noise;
    } }' "$1" "$2"
}
# flat WIDTH HEIGHT: one colour, so that a large file is small.
flat() {
  perl -e 'binmode STDOUT; print "P6\n@ARGV\n255\n", pack("C3", 200, 120, 40) x ($ARGV[0] * $ARGV[1])' \
    "$1" "$2"
}
picture 37 21 > "$work/small.ppm"
picture 70 50 > "$work/medium.ppm"
cj() { out=$1; shift; cjpeg "$@" "$work/small.ppm" > "$out"; }

# The library's own writer.
cj baseline.jpg -quality 85 -baseline
cj worst.jpg -quality 1
cj best-444.jpg -quality 100 -sample 1x1
cj h2v1.jpg -sample 2x1
cj h1v2.jpg -sample 1x2
cj h4v1.jpg -sample 4x1
cj odd-sampling.jpg -sample 1x1,2x2,1x2
cj optimized.jpg -optimize
cj progressive.jpg -progressive
cj arithmetic.jpg -arithmetic
cj progressive-arithmetic.jpg -progressive -arithmetic
cj grey.jpg -grayscale
cj grey-progressive.jpg -grayscale -progressive
cj rgb.jpg -rgb
cj restart-rows.jpg -restart 1
cj restart-blocks.jpg -restart 1B
cj progressive-restart.jpg -progressive -restart 2B
cj fast-dct.jpg -dct fast
cj smoothed.jpg -smooth 50
head -c 3000 make.sh > "$work/profile"
cj profile.jpg -icc "$work/profile"
printf '0;\n1;\n2;\n' > "$work/scans"
cj three-scans.jpg -scans "$work/scans"
cjpeg -quality 75 "$work/medium.ppm" > medium.jpg

# Sizes.
for size in 1x1 1x9 9x1 8x8 16x16 17x33; do
  picture "${size%x*}" "${size#*x}" | cjpeg > "size-$size.jpg"
done
for size in 512x512 513x10 10x513 512x1 1x512; do
  flat "${size%x*}" "${size#*x}" | cjpeg -quality 60 -optimize > "size-$size.jpg"
done
flat 512 512 | cjpeg -quality 60 -progressive > size-512x512-progressive.jpg
flat 40000 1 | cjpeg -quality 60 -optimize > size-40000x1.jpg

# ImageMagick, with a resolution, and in colours that no texture has.
magick() { out=$1; shift; "$convert" "$work/small.ppm" "$@" "$out"; }
magick magick.jpg -density 300 -units PixelsPerInch -quality 92
magick magick-centimetre.jpg -density 118 -units PixelsPerCentimeter
magick magick-plane.jpg -interlace plane -sampling-factor 4:2:2
magick magick-grey.jpg -colorspace Gray
magick magick-comment.jpg -set comment 'Eine Textur'
magick cmyk.jpg -colorspace CMYK
magick cmyk-progressive.jpg -colorspace CMYK -interlace plane

# stb_image_write, an encoder of its own.
cat > "$work/stb.cpp" <<'CPP'
#define STB_IMAGE_WRITE_IMPLEMENTATION
#include <stb/stb_image_write.h>
#include <cstdio>
#include <cstdlib>
#include <vector>
int main(int, char** names) {
    int width, height;
    FILE* file = std::fopen(names[1], "rb");
    if (std::fscanf(file, "P6 %d %d 255", &width, &height) != 2) return 1;
    std::fgetc(file);
    std::vector<unsigned char> rgb(width * height * 3);
    if (std::fread(rgb.data(), 1, rgb.size(), file) != rgb.size()) return 1;
    return stbi_write_jpg(names[2], width, height, 3, rgb.data(), std::atoi(names[3])) ? 0 : 1;
}
CPP
g++ -w -o "$work/stb" "$work/stb.cpp"
"$work/stb" "$work/small.ppm" stb-75.jpg 75
"$work/stb" "$work/small.ppm" stb-100.jpg 100

# Java's ImageIO, an older relative of the library.
cat > "$work/Write.java" <<'JAVA'
import java.io.File;
import javax.imageio.ImageIO;
class Write {
    public static void main(String[] names) throws Exception {
        ImageIO.write(ImageIO.read(new File(names[0])), "jpg", new File(names[1]));
    }
}
JAVA
"$convert" "$work/small.ppm" "$work/small.bmp"
java "$work/Write.java" "$work/small.bmp" java.jpg

# exiftool, and what other programs put in front and behind.
cp baseline.jpg exif.jpg
exiftool -q -overwrite_original -Artist=Somebody -Orientation#=6 -XResolution=72 exif.jpg
# drop_jfif FROM TO: without the APP0 segment.
drop_jfif() {
  perl -0777 -pe 's/^(\xFF\xD8)\xFF\xE0\x00\x10JFIF.{10}/$1/s' "$1" > "$2"
}
drop_jfif exif.jpg exif-alone.jpg
drop_jfif baseline.jpg bare.jpg
# A segment of the largest size.
perl -0777 -ne 'print substr($_, 0, 2), "\xFF\xEB\xFF\xFF", "x" x 65533, substr($_, 2)' baseline.jpg \
  > large-segment.jpg
perl -0777 -ne 'print "p" x 1000, $_' baseline.jpg > prefix-1000.jpg
perl -0777 -ne 'print "p" x 1000, $_' bare.jpg > prefix-1000-bare.jpg
perl -0777 -ne 'print $_, "behind" x 20' baseline.jpg > suffix.jpg
cp baseline.jpg long-extension.jpeg

# pictures.txt: name, width, height and the FNV-1a sum of the pixels as red, green, blue.
sum() {
  djpeg -rgb -pnm "$1" | perl -0777 -ne '
    s/^P6\n(\d+) (\d+)\n255\n//; my ($w, $h, $sum) = ($1, $2, 2166136261);
    $w or die "not read\n"; $sum = (($sum ^ $_) * 16777619) % 4294967296 for unpack "C*"; printf "%d %d %08x\n", $w, $h, $sum'
}
for file in *.jpg *.jpeg; do
  case $file in
    cmyk*|prefix*|size-40000x1*) ;;
    *) printf '%s %s\n' "$file" "$(sum "$file")" >> pictures.txt ;;
  esac
done
