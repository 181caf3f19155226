#!/usr/bin/env bash
# Recordings far beyond every 32-bit limit, and blocks with as few and as many images as there can
# be: scans them, saves parts around the limits and at the far end, and has the independent reader
# compare the result. Prints one line a save.
# Usage: big_recordings.sh MAKE_RECORDING LIST_RECORDING SAVE_PART
# With ATTACK_SECONDS set also a recording of 1 TiB, which takes 2 GiB of the disk and a minute.
set -euo pipefail
make=$1
list=$2
save=$3
saves=0
# shellcheck source=tests/tools/workspace.sh
. "$(dirname "${BASH_SOURCE[0]}")/../tests/tools/workspace.sh"

# Saves blocks of a source and compares. No cameras stand for all of them.
attack() {
  local source=$1 first=$2 last=$3 cameras=${4-} same
  local target=saved.${source##*.}
  local chosen=()
  [ -z "$cameras" ] || chosen=(--cameras "$cameras")
  # shellcheck disable=SC2086
  "$save" "$source" "$target" "$first" "$last" ${cameras//,/ } >printed ||
    fail "$source $first-$last: $(cat printed)"
  same=$("$list" --compare --no-sha256 "${chosen[@]}" --blocks "$first-$last" "$source" "$target" |
    tail -n 1) ||
    fail "$source $first-$last: $same"
  echo "$source blocks $first-$last cameras ${cameras:-all}: $same; $(paste -sd ';' printed)"
  rm "$target"
  saves=$((saves + 1))
}

# The limits: 2^31 bytes lie at the start of block 1025, 2^32 bytes at that of block 2049.
attack_limits() {
  local source=$1 count=$2
  shift 2
  "$make" "$@" --sparse --blocks "$count" --dense 1024-1026 --dense 2048-2050 \
    --dense $((count - 2))-"$count" --cameras 1-4 --step 0.5 --start 1990-01-01 \
    --text-every 5 --sound-every 7 "$source" >/dev/null
  local range
  for range in "1024 1026" "2048 2050" "$((count - 2)) $count" "$count $count"; do
    # shellcheck disable=SC2086
    attack "$source" $range
    # shellcheck disable=SC2086
    attack "$source" $range 1,3
  done
  attack "$source" 2040 2055 2
  # A camera that is not there: the pass over the whole recording, without a save.
  "$save" "$source" none 1 "$count" 9 >printed && fail "$source: saved images that are not there"
  [ ! -e none ] || fail "$source: left a file without images"
  echo "$source index of all blocks: $(paste -sd ';' printed)"
  rm "$source"
}

attack_limits 100GiB.60D 51200
attack_limits 100GiB.20D 51200
[ -z "${ATTACK_SECONDS-}" ] || attack_limits 1TiB.60D 524288

while read -r source options; do
  # shellcheck disable=SC2086
  "$make" --cameras 1-4 $options "$source" >/dev/null
  attack "$source" 1 100 2
  attack "$source" 1 100 1,2,3
done <<'EXTREMES'
one-image-a-block.60D --blocks 100 --images 1 --fill
one-image-a-block.20D --blocks 100 --images 1 --fill
246-images-a-block.60D --blocks 100 --images 246 --size 40-400
758-images-a-block.20D --blocks 100 --images 758 --size 40-400
EXTREMES
echo "FIGURE $saves saves compared"
