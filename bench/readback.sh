#!/usr/bin/env bash
# Reads text back through the library's readers and writes it again (bench/readback_benchmark.cpp),
# compares the bytes with cmp and puts the time of `wc -w` on the same file beside it.
#
#   bash bench/readback.sh [--opt FILE.opt] [--chunk-rows K] [--no-build]
#
# Without --opt: a random 1,000,000-element vector and a random 200,000 x 10 matrix. With --opt:
# the fourteen items of that converter output (make one with `bash bench/run.sh --only large
# --keep`); --chunk-rows K reads its matrices K rows at a time when they do not fit in memory.
# Target: identical bytes, reading at most 3 x the time of `wc -w`.
set -euo pipefail
cd "$(dirname "$0")/.."

opt=""
chunk=()
build=1
while (($#)); do
  case "$1" in
    --opt) opt="$2"; shift 2 ;;
    --chunk-rows) chunk=(--chunk-rows "$2"); shift 2 ;;
    --no-build) build=0; shift ;;
    *) echo "readback.sh: unknown argument $1" >&2; exit 2 ;;
  esac
done

builddir=build/bench
if ((build)); then
  cmake -S . -B "$builddir" -G Ninja -DCMAKE_BUILD_TYPE=Release -DLPCONV_BENCH=ON \
    -DBUILD_TESTING=OFF >/dev/null
  cmake --build "$builddir" -j2 --target readback_benchmark >/dev/null
fi
exe="$PWD/$builddir/bench/readback_benchmark"
workdir="$(mktemp -d "${TMPDIR:-/tmp}/lpconv-readback.XXXXXX")"
trap 'rm -rf "$workdir"' EXIT

now() { date +%s.%N; }
wc_seconds() {
  local start
  start=$(now)
  LC_ALL=C wc -w "$1" >/dev/null
  awk -v a="$start" -v b="$(now)" 'BEGIN { printf "%.3f", b - a }'
}

report() {
  local name="$1" input="$2" output="$3" times="$4"
  local words same
  words=$(wc_seconds "$input")
  if cmp -s "$input" "$output"; then same="identical bytes"; else same="BYTES DIFFER"; fi
  echo "$name: $(stat -c %s "$input") bytes; $times; wc -w $words s; $same"
}

if [ -n "$opt" ]; then
  times=$("$exe" opt "$opt" "$workdir/copy.opt" "${chunk[@]}")
  report "$(basename "$opt")" "$opt" "$workdir/copy.opt" "$times"
else
  times=$("$exe" vector 1000000 "$workdir/vector.txt" "$workdir/vector.out")
  report "vector 1,000,000" "$workdir/vector.txt" "$workdir/vector.out" "$times"
  rm -f "$workdir"/vector.*
  times=$("$exe" matrix 200000 10 "$workdir/matrix.txt" "$workdir/matrix.out")
  report "matrix 200,000 x 10" "$workdir/matrix.txt" "$workdir/matrix.out" "$times"
fi
