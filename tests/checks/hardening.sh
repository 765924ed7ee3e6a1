#!/bin/sh
# hardening.sh PRESET...: the linked plug-in has what protects its host's process from it. Looks at the
# file itself, and at the linker's map for the places of functions, whose names are not in the file.
set -eu
failed=0
complain() {
  echo "$file: $*" >&2
  failed=1
}

# guarded PATTERN: the calls of __stack_chk_fail in the objects whose paths match.
guarded() {
  awk -v pattern="$1" -v end="$stack_end" '
    # Of hexadecimal digits.
    function number(digits,    i, sum) {
      sum = 0
      for (i = 1; i <= length(digits); ++i)
        sum = sum * 16 + index("123456789abcdef", substr(digits, i, 1))
      return sum
    }
    FNR == NR {
      # Of the map: " .text$name  0x... 0x... object", the last three on a line of their own after a
      # long name.
      if ($1 ~ "^\\.text") { placed = 1 } else if ($1 !~ "^0x") { placed = 0 }
      if (placed && match($0, "0x[0-9a-f]+ +0x[0-9a-f]+ .*")) {
        split(substr($0, RSTART), part, " +")
        if ($NF ~ pattern) {
          from[++ranges] = number(substr(part[1], 3))
          to[ranges] = from[ranges] + number(substr(part[2], 3))
        }
      }
      next
    }
    {
      if ($2 != "call" || ($3 != end && $3 != "0x" end)) next
      place = number(substr($1, 1, length($1) - 1))
      for (i = 1; i <= ranges; ++i) if (place >= from[i] && place < to[i]) { ++calls; break }
    }
    END { print calls + 0 }' "$map" "$code"
}

code=$(mktemp); trap 'rm -f "$code"' EXIT
for preset; do
  file=build/$preset/shell/Zandermolite.8bf
  map=build/$preset/shell/Zandermolite.map
  case $preset in win32) objdump=i686-w64-mingw32-objdump ;; *) objdump=x86_64-w64-mingw32-objdump ;; esac
  headers=$($objdump -p "$file")
  wanted='DYNAMIC_BASE NX_COMPAT'
  case $preset in win32) wanted="$wanted NO_SEH" ;; *) wanted="$wanted HIGH_ENTROPY_VA" ;; esac
  for flag in $wanted; do
    printf '%s\n' "$headers" | grep -q "^[[:space:]]*$flag$" || complain "is not $flag"
  done
  printf '%s\n' "$headers" | grep -Eq 'Entry 5 0*[1-9a-f][0-9a-f]* .*Base Relocation' ||
    complain 'cannot be moved in memory'

  # What can be written cannot be run.
  $objdump -h "$file" | awk '
    NR % 2 == 0 { name = $2; next }
    / CODE/ && !/READONLY/ { print name; found = 1 }' > "$code" || true
  [ ! -s "$code" ] || complain "has code that can be written: $(cat "$code")"

  stack_end=$(awk '$2 ~ "^_+stack_chk_fail$" { sub("^0x0*", "", $1); print $1; exit }' "$map")
  if [ -z "$stack_end" ]; then
    complain 'does not guard its stack'
    continue
  fi
  # The plug-in's own, with the number drawn by the start-up code.
  grep -q 'StackGuard\.Win\.cpp\.obj' "$map" || complain 'has not the guard of its own'
  ! grep -q 'libssp\.a(ssp\.o)' "$map" || complain "has the compiler's guard"
  $objdump -d --no-show-raw-insn "$file" > "$code"
  for part in 'libjpeg\.a' 'libdialogbase\.a' 'libfiles\.a' 'libpaint\.a' 'libeditor'; do
    count=$(guarded "$part")
    [ "$count" -gt 0 ] || complain "$part is not guarded"
    echo "$file: $count checks of the guard in $part"
  done
done
exit $failed
