# Sourced: gives a test or an attack a folder of its own to work in, and a way to fail.
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
cd "$folder"

fail() {
  echo "FAILED: $*" >&2
  exit 1
}
