#!/bin/sh
# ./run and ./test explain themselves, and answer nonsense with one line and status 2.
set -eu
for command in ./run ./test; do
  $command --help | grep -q "^Usage: $command"
  status=0
  lines=$($command --nonsense 2>&1 > /dev/null) || status=$?
  [ "$status" -eq 2 ]
  [ "$(printf '%s\n' "$lines" | wc -l)" -eq 1 ]
done
