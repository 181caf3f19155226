#!/usr/bin/env bash
# The reader that is handed out for Windows says what the native one says, of a file whose path is
# beyond ASCII and whose end is beyond 4 GiB.
set -euo pipefail
# shellcheck source=tests/tools/commands.sh
. "$(dirname "${BASH_SOURCE[0]}")/commands.sh"

mkdir Prüfung
file=Prüfung/監視.60D
"$make" --sparse --blocks 2050 --dense 2050-2050 --text-every 2 --sound-every 3 "$file" >/dev/null
"$make" --blocks 2 short.60D >/dev/null
for options in "--list-images --blocks 2049-2050 $file" "--json short.60D"; do
  # shellcheck disable=SC2086
  "$list" $options >native
  # shellcheck disable=SC2086
  "$top/scripts/under_wine" "$top/build/windows/list_recording.exe" $options >windows ||
    fail "$(cat windows)"
  tr -d '\r' <windows | cmp - native || fail "the reader for Windows says something else"
done
