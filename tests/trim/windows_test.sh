#!/usr/bin/env bash
# The command for Windows saves what the native one saves, and says the same, of files whose paths
# are beyond ASCII, long, relative, or written with slashes.
set -euo pipefail
# shellcheck source=tests/tools/commands.sh
. "$(dirname "${BASH_SOURCE[0]}")/../tools/commands.sh"

"$make" --cameras 1-3 --text-every 2 --sound-every 3 監視.60D >/dev/null
"$make" --cameras 1-3 --damage sectors-reversed@2 damaged.60D >/dev/null
"$make" day.20D >/dev/null
deep=$(printf '%0100d/%0100d/%0100d' 1 2 3)
# What both programs are asked for, in folders of their own.
cat >commands <<COMMANDS
../監視.60D Größe.60D
../監視.60D Größe.60D
../監視.60D Größe.60D --replace --from 2021-03-04T12:00:30 --to 2021-03-04T12:02:00
../監視.60D $deep/some.60D --cameras 1,3
../damaged.60D damaged.60D --cameras 2
../damaged.60D none.60D --cameras 9
../day.20D day.20D --blocks 2-3
../day.20D day.20D --blocks 2-3 --replace --cameras 2
../day.20D none.20D --clip --from 2021-03-05T12:00:00
../day.20D none/none.20D
../day.20D none.60D
../day.20D ../day.20D --replace
COMMANDS
cat >run_all <<'RUN'
mkdir -p "$2/$3"
cd "$2"
while read -r options; do
  $1 $options 2>&1
  echo "ended with $?"
done <../commands >>said
RUN
bash run_all "$trim" native "$deep"
"$top/scripts/under_wine" bash run_all "wine $top/build/windows/trim_recording.exe" windows "$deep"
sed -i 's/\r$//; /^wine: /d' windows/said
diff -r native windows || fail "the command for Windows does something else"
[ "$(grep -c 'ended with 0' native/said)" -eq 5 ] || fail "$(cat native/said)"
