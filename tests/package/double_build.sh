#!/usr/bin/env bash
# Packs the release twice, from here and from a copy of the sources on what might be another machine,
# and wants the same bytes. Then signs it, and wants signatures that hold.
#
#   double_build.sh FOLDER    leaves the release in FOLDER, and its portable files in FOLDER/portable
set -euo pipefail
release=$(realpath -m "$1")
top=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
# shellcheck source=tests/tools/workspace.sh
. "$top/tests/tools/workspace.sh"
SOURCE_DATE_EPOCH=$(git -C "$top" log -1 --format=%ct)
export SOURCE_DATE_EPOCH

PACKAGE=$release "$top/package"
(cd "$release" && sha256sum --check --quiet SHA256SUMS)

mkdir "a copy"
(cd "$top" && git ls-files -z | xargs -0 cp --parents -t "$folder/a copy")
(umask 077 && TZ=Asia/Tokyo LC_ALL=C "a copy/package")
diff -r "$release" "a copy/build/package" || fail "two builds differ"
unzip -q -d "$release/portable" "$release"/*-portable.zip

openssl req -x509 -newkey rsa:2048 -nodes -keyout key.pem -out certificate.pem \
  -subj '/CN=Trimbrook tests' -addext extendedKeyUsage=codeSigning 2>/dev/null
"a copy/package" --sign key.pem certificate.pem
unzip -q -d signed "a copy"/build/package/*-portable.zip
for program in signed/*.exe "a copy"/build/package/*.exe; do
  osslsigncode verify -CAfile certificate.pem -in "$program" >printed 2>&1 ||
    fail "$program: $(cat printed)"
done
