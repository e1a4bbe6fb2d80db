#!/usr/bin/env bash
# Installs the Debian packages that are missing: `setup.sh build` for building the library and the
# demo, `setup.sh test` for the tests as well (the default).
set -euo pipefail

build_packages=(g++ cmake ninja-build)
test_packages=(googletest g++-mingw-w64-x86-64-posix wine wine64 xvfb xauth fonts-liberation
  clang clang-format clang-tidy libclang-rt-14-dev libbenchmark-dev gcovr python3 binutils)

case "${1:-test}" in
  build) wanted=("${build_packages[@]}") ;;
  test) wanted=("${build_packages[@]}" "${test_packages[@]}") ;;
  *) echo "usage: setup.sh [build|test]" >&2; exit 2 ;;
esac

missing=()
for package in "${wanted[@]}"; do
  state=$(dpkg-query -W -f='${db:Status-Status}' "$package" 2>/dev/null || true)
  [ "$state" = installed ] || missing+=("$package")
done
[ ${#missing[@]} -gt 0 ] || exit 0

as_root=()
if [ "$(id -u)" -ne 0 ]; then
  command -v sudo >/dev/null || { echo "Install as root: ${missing[*]}" >&2; exit 1; }
  as_root=(sudo)
fi
echo "Installing ${missing[*]}"
export DEBIAN_FRONTEND=noninteractive
log=$(mktemp)
trap 'rm -f "$log"' EXIT
if ! { "${as_root[@]}" apt-get update -qq &&
       "${as_root[@]}" apt-get install -y -qq --no-install-recommends "${missing[@]}"; } \
     >"$log" 2>&1; then
  tail -n 30 "$log" >&2
  exit 1
fi
