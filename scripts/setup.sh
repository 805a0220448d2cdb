#!/bin/sh
# Puts in place what a build needs: packages of the Debian distribution, and for the tests of the
# result pages two packages of the npm registry, as web/tests/package-lock.json names them.
#   scripts/setup.sh        compiler, build tools and libraries
#   scripts/setup.sh test   the same, and a browser, LibreOffice, an integer solver and a Prolog for the tests of results
#   scripts/setup.sh gate   the same, and the tools that .ci/run checks with
# With everything there it changes nothing, needs no network and takes no time.
set -eu
cd "$(dirname "$0")/.."

packages="g++ cmake ninja-build ccache libtinyxml-dev libminizip-dev zlib1g-dev \
libgtest-dev libgmock-dev libbenchmark-dev"
test_packages="chromium libreoffice-calc-nogui python3 glpk-utils swi-prolog-nox"
gate_packages="clang clang-format clang-tidy"

case "${1:-}" in
  "") ;;
  test) packages="$packages $test_packages" ;;
  gate) packages="$packages $test_packages $gate_packages" ;;
  *) echo "usage: scripts/setup.sh [test|gate]" >&2; exit 2 ;;
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
# Some have it from elsewhere, where one package brings both.
if [ -n "${1:-}" ]; then
  command -v node >/dev/null || missing="$missing nodejs"
  command -v npm >/dev/null || missing="$missing npm"
fi

install_packages() {
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
}

# The lock file beside the modules tells which state of it they are.
install_modules() {
  lock=web/tests/package-lock.json
  installed=web/tests/node_modules/.lock
  cmp -s "$lock" "$installed" && return
  echo "setup: installing the modules of web/tests"
  (cd web/tests && npm ci --ignore-scripts --no-audit --no-fund --loglevel=error >/dev/null)
  cp "$lock" "$installed"
}

[ -z "$missing" ] || install_packages
[ -z "${1:-}" ] || install_modules
