#!/usr/bin/env bash
# Fuzzes the whole converter with AFL++ for N minutes (Debian package afl++).
#
#   bash fuzz/converter/run.sh [MINUTES] [OUT_DIR] [INSTANCES]
#                             (defaults: 30, build/fuzz-converter/out, 1; more instances share OUT_DIR)
#
# Builds lpconv_fuzz (harness.cpp: the converter with the NaN abort as exit status 3) with
# afl-clang-fast++, AddressSanitizer and UndefinedBehaviorSanitizer into build/fuzz-converter, then
# runs afl-fuzz on a copy of seeds/ with dictionary.txt. Every crash or hang is a finding: replay
# it with `build/fuzz-converter/lpconv_fuzz FILE.lp` and keep it as an end-to-end case.
# `replay.sh` compares a corpus against the literal reference converter.
set -euo pipefail
cd "$(dirname "$0")/../.."
minutes=${1:-30}
build=build/fuzz-converter
out=${2:-$build/out}

export AFL_USE_ASAN=0
cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo -DBUILD_TESTING=OFF \
  -DLPCONV_SANITIZE=ON -DCMAKE_CXX_COMPILER=afl-clang-fast++ >/dev/null
cmake --build "$build" -j2 --target lpconv_converter >/dev/null
afl-clang-fast++ -std=c++20 -O1 -g -I. -fsanitize=address,undefined -fno-sanitize-recover=undefined \
  fuzz/converter/harness.cpp "$build"/lpconv/converter/liblpconv_converter.a \
  "$build"/lpconv/containers/liblpconv_containers.a "$build"/lpconv/numbers/liblpconv_numbers.a \
  "$build"/lpconv/util/liblpconv_util.a -lgmp -o "$build/lpconv_fuzz"

# The converter writes model.opt beside its input: both live in a scratch folder of their own.
scratch=$(mktemp -d "${TMPDIR:-/tmp}/lpconv-fuzz.XXXXXX")
mkdir -p "$out"
input=seeds
[ -d "$out/default/queue" ] && input=-   # resume an earlier run
export AFL_SKIP_CPUFREQ=1 AFL_NO_UI=1 AFL_I_DONT_CARE_ABOUT_MISSING_CRASHES=1
export ASAN_OPTIONS=abort_on_error=1:symbolize=0:detect_leaks=0
for ((i = 2; i <= ${3:-1}; i++)); do
  timeout --preserve-status $((minutes * 60 + 30)) afl-fuzz -i fuzz/converter/seeds -o "$out" \
    -S "extra$i" -x fuzz/converter/dictionary.txt -m none -t 2000 -V $((minutes * 60)) \
    -f "$scratch/extra$i.lp" -- "$build/lpconv_fuzz" "$scratch/extra$i.lp" >/dev/null 2>&1 &
done
timeout --preserve-status $((minutes * 60 + 30)) \
  afl-fuzz -i "$( [ "$input" = - ] && echo - || echo fuzz/converter/seeds)" -o "$out" \
  -x fuzz/converter/dictionary.txt -m none -t 2000 -V $((minutes * 60)) \
  -f "$scratch/model.lp" -- "$build/lpconv_fuzz" "$scratch/model.lp" || true
wait
rm -rf "$scratch"
afl-whatsup -s "$out" 2>/dev/null || true
echo "crashes: $(ls "$out"/*/crashes 2>/dev/null | grep -c id: || true)"
echo "hangs:   $(ls "$out"/*/hangs 2>/dev/null | grep -c id: || true)"
