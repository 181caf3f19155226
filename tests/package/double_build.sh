#!/usr/bin/env bash
# Packs the release from a copy of the sources on what might be another machine, and wants the same
# bytes as those that were packed here. Then signs it, and wants signatures that hold.
#
#   double_build.sh RELEASE STAMP
#
# What makes two builds differ lies in how they are built and packed, hardly in a line of the
# program: STAMP keeps what these files were when this passed last, and while they are the same the
# test is skipped (77).
set -euo pipefail
release=$(realpath "$1") stamp=$(realpath -m "$2")
top=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
# shellcheck source=tests/tools/workspace.sh
. "$top/tests/tools/workspace.sh"

inputs=$(cd "$top" && git ls-files -z -- package packaging scripts cmake resources docs tests/package \
  '*CMakeLists.txt' CMakePresets.json | xargs -0 sha256sum)
if [ "$inputs" = "$(cat "$stamp" 2>/dev/null)" ]; then
  echo "Nothing has changed by which two builds could differ"
  exit 77
fi

SOURCE_DATE_EPOCH=$(git -C "$top" log -1 --format=%ct)
export SOURCE_DATE_EPOCH
mkdir "a copy"
(cd "$top" && git ls-files -z | xargs -0 cp --parents -t "$folder/a copy")
(umask 077 && TZ=Asia/Tokyo LC_ALL=C "a copy/package")
diff -r --exclude=portable "$release" "a copy/build/package" || fail "two builds differ"

openssl req -x509 -newkey rsa:2048 -nodes -keyout key.pem -out certificate.pem \
  -subj '/CN=Trimbrook tests' -addext extendedKeyUsage=codeSigning 2>/dev/null
"a copy/package" --sign key.pem certificate.pem
unzip -q -d signed "a copy"/build/package/*-portable.zip
for program in signed/*.exe "a copy"/build/package/*.exe; do
  osslsigncode verify -CAfile certificate.pem -in "$program" >printed 2>&1 ||
    fail "$program: $(cat printed)"
done
echo "$inputs" >"$stamp"
