#!/bin/sh
# Has the program write every example as a logic program, and reads these with a Prolog system.
#   tests/problog/run.sh <program> <folder for the programs>
# Without SWI-Prolog it ends with 77, which the test driver counts as skipped; with FTS_ALL_TESTS
# set, as in the gate, a missing SWI-Prolog is a failure.
set -eu
program=$1
folder=$2
here=$(cd "$(dirname "$0")" && pwd)
checkout=$here/../..

if ! command -v swipl >/dev/null; then
  echo "swipl is missing: run scripts/setup.sh test"
  [ -z "${FTS_ALL_TESTS:-}" ] || exit 1
  exit 77
fi

check() {
  swipl -q -f none -s "$here/check.pl" -g main -t 'halt(1)' -- "$@"
}

rm -rf "$folder"
mkdir -p "$folder/bad"
cd "$folder"

# A check that lets anything pass would find nothing.
refused() {
  printf '%s\n' "$2" >"bad/$1.txt"
  if check "bad/$1.txt" >"bad/$1.log" 2>&1; then
    echo "$1: was not refused: $2"
    exit 1
  fi
}
refused no-operator 'basicEvent(null, a)basicEvent(null, b).'
refused variable '0.5::basicEvent(null, A).'
refused unknown-fact 'basicEvents(null, a).'
refused unknown-event '1::hazard(h) :- basicEvent(null, a).'
refused unknown-port '1::hazard(h) :- deviation(omission, p).'
refused half-a-body '0.5::basicEvent(null, a). 1::hazard(h) :- basicEvent(null, a) & .'

# Two models may have one name, and a program is called after it: each has a folder of its own. Models
# without a top event, which are there to be searched, have no program.
models=0
for model in "$checkout"/examples/*/*.xml "$checkout"/tests/models/exchange.xml; do
  own=$folder/$(basename "$(dirname "$model")")-$(basename "$model" .xml)
  mkdir -p "$own"
  cd "$own"
  "$program" "$model" outputtype=PROBLOG outputdir="$own" analyse=false displayOutput=false >log 2>&1
  grep -q '^No fault trees present' log || models=$((models + 1))
done
cd "$folder"
programs=$(ls ./*-*/*.txt | wc -l)
if [ "$programs" -ne "$models" ]; then
  echo "$models models have become $programs programs"
  exit 1
fi
check ./*-*/*.txt
