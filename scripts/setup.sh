#!/bin/sh
# Puts in place what a build needs: packages of the Debian distribution, nothing else.
#   scripts/setup.sh        compiler, build tools and libraries
#   scripts/setup.sh gate   the same, and the tools that .ci/run checks with
# With everything there it changes nothing, needs no network and takes no time.
set -eu

build_packages="g++ cmake ninja-build ccache libtinyxml-dev libminizip-dev zlib1g-dev \
libgtest-dev libgmock-dev libbenchmark-dev"
gate_packages="clang clang-format clang-tidy python3"

case "${1:-}" in
  "") packages=$build_packages ;;
  gate) packages="$build_packages $gate_packages" ;;
  *) echo "usage: scripts/setup.sh [gate]" >&2; exit 2 ;;
esac

if ! command -v dpkg-query >/dev/null; then
  echo "setup: this is no Debian system. Install the counterparts of: $packages" >&2
  exit 1
fi

missing=""
for package in $packages; do
  status=$(dpkg-query --show --showformat='${db:Status-Status}' "$package" 2>/dev/null || true)
  [ "$status" = installed ] || missing="$missing $package"
done
[ -n "$missing" ] || exit 0

if [ "$(id -u)" -eq 0 ]; then
  as_root=""
elif command -v sudo >/dev/null && sudo -n true 2>/dev/null; then
  as_root="sudo"
else
  echo "setup: these packages are missing and only root can install them:" >&2
  echo "  apt-get install --no-install-recommends$missing" >&2
  exit 1
fi

echo "setup: installing$missing"
$as_root apt-get update -qq
# shellcheck disable=SC2086  # The lists are words.
$as_root env DEBIAN_FRONTEND=noninteractive \
  apt-get install -y -qq --no-install-recommends $missing >/dev/null
