#!/bin/sh
# No folder includes what docs/levels.txt does not allow it, so nothing includes what stands above it;
# the table allows nothing that nobody uses, and has a row for each folder with sources; the list and
# the picture in docs/ are those of the table. Outside the tests Windows' own headers stand in .Win files
# alone.
set -eu
failed=0

sources=$(mktemp); trap 'rm -f "$sources"' EXIT
find . \( -path ./build -o -path ./deps -o -path ./out -o -path './.*' \) -prune -o -type f \
  \( -name '*.h' -o -name '*.cpp' -o -name '*.rc' -o -name '*.h.in' -o -name '*.def' \) -print |
  sed 's#^\./##' | LC_ALL=C sort > "$sources"

{ sed 's/^/file /' "$sources"
  xargs grep -HnE '^[[:space:]]*#[[:space:]]*include[[:space:]]*"' < "$sources" |
    sed -E 's/^([^:]+):([0-9]+):[^"]*"([^"]+)".*/include \1 \2 \3/'
} | awk -v table=docs/levels.txt '
  # The row that has a file: the longest that its path begins with; empty if there is none.
  function rowOf(path) {
    while (sub("/[^/]*$", "", path)) if (path in row) return path
    return ""
  }
  # A path from the root of the tree; quoted names without a folder are beside the file.
  function resolve(file, name) {
    if (name ~ "^[.]" || name !~ "/") {
      sub("[^/]*$", "", file)
      name = file name
      while (sub("[^/.]+/[.][.]/", "", name)) {}
    }
    return name
  }
  function complain(text) { print text > "/dev/stderr"; failed = 1 }
  BEGIN {
    while ((getline line < table) > 0) {
      if (line ~ "^(#|$)") continue
      split(line, field, " *[|] *")
      row[field[1]] = 1
      names[++rows] = field[1]
      if (field[2] == "all") {
        uses[field[1]] = plain
      } else {
        uses[field[1]] = field[2]
        exact[field[1]] = 1
        plain = plain " " field[1]
      }
    }
    if (!rows) complain(table " has no rows")
  }
  $1 == "file" {
    owner = rowOf($2)
    if (owner == "") complain($2 ": its folder has no row in " table)
    else ++sources[owner]
  }
  $1 == "include" {
    owner = rowOf($2)
    target = resolve($2, $4)
    if (owner == "" || rowOf(target) == owner) next
    count = split(uses[owner], allowed, " ")
    best = ""
    for (i = 1; i <= count; ++i)
      if (target == allowed[i] || rowOf(target) == allowed[i]) best = allowed[i]
    if (best == "") complain($2 ":" $3 ": " owner "/ may not include " target)
    else used[owner, best] = 1
  }
  END {
    for (r = 1; r <= rows; ++r) {
      owner = names[r]
      if (!sources[owner]) complain(table ": " owner " has no sources")
      if (!exact[owner]) continue
      count = split(uses[owner], allowed, " ")
      for (i = 1; i <= count; ++i)
        if (!((owner, allowed[i]) in used))
          complain(table ": " owner " may include " allowed[i] ", and does not need it")
    }
    exit failed
  }' || failed=1

scripts/draw-levels --check || failed=1

wrong=$(grep -vE '^tests/|\.Win\.(h|cpp)$|\.rc$' "$sources" | xargs \
  grep -lE '#include <(windows|commctrl|commdlg|windowsx|shellapi|shlobj)\.h>' || true)
if [ -n "$wrong" ]; then
  printf 'These files include Windows headers and are no .Win files:\n%s\n' "$wrong" >&2
  failed=1
fi
exit $failed
