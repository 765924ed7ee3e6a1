#!/bin/sh
# wording.sh [FOLDER...]: comments keep to the words of docs/style.md, as far as a pattern can tell. Without
# a name it looks at all folders with sources.
set -eu
[ $# -gt 0 ] || set -- base bench dialogs editor fixtures files framework host hostapi paint plain raster recipe \
  resources shell tests
find "$@" \( -name '*.h' -o -name '*.cpp' -o -name '*.h.in' -o -name '*.rc' \) -type f | LC_ALL=C sort |
  xargs awk '
  function complain(advice) {
    printf "%s:%d: %s\n  %s\n", FILENAME, FNR, advice, $0 > "/dev/stderr"
    failed = 1
  }
  FNR == 1 { inside = 0 }
  {
    # The text of the comment on this line; "opens" when nothing of the comment stands before it.
    if (match($0, "^[ \t]*///?<?")) {
      text = substr($0, RLENGTH + 1)
      opens = !inside
      inside = text !~ "^[ \t]*$"
    } else {
      inside = 0
      if (!match($0, "[ \t;,{})]//(/<)? ")) next
      text = substr($0, RSTART + RLENGTH - 1)
      opens = 1
      inside = text !~ "[.:]$"
    }
    sub("^[ \t]+", "", text)
    padded = " " text " "
    gsub("[^A-Za-z0-9_]", " ", padded)
  }
  opens && text ~ "^(What|Of) " { complain("begin with the thing that is defined, not with What or Of") }
  padded ~ " [Aa]nswer(s|ed) " { complain("\"returns\", not \"answers\"") }
  { rest = padded; gsub(" (leav(e|es|ing)|left) ([a-z]+ )*behind ", " ", rest) }
  rest ~ " [Bb]ehind " { complain("\"after\", \"below\" or \"through\", not \"behind\"") }
  padded ~ " ([Cc]heap|[Dd]ear|[Qq]uick)(er|est)? way " { complain("\"fast path\", \"exact path\"") }
  padded ~ " [Dd]ear(er|est) " { complain("\"costly\", \"worst case\"") }
  padded ~ " goes on as if " { complain("\"wraps around\" or \"extrapolates\"") }
  padded ~ " [Mm]eant " { complain("\"intended\", with a full stop before") }
  padded ~ " button on " { complain("\"checked\"") }
  END { exit failed }'
