#!/bin/sh
# The same recipe gives the same files in the native, the 32-bit and the 64-bit build.
set -eu
out=build/compare
rm -rf "$out"
mkdir -p "$out/linux" "$out/win32" "$out/win64"
recipes=$(ls tests/recipe/cross/*.recipe)
# shellcheck disable=SC2086
build/linux/recipe/zandermolite-recipe $recipes --quiet --out-dir "$out/linux"
for preset in win32 win64; do
  # shellcheck disable=SC2086
  scripts/wine-run "build/$preset/recipe/zandermolite-recipe.exe" $recipes --quiet \
    --out-dir "$out/$preset"
done
count=$(find "$out/linux" -type f | wc -l)
[ "$count" -gt 0 ] || { echo 'the recipes wrote nothing' >&2; exit 1; }
diff -r "$out/linux" "$out/win32"
diff -r "$out/linux" "$out/win64"
echo "$count files of $(printf '%s\n' "$recipes" | wc -l) recipes are the same in the three builds"
