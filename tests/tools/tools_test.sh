#!/usr/bin/env bash
# Makes recordings of every state, has them reported and listed, and shows that a comparison finds a
# part's place and notices each thing that can be wrong in it.
set -euo pipefail
# shellcheck source=tests/tools/commands.sh
. "$(dirname "${BASH_SOURCE[0]}")/commands.sh"

# Saves some cameras of blocks of a recording.
save() {
  "$trim" "$1" "$2" --replace --blocks "$3" --cameras "$4" >/dev/null
}

# Runs a command, wants that exit status, and that pattern in what it prints.
expect() {
  local status=$1 pattern=$2 found=0 printed
  shift 2
  printed=$("$@" 2>&1) || found=$?
  [ "$found" -eq "$status" ] || fail "exit status $found, not $status: $* gave: ${printed:0:500}"
  grep -q -e "$pattern" <<<"$printed" || fail "no \"$pattern\" in what $* gave: ${printed:0:500}"
}

# Blocks FROM to LAST of a recording as they are.
blocks() {
  dd if="$1" of="$2" bs=2M skip=$(($3 - 1)) count=$(($4 - $3 + 1)) status=none
}

recordings_are_the_same_each_time_and_listed_as_made() {
  "$make" --cameras 1-16 --text-every 3 --sound-every 4 --flags-every 5 --tight 30.60D >/dev/null
  "$make" --cameras 1-16 --text-every 3 --sound-every 4 --flags-every 5 --tight again.60D >/dev/null
  cmp 30.60D again.60D || fail "30.60D is not the same each time"
  "$make" --images 758 --size 40-300 --text-every 100 small.20D >/dev/null
  expect 0 'images=758 ' "$list" --list-blocks small.20D
  "$make" --type 20 --images 40 --cameras 1-32 20.60D >/dev/null
  expect 0 '2.1 camera=9 time=2021-03-04 12:00:40 title="CAM 9"' \
    "$list" --list-images --blocks 2 --cameras 9 20.60D
  "$make" --type 00 --cameras 1-16 --titles 'Gate|Yard||Hall' 00.60D >/dev/null
  expect 0 'title="Yard"' "$list" --list-images 00.60D
  "$make" --damage sectors-reversed@2 damaged.60D >/dev/null
  expect 1 '^2.2 .*DAMAGED: has an empty extent' "$list" --list-images damaged.60D
  expect 1 '^block 2 .*DAMAGED: 93 images' "$list" --list-blocks damaged.60D
  # Nobody is to take what a few blocks are for what the recording is.
  expect 0 '^these blocks: whole$' "$list" --list-blocks --blocks 1 damaged.60D
  expect 2 'has only 3 blocks' "$list" --list-blocks --blocks 3-5 damaged.60D
}

# What a report says of a recording of each state, and how it ends.
reports_have_a_verdict() {
  local options=(--blocks 2 --images 6 --cameras 1,3)
  "$make" "${options[@]}" --titles $'Ga"te\xE4' whole.60D >/dev/null
  "$make" "${options[@]}" --damage sectors-same@1 --damage trailer-zero@2 damaged.60D >/dev/null
  "$make" "${options[@]}" --damage type-unknown alien.60D >/dev/null
  "$make" "${options[@]}" --type 20,30 mixed.60D >/dev/null
  "$make" "${options[@]}" --start '2028-01-19 03:14:02' late.60D >/dev/null
  head -c 3000000 whole.60D >cut.60D
  save whole.60D short.60D 1-2 3
  head -c 1000 whole.60D >tiny.60D
  while IFS=@ read -r status file pattern; do
    expect "$status" "$pattern" "$list" $file
  done <<'REPORTS'
0@whole.60D@^whole$
0@whole.60D@^Camera 1: "Ga\\x22te\\xE4", 6 images, 2021-03-04 12:00:00 to 2021-03-04 12:00:10$
0@--json whole.60D@"camera":1,"titles":\["Ga\\"te\\u00e4"\],"images":6,"first":"2021-03-04 12:00:00"
0@mixed.60D@block type 20 and 30$
0@late.60D@^Time: 2028-01-19 03:14:02 to 2028-01-19 03:14:13$
0@short.60D@^Images: 6$
1@damaged.60D@^damaged: 5 damaged images and 1 damaged block$
1@--json damaged.60D@"damagedImages":5,"damagedBlocks":1,"rest":0
1@cut.60D@^damaged: 902848 bytes behind the last block$
1@whole.60D cut.60D@^whole$
2@alien.60D@no recording
2@tiny.60D@no whole block
2@--compare whole.60D@two files
2@--output whole.60D cut.60D@exists
2@--cameras 33 whole.60D@from 1 to 32
2@--nonsense whole.60D@nonsense
2@missing.60D whole.60D@^whole$
REPORTS
  expect 0 "SHA-256 $(sha256sum <whole.60D | cut -d' ' -f1)" "$list" whole.60D
  expect 0 '' "$list" --output report whole.60D
  expect 0 '^whole$' cat report
  expect 0 'checked 12 images, 0 wrong' "$make" --check late.60D
}

# Parts are found wherever they lie, with what was left out told.
comparison_finds_the_place() {
  local place=' 2021-03-04 12:00:40 to 2021-03-04 12:01:18: 20 images, .* none added'
  "$make" --blocks 5 --images 20 --cameras 1-4 source.60D >/dev/null
  blocks source.60D part.60D 3 4
  expect 0 'part.60D holds blocks 3 to 4 of source.60D unchanged, .* 2021-03-04 12:01:19: 40 images' \
    "$list" --compare source.60D part.60D
  expect 1 'different: ' "$list" --compare --blocks 3-5 source.60D part.60D
  expect 1 'different: ' "$list" --compare part.60D source.60D
  save source.60D part.60D 3-4 1,3
  expect 0 "cameras 1 and 3 that source.60D holds in blocks 3 to 4, from$place" \
    "$list" --compare source.60D part.60D
  expect 0 '"firstBlock":3,"lastBlock":4,"cameras":\[1,3\],"images":20,' \
    "$list" --json --compare source.60D part.60D
  expect 1 'image 2 (camera 3, .* is not 3.2 of' "$list" --compare --cameras 1-3 source.60D part.60D
  expect 1 'more images' "$list" --compare --cameras 1 source.60D part.60D
  expect 1 'different: ' "$list" --compare --blocks 3-5 source.60D part.60D
  # The same blocks a second time before: where all fits decides.
  cat <(blocks source.60D /dev/stdout 3 3) source.60D >twice.60D
  expect 0 "in blocks 4 to 5, from$place" "$list" --compare twice.60D part.60D
  blocks source.60D whole.60D 3 4
  expect 0 'holds blocks 4 to 5' "$list" --compare twice.60D whole.60D
  # Images in another order, and damage.
  cat <(blocks source.60D /dev/stdout 4 4) <(blocks source.60D /dev/stdout 3 3) >turned.60D
  save turned.60D part.60D 1-2 1,3
  expect 1 'different: ' "$list" --compare source.60D part.60D
  "$make" --blocks 4 --damage sectors-same@2 --damage type-unknown@3 damaged.60D >/dev/null
  save damaged.60D part.60D 1-4 1,2 || [ $? -eq 3 ]
  expect 0 '^Not in it: .* damaged images and 1 damaged block\.$' \
    "$list" --compare damaged.60D part.60D
}

# One changed property at a time, each against the same source.
comparison_notices_every_difference() {
  local common=(--blocks 1 --images 30 --text-every 3 --sound-every 4 --flags-every 5)
  "$make" "${common[@]}" --blocks 2 source.60D >/dev/null
  while IFS=@ read -r pattern changes; do
    # shellcheck disable=SC2086
    "$make" "${common[@]}" --blocks 2 $changes other.60D >/dev/null
    save other.60D part.60D 1-1 1,2
    expect 1 "different: .*$pattern" "$list" --compare source.60D part.60D
  done <<'CHANGES'
is missing@--images 29
what follows is missing@--images 33
image 1 (camera 1, 2021-03-04 12:00:00, "CAM2") is not 1.1 of the source@--titles CAM2
begins as@--start 2021-03-04T12:00:01
image 3 (camera 1, 2021-03-04 12:00:03, .* is not 1.5@--cameras 1-3
its list is not that of its images: byte .* is 0., not 0.@--flags-every 6
image .* is not@--text-every 7
image .* is not@--text-length 7
image .* is not@--sound-sectors 3
image .* is not@--size 50000
video standard@--pal
CHANGES
}

# Overwrites one byte of a copy of a file, counted from its end where negative: file, place, in hex.
changed_copy() {
  local place=$2
  [ "$place" -ge 0 ] || place=$(($(stat -c %s "$1") + place))
  cp "$1" changed.60D
  printf "\\x$3" | dd of=changed.60D bs=1 seek="$place" conv=notrunc status=none
}

# Where a byte behind the first image's title lies.
behind_title() {
  "$list" --list-images "$1" | sed -n 's/^1\.1 .* size=\([0-9]*\) .*/\1/p' |
    { read -r size && echo $((size + 8 + 10)); }
}

comparison_notices_every_byte() {
  local place
  save source.60D part.60D 1-1 1,2
  expect 0 'same: 16 images' "$list" --compare source.60D part.60D
  for place in 3 28 100 $((-1024 + 7)) $((-1024 + 11)) $((-1024 + 12)) $((-1024 + 17)) \
    $((-1024 + 19)) $((-1024 + 21)) $((-1024 + 31)) $((-1024 + 34)) -1 "$(behind_title part.60D)"; do
    changed_copy part.60D "$place" 77
    expect 1 'different: ' "$list" --compare source.60D changed.60D
  done
  # Left-overs behind a title in the source are told, and are no difference.
  changed_copy source.60D "$(behind_title source.60D)" 77
  save changed.60D part.60D 1-1 1,2
  expect 0 '^Not in it: 1 left-over of other titles behind a title\.$' \
    "$list" --compare changed.60D part.60D
  blocks source.60D part.60D 2 2
  for place in 3 2000000 2096128 2097151; do
    changed_copy part.60D "$place" 77
    expect 1 'different: ' "$list" --compare source.60D changed.60D
  done
  changed_copy part.60D 100 77
  expect 1 'checksum' "$make" --check changed.60D
}

# Sparse files keep their far end right, and cost next to nothing.
far_end_of_a_large_file() {
  "$make" --sparse --blocks 5000 --dense 4999-5000 --images 3 large.60D >/dev/null
  [ "$(stat -c %s large.60D)" -eq $((5000 * 2097152)) ] || fail "large.60D has a wrong size"
  [ "$(stat -c %b large.60D)" -lt 60000 ] || fail "large.60D is not sparse"
  expect 0 '^5000.3 camera=4 time=2021-03-04 13:23:23' \
    "$list" --list-images --blocks 4999-5000 large.60D
  expect 0 '4000.1 .*title="HOLE"' "$list" --list-images --blocks 4000 large.60D
}

# Whatever is damaged, the reader ends by itself and says so, or lists what is left.
damaged_files_do_no_harm() {
  local kind name status
  for kind in $("$make" --help | sed '1,/^Kinds of damage/d' | awk '{ print $1 }'); do
    for name in damaged.60D damaged.20D; do
      "$make" --blocks 2 --size 40-9000 --text-every 2 --sound-every 3 --damage "$kind" "$name" \
        >/dev/null
      for action in "$list" "$list --list-images" "$make --check" "$list --compare $name"; do
        status=0
        # shellcheck disable=SC2086
        $action "$name" >/dev/null 2>&1 || status=$?
        [ "$status" -le 2 ] || fail "$action ended with $status after $kind"
      done
    done
  done
}

recordings_are_the_same_each_time_and_listed_as_made
reports_have_a_verdict
comparison_finds_the_place
comparison_notices_every_difference
comparison_notices_every_byte
far_end_of_a_large_file
damaged_files_do_no_harm
