#!/usr/bin/env bash
# Whatever ends a save, under the target's name lies the old file or the whole new one, and nothing
# else is left; and "saved" means on the medium. Calls that fail are strace's work.
set -euo pipefail
# shellcheck source=tests/tools/commands.sh
. "$(dirname "${BASH_SOURCE[0]}")/../tools/commands.sh"

# Starts the command in the background. Shells let such jobs ignore SIGINT.
start() {
  env --default-signal=INT "$trim" "$@" >printed 2>&1 &
  job=$!
}

# Waits until the job has read so many bytes, or is no more.
await_read() {
  local bytes=0
  while [ "${bytes:-$1}" -lt "$1" ]; do
    bytes=$(sed -n 's/^rchar: //p' "/proc/$job/io" 2>/dev/null || true)
  done
}

# Wants the job to end with this code, words in what it printed, and no word of a shell's besides.
expect_end() {
  local ended=0
  wait "$job" 2>/dev/null || ended=$?
  [ "$ended" -eq "$1" ] || fail "ended with $ended, not $1: $(cat printed)"
  grep -q -e "$2" printed || fail "no \"$2\" in: $(cat printed)"
}

# Wants nothing but the old file in the target's folder.
expect_untouched() {
  [ "$(ls -A out)" = clip.60D ] || fail "$1 left $(ls -A out)"
  cmp -s old.60D out/clip.60D || fail "$1 changed the old file"
}

# Runs the command while a system call fails, or is noted. It may replace the old file unless
# "replace" is empty.
traced() {
  # A program that is traced cannot look for its leaks.
  ASAN_OPTIONS=detect_leaks=0 strace -f -qq -y -o trace "$@" "$trim" day.60D out/clip.60D \
    ${replace---replace} >printed 2>&1
}

signals_cancel() {
  local signal
  for signal in INT TERM HUP; do
    start long.60D out/clip.60D --replace
    await_read 10000000
    kill -$signal "$job"
    expect_end 1 cancelled
    expect_untouched "$signal"
  done
  # Who starts it with "nohup" wants it to go on.
  (trap '' HUP && exec "$trim" day.60D nohup.60D >printed) &
  job=$!
  await_read 1000000
  kill -HUP "$job" 2>/dev/null || true
  expect_end 0 "nohup.60D: "
}

a_source_that_shrinks_is_not_saved() {
  start long.60D out/clip.60D --replace
  await_read 30000000
  truncate -s 4194304 long.60D
  expect_end 1 'long.60D: Error reading file'
  expect_untouched "a short block"
}

kills_leave_the_old_file_or_the_new() {
  local i left
  for i in $(seq 16); do
    start day.60D out/clip.60D --replace
    await_read $((RANDOM * 2000))
    kill -KILL "$job" 2>/dev/null || true
    wait "$job" 2>/dev/null || true
    # Between its two names lies a moment: it is whole by then.
    for left in out/WAV*.tmp; do
      [ ! -e "$left" ] || cmp day.60D "$left"
      rm -f "$left"
    done
    [ "$(ls -A out)" = clip.60D ] || fail "kill $i left $(ls -A out)"
    cmp -s old.60D out/clip.60D || cmp -s day.60D out/clip.60D || fail "kill $i broke the target"
    cp old.60D out/clip.60D
  done
}

failing_calls_change_nothing() {
  local failure words
  while read -r failure words; do
    if traced -e "inject=$failure"; then fail "saved though $failure"; fi
    grep -q "clip.60D: Error writing file .*$words" printed || fail "$failure: $(cat printed)"
    expect_untouched "$failure"
  done <<'FAILURES'
fsync:error=EIO
linkat:error=EIO
FAILURES
}

# Strace's words for what the save does with names and the medium, in order.
calls() {
  sed -nE 's/^[0-9]+ +([a-z0-9]+)\(.*/\1/p' trace | uniq | paste -sd ' '
}

a_disk_that_takes_no_more_changes_nothing() {
  local ended=0
  (trap '' XFSZ && ulimit -f 8000 && exec "$trim" day.60D out/clip.60D --replace >printed 2>&1) ||
    ended=$?
  [ "$ended" -eq 1 ] && grep -q 'clip.60D: Error writing file' printed || fail "$(cat printed)"
  expect_untouched "a file that may not grow"
  if [ "$(id -u)" -ne 0 ]; then echo "No full disk: mounting one takes root"; return; fi
  mkdir small
  unshare --mount sh -c 'mount -t tmpfs -o size=20m none small && cp old.60D small/clip.60D &&
    ! "$0" day.60D small/clip.60D --replace >printed 2>&1 && cmp old.60D small/clip.60D &&
    [ "$(ls -A small)" = clip.60D ]' "$trim" || fail "full disk: $(cat printed)"
  grep -q 'space on the disk\|disk is full' printed || fail "$(cat printed)"
}

saved_is_on_the_medium() {
  local names=fsync,linkat,link,unlink,rename,renameat,renameat2
  traced -e trace=$names || fail "$(cat printed)"
  cmp day.60D out/clip.60D
  [[ $(calls) =~ fsync\ linkat\ rename[a-z0-9]*\ fsync$ ]] || fail "the calls were: $(calls)"
  sed -n '/rename/,$p' trace | grep -q 'fsync(.*/out>) *= 0' || fail "the folder is not synced"
  rm out/clip.60D
  # Without a rename that replaces nothing, and where neither locks nor a folder's sync are known.
  replace='' traced -e trace=$names,flock -e inject=renameat2:error=EINVAL \
    -e inject=flock:error=ENOLCK || fail "$(cat printed)"
  [[ $(calls) =~ renameat2\ link\ unlink\ flock\ fsync ]] || fail "the calls were: $(calls)"
  cmp day.60D out/clip.60D
  cp old.60D out/clip.60D
}

many_disturb_nothing() {
  local i
  mkdir many
  seq 8 | xargs -P 8 -I{} "$trim" day.60D many/{}.60D --blocks {}-12 >/dev/null || fail "8 onto 8"
  for i in $(seq 8); do
    tail -c +$(((i - 1) * 2097152 + 1)) day.60D | cmp - "many/$i.60D"
  done
  eight_onto_one 1
  [ "$(grep -c 'exists already' <<<"$ends")" -eq 7 ] || fail "not told: $ends"
  eight_onto_one 8 --replace
  rm many/one.60D
  eight_onto_one 8 --replace
}

# Wants so many of eight processes to win, and the last one's whole file.
eight_onto_one() {
  ends=$(seq 8 | xargs -P 8 -I{} sh -c \
    '"$0" day.60D many/one.60D --blocks {}-12 "$@" 2>&1; echo "end $?"' "$trim" "${@:2}")
  [ "$(grep -c '^end 0$' <<<"$ends")" -eq "$1" ] || fail "not $1 of 8 have won: $ends"
  [ "$(ls -A many | wc -l)" -eq 9 ] || fail "more than the files is left: $(ls -A many)"
  is_one_of_many
}

is_one_of_many() {
  local i
  for i in $(seq 8); do cmp -s "many/$i.60D" many/one.60D && return; done
  fail "none of the eight won whole"
}

permissions_are_those_of_any_new_file() {
  (umask 027 && "$trim" day.60D 640.60D >/dev/null)
  [ "$(stat -c %a 640.60D)" = 640 ] || fail "permissions are $(stat -c %a 640.60D)"
}

a_closed_output_is_no_failure() {
  "$trim" day.60D closed.60D >&- 2>&- || fail "not saved without an output"
  cmp day.60D closed.60D
}

# The system's helper is let go when the program ends, however it does.
the_machine_is_kept_awake() {
  mkdir bin
  printf '#!/bin/sh\necho "$@" >asleep\ncat\necho awake >>asleep\n' >bin/systemd-inhibit
  chmod +x bin/systemd-inhibit
  PATH=$PWD/bin:$PATH "$trim" day.60D awake.60D >/dev/null
  for _ in $(seq 100); do grep -qs '^awake' asleep && break; sleep 0.1; done
  grep -q -e '^--what=sleep' asleep && grep -q '^awake' asleep || fail "$(cat asleep)"
}

"$make" --blocks 12 --cameras 1-4 day.60D >/dev/null
"$make" --sparse --blocks 8192 long.60D >/dev/null
"$make" --blocks 2 old.60D >/dev/null
mkdir out
cp old.60D out/clip.60D
signals_cancel
a_source_that_shrinks_is_not_saved
kills_leave_the_old_file_or_the_new
failing_calls_change_nothing
a_disk_that_takes_no_more_changes_nothing
saved_is_on_the_medium
many_disturb_nothing
permissions_are_those_of_any_new_file
a_closed_output_is_no_failure
the_machine_is_kept_awake
