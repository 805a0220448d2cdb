#!/bin/sh
# Builds the program, analyses the example of a brake-by-wire system and tells what was found.
set -eu
cd "$(dirname "$0")/.."

model=examples/brake-by-wire/brake-by-wire.xml
output=examples/brake-by-wire

scripts/setup.sh
cmake --preset release >/dev/null
cmake --build --preset release --target vtn

echo
echo "\$ build/release/bin/vtn $model outputtype=HTML,RESULTS"
rm -rf "$output"/brake-by-wire-FMEAOutput "$output"/brake-by-wire-Results
# The pages are not opened by themselves: there may be no screen.
console=$(BROWSER=true build/release/bin/vtn "$model" outputtype=HTML,RESULTS)

# The console tells of each tree its figures first, then its name and its cut sets by order.
printf '%s\n' "$console" | awk '
  /^\tUnavailability of / { unavailability = $3 }
  /^\tFrequency of /      { frequency = $3 }
  /^Cut Set Summary for: / {
    trees++
    printf "\n%s\n", substr($0, length("Cut Set Summary for: ") + 1)
    printf "  unavailability  %s\n  frequency       %s\n", unavailability, frequency
    printf "  minimal cut sets\n"
    summary = 1
    next
  }
  summary && /^[0-9]+: /  { printf "    of order %-4s %s\n", substr($1, 1, length($1) - 1), $2; next }
  summary && /^Total: /   { printf "    together      %s\n", $2; summary = 0 }
  END { if (!trees) { print "No fault tree came out of the run." > "/dev/stderr"; exit 1 } }
'

echo
echo "Look at the trees, cut sets and failure modes in a browser:"
echo "  $(pwd)/$output/brake-by-wire-FMEAOutput/Index.html"
echo "The same for programs, as one XML file:"
echo "  $(pwd)/$output/brake-by-wire-Results/Results.xml"
