#!/usr/bin/env bash
# Installs the Debian packages the build and the tests need (and any given as arguments), when
# one is missing.
set -euo pipefail
needed=(cmake ninja-build g++ pkg-config libgmp-dev zlib1g-dev libgtest-dev libbenchmark-dev
  pybind11-dev python3-dev python3-pytest python3-numpy python3-scipy python3-gmpy2 "$@")
missing=()
for pkg in "${needed[@]}"; do
  dpkg-query -W -f='${Status}' "$pkg" 2>/dev/null | grep -q 'install ok installed' || missing+=("$pkg")
done
if ((${#missing[@]})); then
  echo "installing missing packages: ${missing[*]}" >&2
  sudo_cmd=""
  [ "$(id -u)" -ne 0 ] && sudo_cmd="sudo"
  $sudo_cmd apt-get update -qq
  DEBIAN_FRONTEND=noninteractive $sudo_cmd apt-get install -y -qq "${missing[@]}"
fi
