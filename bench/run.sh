#!/usr/bin/env bash
# Builds an optimised lpconv and the LP generator, converts three generated workloads and compares
# each run with the I/O floor of the same machine at the same moment.
#
#   bash bench/run.sh [--only large|pairing|longobj] [--keep] [--dir DIR] [--no-build] [--tries N]
#
#   --only W     run one workload (may be given more than once)
#   --keep       keep the generated .lp and .opt files (their folder is printed)
#   --dir DIR    put the files in DIR instead of a fresh temporary folder
#   --no-build   use the binaries already in build/bench
#   --tries N    run lpconv (and clp) N times and report the best wall time (default 3)
#
# Workloads and targets:
#   large    20,000 variables, 10,000 ">=" / "<=" pairs, 2,000 equations, 20 non-zeros per row
#            target: wall time <= 1.5 x I/O floor, below `clp FILE -quit` on the same file in
#            the same run (a peer LP reader; skipped when clp is not installed), peak RSS < 200 MB
#   pairing  200 variables, 100,000 pairs in shuffled order, 5 non-zeros per row: target < 2 s
#   longobj  one objective line over 1,000,000 variables and one pair of rows: target < 2 s
#
# The I/O floor is the time of `cat input > /dev/null` plus the time dd needs to write as many
# bytes as the .opt file has, each the best of three tries right after the run. MB here is 10^6 bytes. Exit status: 0 when every run succeeded and
# met its target, 1 when lpconv failed, 3 when a target was missed.
set -euo pipefail
cd "$(dirname "$0")/.."

only=()
keep=0
dir=""
build=1
tries=3
while (($#)); do
  case "$1" in
    --only) only+=("$2"); shift 2 ;;
    --keep) keep=1; shift ;;
    --dir) dir="$2"; shift 2 ;;
    --no-build) build=0; shift ;;
    --tries) tries="$2"; shift 2 ;;
    -h|--help) awk 'NR > 1 && !/^#/ { exit } NR > 1 { print }' "$0"; exit 0 ;;
    *) echo "run.sh: unknown argument $1" >&2; exit 2 ;;
  esac
done
((${#only[@]})) || only=(large pairing longobj)
for w in "${only[@]}"; do
  case "$w" in large|pairing|longobj) ;; *) echo "run.sh: unknown workload $w" >&2; exit 2 ;; esac
done

builddir=build/bench
if ((build)); then
  cmake -S . -B "$builddir" -G Ninja -DCMAKE_BUILD_TYPE=Release -DLPCONV_BENCH=ON \
    -DBUILD_TESTING=OFF >/dev/null
  cmake --build "$builddir" -j2 --target lpconv lp_generator >/dev/null
fi
lpconv="$PWD/$builddir/bin/lpconv"
generator="$PWD/$builddir/bench/lp_generator"
for exe in "$lpconv" "$generator"; do
  [ -x "$exe" ] || { echo "run.sh: $exe is missing (drop --no-build)" >&2; exit 2; }
done

if [ -n "$dir" ]; then
  mkdir -p "$dir"
  workdir="$(cd "$dir" && pwd)"
else
  workdir="$(mktemp -d "${TMPDIR:-/tmp}/lpconv-bench.XXXXXX")"
fi
cleanup() {
  if ((keep)); then
    echo "files kept in $workdir"
  elif [ -n "$dir" ]; then
    rm -f "$workdir"/*.lp "$workdir"/*.opt "$workdir"/*.out "$workdir"/*.err "$workdir"/*.time "$workdir"/*.try "$workdir"/clp.out \
      "$workdir"/floor.bytes
  else
    rm -rf "$workdir"
  fi
}
trap cleanup EXIT

now() { date +%s.%N; }
seconds_since() { awk -v a="$1" -v b="$(now)" 'BEGIN { printf "%.3f", b - a }'; }
least() { awk -v a="$1" -v b="$2" 'BEGIN { print (a == "" || b + 0 < a + 0) ? b : a }'; }

generator_args() {
  case "$1" in
    large) echo "--vars 20000 --pairs 10000 --equations 2000 --nonzeros 20 --seed 1" ;;
    pairing) echo "--vars 200 --pairs 100000 --equations 0 --nonzeros 5 --seed 2" ;;
    longobj) echo "--vars 1000000 --pairs 1 --equations 0 --nonzeros 5 --seed 3" ;;
  esac
}

# The status lines a correct conversion prints: "<=" rows, equations, variables.
expected_status_lines() {
  case "$1" in
    large) printf '|-> InEquations: 10000\n|-> Equations: 2000\n|-> Variables: 20000\n' ;;
    pairing) printf '|-> InEquations: 100000\n|-> Equations: 0\n|-> Variables: 200\n' ;;
    longobj) printf '|-> InEquations: 1\n|-> Equations: 0\n|-> Variables: 1000000\n' ;;
  esac
}

status=0
for w in "${only[@]}"; do
  lp="$workdir/$w.lp"
  opt="$workdir/$w.opt"
  echo "== $w: lp_generator $(generator_args "$w")"
  # shellcheck disable=SC2046
  "$generator" $(generator_args "$w") >"$lp"

  # Every try and the floor start with no dirty pages pending, so none pays for another's
  # write-back; the best try counts.
  wall=""
  for ((try = 1; try <= tries; try++)); do
    rm -f "$opt"
    sync -f "$workdir"
    start=$(now)
    set +e
    /usr/bin/time -f "%e %M %U %S" -o "$workdir/$w.try" "$lpconv" "$lp" >"$workdir/$w.out" 2>"$workdir/$w.err"
    rc=$?
    set -e
    took=$(seconds_since "$start")
    if [ "$rc" -ne 0 ]; then break; fi
    if [ "$(least "$wall" "$took")" = "$took" ]; then
      wall=$took
      cp "$workdir/$w.try" "$workdir/$w.time"
    fi
  done
  [ -n "$wall" ] || wall=$took
  [ -e "$workdir/$w.time" ] || cp "$workdir/$w.try" "$workdir/$w.time"
  rss_kib=$(awk 'END { print $2 }' "$workdir/$w.time")
  cpu=$(awk 'END { printf "user %.2f s, sys %.2f s", $3, $4 }' "$workdir/$w.time")

  echo "   lpconv exit status $rc; standard output:"
  sed 's/^/     /' "$workdir/$w.out"
  if [ "$rc" -ne 0 ]; then
    echo "   standard error:"
    sed 's/^/     /' "$workdir/$w.err"
    echo "   FAILED: lpconv did not convert $w"
    status=1
    continue
  fi
  if ! cmp -s "$workdir/$w.out" <(expected_status_lines "$w"); then
    echo "   FAILED: the status lines should read:"
    expected_status_lines "$w" | sed 's/^/     /'
    status=1
  fi

  in_bytes=$(stat -c %s "$lp")
  out_bytes=$(stat -c %s "$opt")
  if [ "$out_bytes" -eq 0 ]; then
    echo "   FAILED: $w.opt is empty"
    status=1
  fi
  # Without --keep the output goes first, so the floor's writes need no room of their own in the
  # page cache. Each part of the floor is the best of three tries.
  ((keep)) || rm -f "$opt"
  read_floor=""
  write_floor=""
  for _ in 1 2 3; do
    sync -f "$workdir"
    start=$(now)
    cat "$lp" >/dev/null
    read_floor=$(least "$read_floor" "$(seconds_since "$start")")
    start=$(now)
    dd if=/dev/zero of="$workdir/floor.bytes" bs=4M iflag=count_bytes count="$out_bytes" status=none
    write_floor=$(least "$write_floor" "$(seconds_since "$start")")
    rm -f "$workdir/floor.bytes"
  done
  floor=$(awk -v r="$read_floor" -v w="$write_floor" 'BEGIN { printf "%.3f", r + w }')
  clp_time=""
  if [ "$w" = large ] && command -v clp >/dev/null; then
    for ((try = 1; try <= tries; try++)); do
      start=$(now)
      clp "$lp" -quit >"$workdir/clp.out" 2>&1 || true
      clp_time=$(least "$clp_time" "$(seconds_since "$start")")
    done
    echo "   clp $lp -quit (best of $tries): $clp_time s; its last line: $(tail -n 1 "$workdir/clp.out")"
  fi

  awk -v w="$w" -v cpu="$cpu" -v ib="$in_bytes" -v ob="$out_bytes" -v t="$wall" -v rss="$rss_kib" \
      -v rf="$read_floor" -v wf="$write_floor" -v fl="$floor" '
    BEGIN {
      printf "   input %.2f MB, output %.2f MB, wall %.3f s (best of the tries), peak RSS %.1f MB\n",
             ib / 1e6, ob / 1e6, t, rss * 1024 / 1e6
      printf "   input %.1f MB/s, output %.1f MB/s; %s\n", ib / 1e6 / t, ob / 1e6 / t, cpu
      printf "   I/O floor %.3f s (read %.3f s + write %.3f s), wall/floor %.2f\n",
             fl, rf, wf, (fl > 0 ? t / fl : 0)
    }'
  case "$w" in
    large)
      verdict=$(awk -v t="$wall" -v fl="$floor" -v rss="$rss_kib" -v clp="$clp_time" 'BEGIN {
        ok1 = t <= 1.5 * fl; ok2 = rss * 1024 < 200e6
        printf "wall <= 1.5 x floor: %s; peak RSS < 200 MB: %s", ok1 ? "met" : "MISSED", ok2 ? "met" : "MISSED"
        if (clp != "") printf "; wall < clp read: %s", t < clp ? "met" : "MISSED"
      }') ;;
    *)
      verdict=$(awk -v t="$wall" 'BEGIN { printf "wall < 2 s: %s", t < 2 ? "met" : "MISSED" }') ;;
  esac
  echo "   target: $verdict"
  case "$verdict" in *MISSED*) ((status == 1)) || status=3 ;; esac
  ((keep)) || rm -f "$lp" "$opt"
done
exit "$status"
