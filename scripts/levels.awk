# The table docs/levels.txt as a list for a document (-v form=list) or as a picture (-v form=picture).
# A folder's level is one more than the highest among those that it includes.
BEGIN { FS = " *[|] *" }
/^(#|$)/ { next }
{
  if (NF != 4) fail("not four fields")
  name[++rows] = $1; column[rows] = $3; what[rows] = $4; row[$1] = rows
  uses[rows] = ""
  if ($2 == "all") {
    uses[rows] = "all"; level[rows] = top + 1
  } else {
    count = split($2, used, " "); level[rows] = 0
    for (i = 1; i <= count; ++i) {
      folder = used[i]
      if (folder ~ "[.]h$") while (!(folder in row) && sub("/[^/]*$", "", folder)) {}
      if (!(folder in row) || row[folder] == rows) fail(used[i] " has no row before")
      if (level[rows] <= level[row[folder]]) level[rows] = level[row[folder]] + 1
      uses[rows] = uses[rows] (i > 1 ? ", " : "") used[i]
    }
  }
  if ($2 != "all" && level[rows] > top) top = level[rows]
  if (level[rows] > highest) highest = level[rows]
}
END {
  if (failed) exit 1
  if (form == "list") list(); else picture()
}

function fail(reason) {
  printf "docs/levels.txt:%d: %s\n", FNR, reason > "/dev/stderr"
  failed = 1
  exit 1
}

function list(  l, r) {
  for (l = 0; l <= highest; ++l)
    for (r = 1; r <= rows; ++r)
      if (level[r] == l)
        printf "- Level %d: **%s/**%s. %s\n", l, name[r], uses[r] == "" ? "" : " (" uses[r] ")", what[r]
}

# --- The picture: a row for each level, the highest first; boxes of a level share their column. ---

function setup() {
  left["all"] = 20; width["all"] = 1060; fill["all"] = "#e9e9ef"; stroke["all"] = "#7d7f95"
  left["host"] = 20; width["host"] = 240; fill["host"] = "#ece6f5"; stroke["host"] = "#8b70b5"
  left["plug-in"] = 270; width["plug-in"] = 520; fill["plug-in"] = "#dceeef"; stroke["plug-in"] = "#3d8792"
  left["tools"] = 800; width["tools"] = 280; fill["tools"] = "#fdf3dc"; stroke["tools"] = "#d3a544"
  left["aids"] = 20; width["aids"] = 240; fill["aids"] = fill["all"]; stroke["aids"] = stroke["all"]
  gap = 10; inset = 12; nameHeight = 24; lineHeight = 17; letter = 6.9; small = 6.3
}

# Wraps a text into lines[first...], and returns the number after the last.
function wrap(text, letters, lines, first,  words, count, i, line) {
  count = split(text, words, " "); line = words[1]
  for (i = 2; i <= count; ++i)
    if (length(line " " words[i]) > letters) { lines[first++] = line; line = words[i] }
    else line = line " " words[i]
  lines[first++] = line
  return first
}

function boxWidth(r) { return (width[column[r]] - gap * (shared[level[r], left[column[r]]] - 1)) / shared[level[r], left[column[r]]] }
function textLines(r, lines) { return wrap(what[r], int((boxWidth(r) - 2 * inset) / letter), lines, 1) - 1 }
function usesText(r) { return uses[r] == "" ? "" : "on " (uses[r] == "all" ? "all" : uses[r]) }
function usesLines(r, lines) { return uses[r] == "" ? 0 : wrap(usesText(r), int((boxWidth(r) - 2 * inset) / small), lines, 1) - 1 }
function boxHeight(r,  lines) { return inset + nameHeight + lineHeight * (textLines(r, lines) + usesLines(r, lines)) + inset / 2 }

function text(class, x, y, words) {
  gsub(/&/, "\\&amp;", words); gsub(/</, "\\&lt;", words)
  printf "  <text class=\"%s\" x=\"%d\" y=\"%d\">%s</text>\n", class, x, y, words
}

function box(r, x, y, height,  lines, count, i, c) {
  c = column[r]
  printf "  <rect x=\"%d\" y=\"%d\" width=\"%d\" height=\"%d\" rx=\"8\" fill=\"%s\" stroke=\"%s\" stroke-width=\"1.5\"/>\n", x, y, boxWidth(r), height, fill[c], stroke[c]
  x += inset; y += inset + 10
  text("name", x, y, name[r] "/")
  y += nameHeight - lineHeight
  count = textLines(r, lines)
  for (i = 1; i <= count; ++i) text("what", x, y += lineHeight, lines[i])
  count = usesLines(r, lines)
  for (i = 1; i <= count; ++i) text("uses", x, y += lineHeight, lines[i])
}

function picture(  l, r, y, tall, at) {
  setup()
  for (r = 1; r <= rows; ++r) {
    if (!(column[r] in left)) { printf "docs/levels.txt: no column %s\n", column[r] > "/dev/stderr"; exit 1 }
    ++shared[level[r], left[column[r]]]
  }
  y = 20
  for (l = highest; l >= 0; --l) {
    tall = 0
    for (r = 1; r <= rows; ++r) if (level[r] == l && boxHeight(r) > tall) tall = boxHeight(r)
    place[l] = y; height[l] = tall
    y += tall + gap
  }
  printf "<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 1100 %d\" width=\"1100\" height=\"%d\">\n", y + 30, y + 30
  print "  <!-- Made by scripts/draw-levels of docs/levels.txt. -->"
  print "  <title>The levels of the tree</title>"
  print "  <style>"
  print "    text { font-family: \"DejaVu Sans\", Verdana, \"Segoe UI\", sans-serif; fill: #26323a; }"
  print "    .name { font-size: 16px; font-weight: bold; }"
  print "    .what { font-size: 12.5px; }"
  print "    .uses { font-size: 11.5px; fill: #5c6670; font-style: italic; }"
  print "  </style>"
  printf "  <rect width=\"1100\" height=\"%d\" fill=\"#ffffff\"/>\n", y + 30
  for (l = highest; l >= 0; --l) {
    for (at in left) next_x[left[at]] = left[at]
    for (r = 1; r <= rows; ++r)
      if (level[r] == l) {
        box(r, next_x[left[column[r]]], place[l], height[l])
        next_x[left[column[r]]] += boxWidth(r) + gap
      }
  }
  text("uses", 20, y + 10, "A folder includes what stands in lower rows, and of these what its last line names.")
  print "</svg>"
}
