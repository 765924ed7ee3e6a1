#!/bin/sh
# docs/hosts.md has one row for each trait of the host, none for others, and names tests that there are.
set -eu
document=docs/hosts.md
failed=0
complain() {
  echo "$document: $*" >&2
  failed=1
}

traits=$(sed -n '/traitTexts = {{/,/^}};/s/^ *{"\([a-z0-9-]*\)",.*/\1/p' host/record/HostSettings.cpp)
count=$(printf '%s\n' "$traits" | wc -l)
[ "$count" -gt 10 ] || complain 'the traits of host/record/HostSettings.cpp cannot be read'
for trait in $traits; do
  rows=$(grep -c "^| \`$trait\` |" "$document" || true)
  [ "$rows" -eq 1 ] || complain "$rows rows for the trait $trait"
done
rows=$(grep -c '^| `' "$document")
[ "$rows" -eq "$count" ] || complain "$rows rows for $count traits"

# Each row ends with the names of tests, Suite.Name.
grep '^| `' "$document" | grep -vE '\| `[A-Za-z]+Test\.[A-Za-z0-9]+`(, `[A-Za-z]+Test\.[A-Za-z0-9]+`)* \|$' |
  grep . >&2 && complain 'a row names no test'
for test in $(grep -oE '`[A-Za-z]+Test\.[A-Za-z0-9]+`' "$document" | tr -d '`' | sort -u); do
  grep -rqE "TEST(_F|_P)?\(${test%%.*}, ${test#*.}\)" tests || complain "there is no test $test"
done

# Tests that run over all served traits leave out those of the second table, and only those.
served=$(sed -n '/^## Served/,/^## Not served/s/^| `\([a-z0-9-]*\)` .*/\1/p' "$document" | wc -l)
unserved=$(grep -oE 'host::Trait::[a-zA-Z]+' tests/support/ServedTraits.h | wc -l)
[ $((served + unserved)) -eq "$count" ] ||
  complain "$served traits are served and tests/support/ServedTraits.h leaves out $unserved, of $count"
exit $failed
