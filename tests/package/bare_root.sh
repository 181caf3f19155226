#!/usr/bin/env bash
# The tools for Linux run in a file system that holds nothing but them and a recording, and their
# object code links to the same programs.
#
#   bare_root.sh RELEASE MAKE_RECORDING
#
# Without root's rights, which it takes to make an empty file system a program's own, this is
# skipped (77).
set -euo pipefail
release=$(realpath "$1") make=$2
# shellcheck source=tests/tools/workspace.sh
. "$(dirname "${BASH_SOURCE[0]}")/../tools/workspace.sh"

if [ "$(id -u)" -ne 0 ]; then
  echo "Only root can change the root of the file system"
  exit 77
fi
tar --extract --gzip --strip-components=1 --file "$release"/trimbrook-tools-*-linux-x86_64.tar.gz
"$make" --blocks 3 --cameras 1-3 day.60D >/dev/null
bare() {
  env -i "$(command -v chroot)" "$folder" "$@"
}
bare /trim_recording /day.60D /blocks.60D --to "2021-03-04 12:02:00"
bare /list_recording --compare /day.60D /blocks.60D
bare /trim_recording day.60D cameras.60D --cameras 1,3
bare /list_recording --compare day.60D cameras.60D
for tool in trim_recording list_recording; do
  g++ -static -pthread -o relinked "relink/$tool.o"
  [ "$(./relinked --version)" = "$("./$tool" --version)" ] || fail "$tool cannot be linked anew"
done
