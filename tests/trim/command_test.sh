#!/usr/bin/env bash
# Saves parts of recordings with the command: they are the parts that were asked for, what cannot be
# is refused before anything is written, and the exit code tells how it went.
set -euo pipefail
# shellcheck source=tests/tools/commands.sh
. "$(dirname "${BASH_SOURCE[0]}")/../tools/commands.sh"

# Runs the command, and wants this exit code and one line with these words.
expect() {
  local code=$1 words=$2 ended=0
  shift 2
  "$trim" "$@" >printed 2>&1 || ended=$?
  [ "$ended" -eq "$code" ] || fail "$* ended with $ended, not $code: $(cat printed)"
  grep -qF -e "$words" printed || fail "no \"$words\" in what $* gave: $(cat printed)"
  [ "$(wc -l <printed)" -eq 1 ] || fail "$* gave more than a line: $(cat printed)"
}

# Wants blocks FIRST-LAST of a source, byte for byte.
expect_blocks() {
  local skipped=$(((${3%-*} - 1) * 2097152)) bytes=$(((${3#*-} - ${3%-*} + 1) * 2097152))
  [ "$(stat -c %s "$2")" -eq $bytes ] && cmp -s -n $bytes -i $skipped:0 "$1" "$2" ||
    fail "$2 is not blocks $3 of $1"
}

# Each block is ten minutes long: from 12:00:00 to 12:09:50, from 12:10:00, ... to 12:49:50.
make_sources() {
  local options=(--images 60 --step 10 --start 2021-03-04T12:00:00 --size 3000-9000)
  "$make" "${options[@]}" --blocks 5 --cameras 1-4 day.60D >/dev/null
  "$make" "${options[@]}" --blocks 2 --type 20 --cameras 1,3,17,18 32.60D >/dev/null
  "$make" "${options[@]}" --blocks 3 --cameras 1-4 --damage sectors-reversed@2 damaged.60D >/dev/null
  "$make" "${options[@]}" --blocks 3 --cameras 1-4 --damage type-unknown@2 lost.60D >/dev/null
  "$make" "${options[@]}" --blocks 2 day.20D >/dev/null
  # The clock is set back after the second block, and a camera is there at the end only.
  head -c 4194304 day.60D >back.60D
  "$make" "${options[@]}" --blocks 2 --cameras 1-5 later.60D >/dev/null
  cat later.60D >>back.60D
  head -c 3000000 day.60D >odd.60D
  head -c 4194304 /dev/zero | tr '\0' '\177' >noise.60D
  mkdir folder.60D
  mkfifo pipe.60D
}

whole_blocks_are_those_that_the_times_fall_into() {
  local source blocks options
  while read -r source blocks options; do
    # shellcheck disable=SC2086
    expect 0 ", blocks $blocks, " "$source" clip.60D --replace $options
    expect_blocks "$source" clip.60D "$blocks"
  done <<'RANGES'
day.60D 1-5
day.60D 2-4 --blocks 2-4
day.60D 3-3 --blocks 3
day.60D 1-5 --from 2021-03-04T12:00:00
day.60D 5-5 --from 2021-03-04T12:40:00
day.60D 2-3 --from 2021-03-04T12:19:59 --to 2021-03-04T12:20:00
day.60D 1-1 --to 2021-03-04T12:09:50
day.60D 2-2 --from 2021-03-04T12:10:00 --to 2021-03-04T12:19:50
day.60D 1-2 --clip --from 2021-03-03T23:00:00 --to 2021-03-04T12:10:00
day.60D 5-5 --clip --from 2021-03-04T12:49:50 --to 2021-03-05T00:00:00
day.60D 1-5 --clip --from 0001-01-01T00:00:00 --to 9999-12-31T23:59:59
day.60D 1-4 --cameras 1-4 --blocks 1-4
day.60D 1-4 --cameras 1-32 --blocks 1-4
32.60D 1-2 --cameras 1,3,17,18
back.60D 1-3 --from 2021-03-04T12:05:00 --to 2021-03-04T12:09:55
back.60D 1-4 --from 2021-03-04T12:05:00
RANGES
  expect 0 "clip.60D: 2021-03-04 12:10:00 to 2021-03-04 12:19:50, blocks 2-2, 2097152 bytes" \
    day.60D clip.60D --replace --from "2021-03-04 12:10:00" --to "2021-03-04 12:15:00"
  expect 0 "" day.20D clip.20D
  cmp day.20D clip.20D
}

some_cameras_are_rebuilt_and_losses_told() {
  expect 0 ", blocks 2-3, 60 images of cameras 1,3, " day.60D clip.60D --replace --cameras 1,3 \
    --blocks 2-3
  "$list" --compare day.60D clip.60D >printed || fail "$(cat printed)"
  expect 3 "The recording is damaged: 15 images could not be kept." damaged.60D clip.60D --replace \
    --cameras 2
  "$list" --compare damaged.60D clip.60D >printed || fail "$(cat printed)"
  expect 3 "The recording is damaged: 1 block could not be kept." lost.60D clip.60D --replace \
    --cameras 2
  expect 0 "images of camera 5," back.60D clip.60D --replace --cameras 5
}

names_may_have_any_byte() {
  "$trim" day.60D 'back\slash.60D' >/dev/null
  cmp day.60D 'back\slash.60D'
}

what_was_rebuilt_is_a_recording_again() {
  "$trim" day.60D two.60D --cameras 1,3 >/dev/null
  "$trim" two.60D copy.60D >/dev/null
  cmp two.60D copy.60D
  "$trim" two.60D one.60D --cameras 3 >/dev/null
  "$trim" day.60D once.60D --cameras 3 >/dev/null
  cmp one.60D once.60D
}

what_cannot_be_is_refused() {
  local code options words
  ln day.60D link.60D
  echo old >old.60D
  while IFS='|' read -r code options words; do
    # shellcheck disable=SC2086
    expect "$code" "trim_recording: $words" $options
  done <<'REFUSALS'
1|day.60D new.60D --from 2021-03-04T11:59:59|day.60D: The Start Time you selected falls outside the time range of the sorce file.
1|day.60D new.60D --from 2021-03-04T12:40:01|day.60D: The Start Time you selected falls outside
1|day.60D new.60D --to 2021-03-04T12:09:49|day.60D: The End Time you selected falls outside
1|day.60D new.60D --from 2021-03-04T12:20:00 --to 2021-03-04T12:20:00|day.60D: The Start Time should be earlier than the End Time!
1|day.60D new.60D --clip --from 2021-03-04T12:20:00 --to 2021-03-04T12:20:00|day.60D: The Start Time should be earlier
4|day.60D new.60D --clip --from 2021-03-04T12:49:51|day.60D: holds nothing
4|day.60D new.60D --clip --from 2021-03-04T12:09:51 --to 2021-03-04T12:09:59|day.60D: holds nothing
1|day.60D new.60D --blocks 4-6|day.60D: has only 5 blocks
1|day.60D new.60D --cameras 1,5,9|day.60D: no images in the range of cameras 5,9
1|back.60D new.60D --cameras 5 --blocks 1-2|back.60D: no images in the range of camera 5
1|32.60D new.60D --cameras 1,17|32.60D: camera 17 cannot be kept
1|odd.60D new.60D|odd.60D: This file is not a valid source file!
1|noise.60D new.60D|noise.60D: This file is not a valid source file!
1|none.60D new.60D|none.60D: Error reading file ... The recording is no longer there.
1|day.60D old.60D|old.60D: exists already
1|odd.60D old.60D|old.60D: exists already
1|day.60D folder.60D|folder.60D: exists already
1|day.60D folder.60D --replace|folder.60D: Error writing file ... A folder has this name.
1|day.60D pipe.60D --replace|pipe.60D: Error writing file ...
1|pipe.60D new.60D|pipe.60D: This file is not a valid source file!
1|day.60D none/new.60D|none/new.60D: Error writing file ... The folder does not exist.
1|day.60D link.60D --replace|link.60D: Error writing file ... The target is the recording itself.
1|day.60D ./day.60D --replace --cameras 1|./day.60D: Error writing file ... The target is the recording itself.
2|day.60D|TARGET is required
2|day.60D new.60D more|
2|day.60D new.60D --from 2021-02-29T12:00:00|"2021-02-29T12:00:00" is no time
2|day.60D new.60D --from 2021-03-04|"2021-03-04" is no time
2|day.60D new.60D --blocks 2-1|"2-1" is no range
2|day.60D new.60D --blocks 0-1|"0" is no number
2|day.60D new.60D --blocks 1-2 --to 2021-03-04T12:20:00|
2|day.60D new.60D --blocks 1-2 --clip|
2|day.60D new.60D --cameras 1,x|"x" is no number
2|day.60D new.60D --cameras 33|"33" is no number
2|day.60D new.60D --unknown|
2|day.60D new.20D|new.20D: the new file's name must end as the recording's does
REFUSALS
  [ ! -e new.60D ] && [ ! -e new.20D ] || fail "something was written"
  [ "$(cat old.60D)" = old ] && [ link.60D -ef day.60D ] || fail "something was replaced"
  "$trim" --version | grep -q '^trim_recording [0-9]' || fail "no version"
  "$trim" --help | grep -q '^  trim_recording .*--cameras' || fail "no example in the help"
}

# A person sees a bar, a script nothing but the line at the end.
the_bar_is_for_terminals() {
  "$trim" day.60D bar.60D 2>&1 >/dev/null | cmp - /dev/null || fail "it is not silent"
  script -qec "'$trim' day.60D bar.60D --replace" /dev/null >printed
  grep -q 'Saving \[#* *\] *[0-9]*%' printed || fail "no bar: $(cat printed)"
}

make_sources
whole_blocks_are_those_that_the_times_fall_into
some_cameras_are_rebuilt_and_losses_told
names_may_have_any_byte
what_was_rebuilt_is_a_recording_again
what_cannot_be_is_refused
the_bar_is_for_terminals
