#!/bin/sh
# Builds the debug preset and runs all tests.
set -eu
cd "$(dirname "$0")/.."

scripts/setup.sh test
cmake --preset debug
cmake --build --preset debug
ctest --preset debug -j "$(nproc)"
