# Sourced first by the tests and attacks of the commands, all of which are called with
#
#   MAKE_RECORDING LIST_RECORDING TRIM_RECORDING
make=$1 list=$2 trim=$3
top=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
# shellcheck source=tests/tools/workspace.sh
. "$top/tests/tools/workspace.sh"
