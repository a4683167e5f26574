#!/usr/bin/env bash
# Runs one libFuzzer target for a number of minutes: scripts/fuzz.sh TARGET MINUTES [libFuzzer args]
# Configures build/fuzz with clang the first time. New corpus entries go to
# build/fuzz/corpus/TARGET (the seed corpus in fuzz/TARGET/corpus is read, never written);
# crashes, leaks and timeouts go to build/fuzz/findings/TARGET. The timeout is generous because
# the fuzzer runs at the lowest priority on a shared machine.
set -euo pipefail
cd "$(dirname "$0")/.."
if [[ $# -lt 2 ]]; then
  echo "usage: $0 TARGET MINUTES [libFuzzer args...]" >&2
  echo "targets: $(ls -d fuzz/*/corpus 2>/dev/null | cut -d/ -f2 | tr '\n' ' ')" >&2
  exit 2
fi
target=$1
minutes=$2
shift 2
build=build/fuzz
mkdir -p $build
# Two fuzzers may start at once: one configures and builds at a time.
exec 9>$build/.lock
flock 9
if [[ ! -f $build/build.ninja ]]; then
  cmake -S . -B $build -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo -DLPCONV_FUZZ=ON -DBUILD_TESTING=OFF \
    -DCMAKE_C_COMPILER=clang-14 -DCMAKE_CXX_COMPILER=clang++-14 \
    -DCMAKE_CXX_FLAGS="-fsanitize=fuzzer-no-link,address,undefined -fno-sanitize-recover=undefined -fno-omit-frame-pointer" \
    >/dev/null
fi
nice -n 19 cmake --build $build -j2 --target "fuzz_$target"
flock -u 9
corpus=$build/corpus/$target
findings=$build/findings/$target
mkdir -p "$corpus" "$findings"
dict=()
[[ -f fuzz/$target.dict ]] && dict=(-dict="fuzz/$target.dict")
exec nice -n 19 "$build/bin/fuzz_$target" "$corpus" "fuzz/$target/corpus" "${dict[@]}" \
  -max_total_time=$((minutes * 60)) -timeout=60 -rss_limit_mb=2048 -max_len=4096 \
  -artifact_prefix="$findings/" -print_final_stats=1 "$@"
