#!/usr/bin/env bash
# Builds lpconv (optimised) and converts the bundled worked example.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/ensure-deps.sh
cmake -S . -B build/release -G Ninja -DCMAKE_BUILD_TYPE=Release -DBUILD_TESTING=OFF >/dev/null
cmake --build build/release --target lpconv
build/release/bin/lpconv examples/worked.lp
echo "--- examples/worked.opt:"
cat examples/worked.opt
