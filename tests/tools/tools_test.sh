#!/usr/bin/env bash
# Makes recordings, lists and checks them, and shows that a comparison notices each
# thing that can be wrong in a saved file.
# Usage: tools_test.sh MAKE_RECORDING LIST_RECORDING
set -euo pipefail
make=$1
list=$2
# shellcheck source=tests/tools/workspace.sh
. "$(dirname "${BASH_SOURCE[0]}")/workspace.sh"

# Runs a command, wants that exit status, and that pattern in what it prints.
expect() {
  local status=$1 pattern=$2 found=0 printed
  shift 2
  printed=$("$@" 2>&1) || found=$?
  [ "$found" -eq "$status" ] || fail "exit status $found, not $status: $* gave: ${printed:0:500}"
  grep -q -e "$pattern" <<<"$printed" || fail "no \"$pattern\" in what $* gave: ${printed:0:500}"
}

recordings_are_the_same_each_time_and_listed_as_made() {
  "$make" --cameras 1-16 --text-every 3 --sound-every 4 --flags-every 5 --tight 30.60D >/dev/null
  "$make" --cameras 1-16 --text-every 3 --sound-every 4 --flags-every 5 --tight again.60D >/dev/null
  cmp 30.60D again.60D || fail "30.60D is not the same each time"
  expect 0 'same: 3 blocks' "$list" --compare 30.60D again.60D
  "$make" --images 758 --size 40-300 --text-every 100 small.20D >/dev/null
  expect 0 'images=758 ' "$list" --list-blocks small.20D
  "$make" --type 20 --images 40 --cameras 1-32 20.60D >/dev/null
  expect 0 '2.1 camera=9 time=2021-03-04T12:00:40 title="CAM 9"' "$list" --blocks 2 20.60D
  "$make" --type 00 --cameras 1-16 --titles 'Gate|Yard||Hall' 00.60D >/dev/null
  expect 0 'title="Yard"' "$list" 00.60D
}

# One changed property at a time, each against the same source.
comparison_notices_every_difference() {
  local common=(--blocks 1 --images 30 --text-every 3 --sound-every 4 --flags-every 5)
  local options=(--compare --cameras 1-4)
  "$make" "${common[@]}" source.60D >/dev/null
  expect 0 'same: 30 images' "$list" "${options[@]}" source.60D source.60D
  while IFS=: read -r pattern changes; do
    # shellcheck disable=SC2086
    "$make" "${common[@]}" $changes target.60D >/dev/null
    expect 1 "different: .*$pattern" "$list" "${options[@]}" source.60D target.60D
  done <<'CHANGES'
is missing:--images 29
more images:--images 31
title is "CAM2", not "CAM 1":--titles CAM2
time is:--start 2021-03-04T12:00:01
camera is 2:--cameras 2-4
flags is:--flags-every 6
text is "", not:--text-every 7
text is:--text-length 7
bytes of sound is:--sound-sectors 3
room for image bytes:--size 50000
video standard:--pal
CHANGES
}

# Overwrites one byte of a copy of the source: place, value in hex.
changed_copy() {
  cp source.60D target.60D
  printf "\\x$2" | dd of=target.60D bs=1 seek="$1" conv=notrunc status=none
}

comparison_notices_every_byte() {
  local trailer=$((0x1FFC00)) place
  for place in 3 28 100 "$((trailer + 7))" "$((trailer + 11))" "$((trailer + 12))" \
    "$((trailer + 17))" "$((trailer + 19))" "$((trailer + 21))" \
    "$((trailer + 31))"; do
    changed_copy "$place" 77
    expect 1 'different: ' "$list" --compare --cameras 1-4 source.60D target.60D
    expect 1 'different: ' "$list" --compare source.60D target.60D
  done
  changed_copy "$((trailer + 13))" 20
  expect 1 'wrong block type' "$list" --compare --cameras 1-4 source.60D target.60D
  changed_copy 100 77
  expect 1 'checksum' "$make" --check target.60D
}

# Sparse files keep their far end right, and cost next to nothing.
far_end_of_a_large_file() {
  "$make" --sparse --blocks 5000 --dense 4999-5000 --images 3 large.60D >/dev/null
  [ "$(stat -c %s large.60D)" -eq $((5000 * 2097152)) ] || fail "large.60D has a wrong size"
  [ "$(stat -c %b large.60D)" -lt 60000 ] || fail "large.60D is not sparse"
  expect 0 '^5000.3 camera=4 time=2021-03-04T13:23:23' "$list" --blocks 4999-5000 large.60D
  expect 0 '4000.1 .*title="HOLE"' "$list" --blocks 4000 large.60D
}

# Whatever is damaged, the reader ends by itself and says so, or lists what is left.
damaged_files_do_no_harm() {
  local kind name status
  for kind in $("$make" --help | sed '1,/^Kinds of damage/d' | awk '{ print $1 }'); do
    for name in damaged.60D damaged.20D; do
      "$make" --blocks 2 --size 40-9000 --text-every 2 --sound-every 3 --damage "$kind" "$name" \
        >/dev/null
      for action in "$list" "$make --check" "$list --compare --cameras 1-4 $name"; do
        status=0
        # shellcheck disable=SC2086
        $action "$name" >/dev/null 2>&1 || status=$?
        [ "$status" -le 2 ] || fail "$action ended with $status after $kind"
      done
    done
  done
  "$make" --damage sectors-reversed@2 damaged.60D >/dev/null
  expect 0 '^2.2 .*DAMAGED: has an empty extent' "$list" damaged.60D
  expect 0 '^1.2 .*title="CAM 2"' "$list" damaged.60D
}

recordings_are_the_same_each_time_and_listed_as_made
comparison_notices_every_difference
comparison_notices_every_byte
far_end_of_a_large_file
damaged_files_do_no_harm
