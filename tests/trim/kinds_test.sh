#!/usr/bin/env bash
# Saves parts of recordings of every kind, whole blocks and chosen cameras, and has the independent
# reader compare what came out with the source.
set -euo pipefail
# shellcheck source=tests/tools/commands.sh
. "$(dirname "${BASH_SOURCE[0]}")/../tools/commands.sh"

# Saves blocks of a source, some cameras of them or all.
check_save() {
  local source=$1 blocks=$2
  local target=saved.${source##*.}
  "$trim" "$source" "$target" --replace --blocks "$blocks" "${@:3}" >printed 2>&1 ||
    fail "$*: $(cat printed)"
  "$list" --compare --blocks "$blocks" "$source" "$target" >printed 2>&1 || fail "$*: $(cat printed)"
  "$make" --check "$target" >printed || fail "$*: $(tail -1 printed)"
}

# Of recordings of one image a block only a longer range holds more than one camera.
while read -r source ranges cameras options; do
  # shellcheck disable=SC2086
  "$make" $options "$source" >/dev/null
  "$make" --check "$source" >printed || fail "$source: $(tail -1 printed)"
  for blocks in ${ranges//,/ }; do
    check_save "$source" "$blocks" --cameras "$cameras"
    check_save "$source" "$blocks"
  done
done <<'KINDS'
00.60D 1-3,2-2 1,4 --type 00 --cameras 1-16 --titles Gate|Yard||Hall --flags-every 3
00-no-tails.60D 1-3,2-3 1,3 --type 00 --cameras 1-16 --titles Gate|Yard||Hall --no-tails
10-no-tails.60D 1-3,2-2 2,3 --type 10 --no-tails --pal --titles |A_title_of_16_by|
20.60D 1-3,2-2 1,16 --type 20 --images 40 --cameras 1-32 --text-every 3 --sound-every 4 --flags-every 2
20-no-tails.60D 1-3,2-2 1,8 --type 20 --pal --images 40 --cameras 1-32 --text-every 3 --no-tails
30.60D 1-3,2-2,2-3 1,2,16 --cameras 1-16 --titles CAMERA_10|CAM_2|X --text-every 3 --sound-every 4 --step 0.1
mixed.60D 1-4,2-3 1,3,16 --type 20,00,30,10 --blocks 4 --cameras 1-16 --text-every 3 --sound-every 4
tight.60D 1-3,2-2 1,2 --cameras 1-16 --tight --text-every 3 --sound-every 4 --flags-every 5
full.60D 1-3,2-3 1,2 --fill --step 0.25 --pal
one.60D 1-3,2-3 2 --fill --images 1 --cameras 1,2
two.60D 1-3,2-2 2 --fill --images 2 --cameras 1,2 --text-every 2 --sound-every 2
small.60D 1-3,2-3 1,3 --images 246 --size 40-300
2040.60D 1-3,2-3 1,2 --start 2040-06-01T12:00:00
long-titles.60D 1-3,2-3 1,2 --titles A_title_of_forty_eight_bytes_which_is_the_longes|B
60.20D 1-3,2-2 1,16 --images 20 --cameras 1,3,16 --sound-every 2 --titles CAMERA_10|CAM_2
small.20D 1-3,2-3 1,2,3 --images 758 --size 40-300 --text-every 100
full.20D 1-3,2-2 2 --pal --fill --cameras 1-3
one.20D 1-3,2-3 2 --fill --images 1 --cameras 1,2
KINDS

# Damage costs what is damaged and nothing else.
for kind in count-huge count-more sectors-reversed sectors-same sectors-low sectors-high \
  stamps-negative text-huge text-negative text-unmarked type-unknown; do
  "$make" --cameras 1-3 --size 4000-9000 --text-every 2 --sound-every 3 --damage "$kind@2" \
    damaged.60D >/dev/null
  code=0
  "$trim" damaged.60D saved.60D --replace --cameras 1,2 >printed 2>&1 || code=$?
  [ "$code" -eq 0 ] || [ "$code" -eq 3 ] || fail "$kind: $(cat printed)"
  "$list" --compare damaged.60D saved.60D >printed || fail "$kind: $(cat printed)"
done
