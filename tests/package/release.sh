#!/usr/bin/env bash
# Packs the release of this build for the tests of what is in it.
#
#   release.sh FOLDER    leaves the release in FOLDER, and its portable files in FOLDER/portable
set -euo pipefail
release=$(realpath -m "$1")

PACKAGE=$release "$(dirname "${BASH_SOURCE[0]}")/../../package"
(cd "$release" && sha256sum --check --quiet SHA256SUMS)
unzip -q -d "$release/portable" "$release"/*-portable.zip
