#!/usr/bin/env bash
# Times optinfo on a converted workload beside `wc -w` of the same file, in the same run.
#
#   bash bench/optinfo.sh [--vars N] [--pairs P] [--equations E] [--opt FILE] [--keep] [--no-build]
#
#   --vars, --pairs, --equations   the generated workload (default: the large one of run.sh,
#                                  20,000 variables, 10,000 pairs, 2,000 equations, ~480 MB)
#   --opt FILE    summarise this .opt file instead of generating one
#   --keep        keep the generated .lp and .opt files (their folder is printed)
#   --no-build    use the binaries already in build/bench
#
# Both programs read the file from the page cache (it is read once before the first timing);
# each time is the best of two tries. Target: optinfo <= 3 x wc -w, in wall time and in CPU
# time (user + system; on a shared machine the wall time also counts waiting for a core).
# Exit status: 0 when the target was met, 1 when a program failed, 3 when the target was missed.
set -euo pipefail
cd "$(dirname "$0")/.."

vars=20000
pairs=10000
equations=2000
opt=""
keep=0
build=1
while (($#)); do
  case "$1" in
    --vars) vars="$2"; shift 2 ;;
    --pairs) pairs="$2"; shift 2 ;;
    --equations) equations="$2"; shift 2 ;;
    --opt) opt="$2"; shift 2 ;;
    --keep) keep=1; shift ;;
    --no-build) build=0; shift ;;
    -h|--help) awk 'NR > 1 && !/^#/ { exit } NR > 1 { print }' "$0"; exit 0 ;;
    *) echo "optinfo.sh: unknown argument $1" >&2; exit 2 ;;
  esac
done

builddir=build/bench
if ((build)); then
  cmake -S . -B "$builddir" -G Ninja -DCMAKE_BUILD_TYPE=Release -DLPCONV_BENCH=ON \
    -DBUILD_TESTING=OFF >/dev/null
  cmake --build "$builddir" -j2 --target lpconv lp_generator optinfo >/dev/null
fi
optinfo="$PWD/$builddir/bin/optinfo"

if [ -z "$opt" ]; then
  workdir="$(mktemp -d "${TMPDIR:-/tmp}/optinfo-bench.XXXXXX")"
  if ((keep)); then trap 'echo "files kept in $workdir"' EXIT; else trap 'rm -rf "$workdir"' EXIT; fi
  echo "== lp_generator --vars $vars --pairs $pairs --equations $equations --nonzeros 20 --seed 1"
  "$builddir/bench/lp_generator" --vars "$vars" --pairs "$pairs" --equations "$equations" \
    --nonzeros 20 --seed 1 >"$workdir/model.lp"
  "$builddir/bin/lpconv" "$workdir/model.lp" >/dev/null 2>&1
  opt="$workdir/model.opt"
fi

# Runs a program with its output in $1 and "wall-seconds peak-KiB cpu-seconds" in $1.time.
timed() {
  local out="$1"; shift
  /usr/bin/time -f "%e %M %U %S" -o "$out.time" "$@" >"$out" 2>"$out.err" || {
    echo "FAILED: $*" >&2; cat "$out.err" >&2; exit 1; }
}
best() { awk -v a="$1" -v b="$2" 'BEGIN { print (b + 0 < a + 0) ? b : a }'; }

tmp="$(mktemp -d "${TMPDIR:-/tmp}/optinfo-times.XXXXXX")"
cat "$opt" >/dev/null
wc_time=""; wc_cpu=""; info_time=""; info_cpu=""; info_rss=""
for _ in 1 2; do
  timed "$tmp/wc" wc -w "$opt"
  read -r t _ u s <"$tmp/wc.time"
  wc_time=$(best "${wc_time:-$t}" "$t")
  c=$(awk -v u="$u" -v s="$s" 'BEGIN { print u + s }')
  wc_cpu=$(best "${wc_cpu:-$c}" "$c")
  timed "$tmp/info" "$optinfo" "$opt"
  read -r t rss u s <"$tmp/info.time"
  info_time=$(best "${info_time:-$t}" "$t")
  c=$(awk -v u="$u" -v s="$s" 'BEGIN { print u + s }')
  info_cpu=$(best "${info_cpu:-$c}" "$c")
  info_rss="$rss"
done

echo "   file $(stat -c %s "$opt") bytes, $(awk '{ print $1 }' "$tmp/wc") words"
sed 's/^/   /' "$tmp/info"
awk -v w="$wc_time" -v o="$info_time" -v wc="$wc_cpu" -v oc="$info_cpu" -v rss="$info_rss" 'BEGIN {
  printf "   wall: wc -w %.2f s, optinfo %.2f s, optinfo / wc = %.2f\n", w, o, (w > 0 ? o / w : 0)
  printf "   cpu:  wc -w %.2f s, optinfo %.2f s, optinfo / wc = %.2f\n", wc, oc, (wc > 0 ? oc / wc : 0)
  printf "   optinfo peak RSS %.1f MB\n", rss * 1024 / 1e6
  met = o <= 3 * w && oc <= 3 * wc
  printf "   target optinfo <= 3 x wc -w: %s\n", met ? "met" : "MISSED"
  exit met ? 0 : 3
}' || { rm -rf "$tmp"; exit 3; }
rm -rf "$tmp"
