#!/usr/bin/env bash
# Builds everything under AddressSanitizer and UndefinedBehaviorSanitizer and runs every test.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/ensure-deps.sh
cmake -S . -B build/test -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo -DLPCONV_SANITIZE=ON -DLPCONV_BENCH=ON -DLPCONV_WERROR=ON -DLPCONV_PYTHON=ON >/dev/null
cmake --build build/test -j "$(nproc)"
ctest --test-dir build/test --output-on-failure -j "$(nproc)" "$@"
