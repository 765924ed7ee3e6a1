# Shared by ./run and ./test.

heading() {
  printf '\n== %s\n' "$1"
}

# Configures a preset when its folder is new (later changes are CMake's own to notice) and builds it,
# giving way to tests that run meanwhile.
# build_preset PRESET [TARGET]...
build_preset() {
  preset=$1; shift
  heading "Building $preset"
  case $preset in win*) scripts/libraries-mingw.sh deps ;; esac
  [ -e "build/$preset/build.ninja" ] || cmake --preset "$preset" > "build-$preset.log" 2>&1 || {
    cat "build-$preset.log" >&2; rm -f "build-$preset.log"; return 1; }
  rm -f "build-$preset.log"
  if [ $# -gt 0 ]; then
    nice -n 10 cmake --build "build/$preset" --target "$@"
  else
    nice -n 10 cmake --build "build/$preset"
  fi
}

# run_tests PRESET JOBS [NICENESS]
run_tests() {
  heading "Testing $1"
  rm -rf "build/$1/results"
  mkdir -p "build/$1/results"
  nice -n "${3:-0}" ctest --preset "$1" -j"$2" || note_failure "$1"
}

# note_failure NAME: the closing line names it.
note_failure() {
  echo "$1" >> build/failed
}

# Ends the process group PID, if it is still there, when the script ends; PID alone while it has not founded
# its group yet. A group that is gone must not make a failure of it: under `set -e` the shell ends with the
# status of the trap's failed command.
# stop_group_at_exit PID
stop_group_at_exit() {
  # shellcheck disable=SC2064 # the group is this one, whatever the variable says later
  trap "kill -TERM -$1 2> /dev/null || kill -TERM $1 2> /dev/null || :" EXIT
  trap 'exit 130' INT TERM
}

# As CMakeLists.txt has it.
project_version() {
  sed -n 's/^project(.*VERSION \([0-9.]*\).*/\1/p' CMakeLists.txt
}

# Adds up the files that the test programs left, and prints the closing line.
# count_results PRESETS
count_results() {
  total=0; failed=0; skipped=0
  for preset in $1; do
    for file in "build/$preset/results"/*.xml; do
      [ -e "$file" ] || continue
      total=$((total + $(sum_attribute testsuites tests "$file")))
      failed=$((failed + $(sum_attribute testsuites failures "$file")))
      skipped=$((skipped + $(sum_attribute testsuite skipped "$file")))
    done
  done
  # A program that ended before it could write its file counts as one failure.
  if [ -e build/failed ]; then
    if [ "$failed" -eq 0 ]; then failed=1; total=$((total + 1)); fi
    printf '\nFailed: %s\n' "$(sort -u build/failed | tr '\n' ' ')"
  fi
  printf '\n%d passed, %d failed, %d skipped\n' $((total - failed - skipped)) "$failed" "$skipped"
}

# sum_attribute ELEMENT ATTRIBUTE FILE
sum_attribute() {
  sum=0
  for number in $(sed -n "s/^ *<$1 \(.* \)\{0,1\}$2=\"\([0-9]*\)\".*/\2/p" "$3"); do
    sum=$((sum + number))
  done
  echo "$sum"
}
