#!/bin/sh
# Has the program write the results of every example and of one short search, and opens their pages in a
# browser. The XML files beside the pages say which figures have to be on them.
#   web/tests/run.sh <program> <folder for the pages>
# Without a browser it ends with 77, which the test driver counts as skipped; with
# FTS_ALL_TESTS set, as in the gate, a missing browser is a failure.
set -eu
program=$1
pages=$2
here=$(cd "$(dirname "$0")" && pwd)
examples=$here/../../examples

lacking() {
  echo "$1 is missing: run scripts/setup.sh test"
  [ -z "${FTS_ALL_TESTS:-}" ] || exit 1
  exit 77
}
command -v node >/dev/null || lacking node
[ -x "${CHROMIUM:-/usr/bin/chromium}" ] || lacking chromium
[ -d "$here/node_modules" ] || lacking web/tests/node_modules

rm -rf "$pages"
# With a display the program would open the pages of each example in the browser of whoever runs this.
for model in "$examples"/*/*.xml; do
  env -u DISPLAY -u WAYLAND_DISPLAY "$program" "$model" outputtype=XML,HTML outputdir="$pages" >/dev/null
done
# Results of a search are written only where a page may be opened; without a display none is.
env -u BROWSER -u DISPLAY -u WAYLAND_DISPLAY "$program" "$examples/sensor-network/sensor-network.xml" \
  optimise=true GAType=NSGA encodingType=FIXED maxGenerations=5 populationSize=unlimited randomSeed=1 \
  outputdir="$pages" displayOutput=true >/dev/null
exec node "$here/all.mjs" "$pages"/*-FMEAOutput "$pages"/*-OptimisationResults
