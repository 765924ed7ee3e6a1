#!/bin/sh
# ./run and ./test explain themselves, and answer nonsense with one line and status 2; a script with a
# process group beside it ends with its own status and takes the group along.
set -eu
for command in ./run ./test; do
  $command --help | grep -q "^Usage: $command"
  status=0
  lines=$($command --nonsense 2>&1 > /dev/null) || status=$?
  [ "$status" -eq 2 ]
  [ "$(printf '%s\n' "$lines" | wc -l)" -eq 1 ]
done

# ended_beside COMMAND: the status of a script that passes while COMMAND runs in a group beside it; `group`
# is the group's leader.
ended_beside() {
  group=$(sh -euc '. scripts/build-lib.sh
    setsid "$@" > /dev/null 2>&1 & stop_group_at_exit $!; echo $!
    [ "$1" != true ] || wait $!' sh "$@")
}
ended_beside true
ended_beside sleep 1000
tries=0
# A zombie has ended; where nobody collects orphans, it stays.
while grep -qs '^State:.[^Z]' "/proc/$group/status"; do
  tries=$((tries + 1)); [ "$tries" -lt 100 ] || { kill "$group"; exit 1; }
  sleep 0.1
done
