#!/usr/bin/env bash
# Recordings far beyond every 32-bit limit, and blocks with as few and as many images as there can
# be: scans them, saves parts around the limits and at the far end, and has the independent reader
# compare the result. Prints one line a save.
# With ATTACK_SECONDS set also a recording of 1 TiB, which takes 2 GiB of the disk and a minute.
set -euo pipefail
# shellcheck source=tests/tools/commands.sh
. "$(dirname "${BASH_SOURCE[0]}")/../tests/tools/commands.sh"
saves=0

# Saves blocks of a source and compares. No cameras stand for all of them.
attack() {
  local source=$1 blocks=$2 cameras=${3-} same
  local target=saved.${source##*.} narrow=(--blocks "$blocks")
  [ -z "$cameras" ] || narrow+=(--cameras "$cameras")
  "$trim" "$source" "$target" "${narrow[@]}" >printed || fail "$source $blocks: $(cat printed)"
  same=$("$list" --compare --no-sha256 "${narrow[@]}" "$source" "$target") ||
    fail "$source $blocks: $same"
  echo "$(cat printed): $(tail -n 1 <<<"$same")"
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
  for range in 1024-1026 2048-2050 $((count - 2))-"$count" "$count"; do
    attack "$source" "$range"
    attack "$source" "$range" 1,3
  done
  attack "$source" 2040-2055 2
  # A camera that is not there: the pass over the whole recording, without a save.
  "$trim" "$source" "none.${source##*.}" --cameras 9 2>printed && fail "$source: saved what is not there"
  grep -q 'no images' printed || fail "$(cat printed)"
  rm "$source"
}

attack_limits 100GiB.60D 51200
attack_limits 100GiB.20D 51200
[ -z "${ATTACK_SECONDS-}" ] || attack_limits 1TiB.60D 524288

while read -r source options; do
  # shellcheck disable=SC2086
  "$make" --cameras 1-4 $options "$source" >/dev/null
  attack "$source" 1-100 2
  attack "$source" 1-100 1,2,3
done <<'EXTREMES'
one-image-a-block.60D --blocks 100 --images 1 --fill
one-image-a-block.20D --blocks 100 --images 1 --fill
246-images-a-block.60D --blocks 100 --images 246 --size 40-400
758-images-a-block.20D --blocks 100 --images 758 --size 40-400
EXTREMES
echo "FIGURE $saves saves compared"
