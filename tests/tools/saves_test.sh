#!/usr/bin/env bash
# Saves parts of recordings of every kind with the program's core, whole blocks and chosen cameras,
# and has the independent reader compare what came out with the source.
# Usage: saves_test.sh MAKE_RECORDING LIST_RECORDING SAVE_PART
set -euo pipefail
make=$1
list=$2
save=$3
# shellcheck source=tests/tools/workspace.sh
. "$(dirname "${BASH_SOURCE[0]}")/workspace.sh"

# Saves blocks of a source; no cameras stand for all of them.
check_save() {
  local source=$1 first=$2 last=$3 cameras=${4-}
  local target=saved.${source##*.}
  # shellcheck disable=SC2086
  "$save" "$source" "$target" "$first" "$last" ${cameras//,/ } >printed ||
    fail "$source $first-$last $cameras: $(cat printed)"
  "$list" --compare "$source" "$target" >printed ||
    fail "$source $first-$last $cameras: $(cat printed)"
  "$make" --check "$target" >printed || fail "$source $first-$last $cameras: $(tail -1 printed)"
}

while read -r source cameras options; do
  # shellcheck disable=SC2086
  "$make" $options "$source" >/dev/null
  "$make" --check "$source" >printed || fail "$source: $(tail -1 printed)"
  for range in "1 3" "2 2" "2 3"; do
    # shellcheck disable=SC2086
    check_save "$source" $range "$cameras"
    # shellcheck disable=SC2086
    check_save "$source" $range
  done
done <<'KINDS'
00.60D 1,4 --type 00 --cameras 1-16 --titles Gate|Yard||Hall --flags-every 3
00-no-tails.60D 1,3 --type 00 --cameras 1-16 --titles Gate|Yard||Hall --no-tails
10-no-tails.60D 2,3 --type 10 --no-tails --pal --titles |A_title_of_16_by|
20.60D 1,16 --type 20 --images 40 --cameras 1-32 --text-every 3 --sound-every 4 --flags-every 2
20-no-tails.60D 1,8 --type 20 --pal --images 40 --cameras 1-32 --text-every 3 --no-tails
30.60D 1,2,16 --cameras 1-16 --titles CAMERA_10|CAM_2|X --text-every 3 --sound-every 4 --step 0.1
mixed.60D 1,3,16 --type 20,00,30,10 --blocks 4 --cameras 1-16 --text-every 3 --sound-every 4
tight.60D 1,2 --cameras 1-16 --tight --text-every 3 --sound-every 4 --flags-every 5
full.60D 1,2 --fill --step 0.25 --pal
one.60D 1,2 --fill --images 1 --cameras 1,2
two.60D 2 --fill --images 2 --cameras 1,2 --text-every 2 --sound-every 2
small.60D 1,3 --images 246 --size 40-300
long-titles.60D 1,2 --titles A_title_of_forty_eight_bytes_which_is_the_longes|B
60.20D 1,16 --images 20 --cameras 1,3,16 --sound-every 2 --titles CAMERA_10|CAM_2
small.20D 1,2,3 --images 758 --size 40-300 --text-every 100
full.20D 2 --pal --fill --cameras 1-3
one.20D 1,2 --fill --images 1 --cameras 1,2
KINDS

# Here an open file can be deleted: nothing but the save's own care spares its source.
ln 30.60D link.60D
for target in 30.60D link.60D; do
  for cameras in "" 1; do
    # shellcheck disable=SC2086
    ! "$save" 30.60D "$target" 1 3 $cameras >printed || fail "saved $target over its own source"
    [ 30.60D -ef link.60D ] || fail "the save over $target deleted a name of its source"
  done
done

# Damage costs what is damaged and nothing else.
for kind in count-huge count-more sectors-reversed sectors-same sectors-low sectors-high \
  stamps-negative text-huge text-negative text-unmarked type-unknown; do
  "$make" --cameras 1-3 --size 4000-9000 --text-every 2 --sound-every 3 --damage "$kind@2" \
    damaged.60D >/dev/null
  "$save" damaged.60D saved.60D 1 3 1 2 >printed || fail "$kind: $(cat printed)"
  "$list" --compare damaged.60D saved.60D >printed || fail "$kind: $(cat printed)"
done
