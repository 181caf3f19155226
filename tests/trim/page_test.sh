#!/usr/bin/env bash
# Runs the examples of docs/many-recordings.md that can be run here, as they stand there, on a folder
# of recordings.
set -euo pipefail
# shellcheck source=tests/tools/commands.sh
. "$(dirname "${BASH_SOURCE[0]}")/../tools/commands.sh"
page=$top/docs/many-recordings.md

# What the page has of a language, block by block; each block ends with an empty line.
examples() {
  awk -v fence='```'"$1" '$0 == fence { in_block = 1; next } $0 == "```" && in_block { in_block = 0; print "" }
    in_block' "$page"
}

# Stands for the scheduler: runs the jobs of an array one after the other.
make_sbatch() {
  cat >bin/sbatch <<'SBATCH'
#!/bin/sh
range=${1#--array=} last=${1#--array=*-} last=${last%\%*}
[ "$range" = "1-$last%8" ] || exit 2
for task in $(seq "$last"); do SLURM_ARRAY_TASK_ID=$task sh "$2" || echo "job $task: $?" >>jobs.txt; done
SBATCH
  chmod +x bin/sbatch
}

make_recordings() {
  mkdir recordings
  "$make" --blocks 3 "recordings/gate one.60D" >/dev/null
  "$make" --blocks 3 --start 2021-03-04T11:59:30 recordings/yard.20D >/dev/null
  "$make" --blocks 3 --start 2021-03-05 recordings/tomorrow.60D >/dev/null
  head -c 3000000 /dev/urandom >recordings/broken.60D
}

expect_results() {
  [ "$(ls clips | paste -sd ,)" = "gate one.60D,yard.20D" ] || fail "$1: clips are $(ls clips)"
  [ ! -e wrong.txt ] || fail "$1: wrong are $(cat wrong.txt)"
}

mkdir bin
ln -s "$list" bin/list_recording
ln -s "$trim" bin/trim_recording
make_sbatch
export PATH=$PWD/bin:$PATH
make_recordings
examples sbatch >trim.sbatch
examples sh >examples.sh
[ "$(grep -c xargs examples.sh)" -eq 1 ] && grep -q sbatch examples.sh || fail "examples are gone"
sh -eu examples.sh >printed 2>&1 || fail "$(cat printed)"
expect_results "all examples"
[ "$(cat failed.txt)" = "recordings/broken.60D: 1" ] || fail "failed are $(cat failed.txt)"
[ "$(wc -l <jobs.txt)" -eq 1 ] || fail "failed jobs are $(cat jobs.txt)"

# A part that is not what its recording holds is found.
printf x | dd of="clips/gate one.60D" bs=1 seek=5000 conv=notrunc status=none
awk -v RS= '/--compare/' examples.sh | sh -eu
[ "$(cat wrong.txt)" = "clips/gate one.60D" ] || fail "wrong are $(cat wrong.txt)"
