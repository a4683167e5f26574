#!/usr/bin/env bash
# The standard formats' read benchmark: one generated model of over 100 MB as MPS and as CPLEX
# LP, read in the same run by the exact reader (optinfo once it reads every format, until then
# model_read_benchmark), `clp FILE -quit`, `glpsol --check` and QSopt_ex's exact read
# (mpq_QSread_prob), each timed with its peak memory by /usr/bin/time -v.
#
#   bash bench/formats.sh [--dir DIR] [--keep] [--no-build] [--tries N] [--size ROWS COLS NNZ]
#
#   --dir DIR    put the generated files in DIR (kept; reused when they exist)
#   --keep       keep the generated files of a fresh temporary folder (printed)
#   --no-build   use the binaries already in build/bench
#   --tries N    best of N wall times per reader and file (default 3); memory is the largest
#   --size R C N rows, columns and nonzeros (default 10000 50000 5500000: MPS ~147 MB, LP over
#                100 MB, a dense .opt of ~1 GB)
#
# Targets (MPS): the exact read at most clp's time, at least 5x faster than QSopt_ex's, peak
# memory at most clp's (times are the best wall clock of the tries; the CPU time, user + system,
# is printed beside it, the steadier figure on a shared machine). Exit status 0 when met, 3 when one is missed, 1 when a reader failed.
set -euo pipefail
cd "$(dirname "$0")/.."

dir="" keep=0 build=1 tries=3 rows=10000 cols=50000 nnz=5500000
while (($#)); do
  case "$1" in
    --dir) dir="$2"; shift 2 ;;
    --keep) keep=1; shift ;;
    --no-build) build=0; shift ;;
    --tries) tries="$2"; shift 2 ;;
    --size) rows="$2" cols="$3" nnz="$4"; shift 4 ;;
    -h|--help) awk 'NR > 1 && !/^#/ { exit } NR > 1 { print }' "$0"; exit 0 ;;
    *) echo "formats.sh: unknown argument $1" >&2; exit 2 ;;
  esac
done

builddir=build/bench
if ((build)); then
  cmake -S . -B "$builddir" -G Ninja -DCMAKE_BUILD_TYPE=Release -DLPCONV_BENCH=ON \
    -DBUILD_TESTING=OFF >/dev/null
  cmake --build "$builddir" -j2 --target model_generator model_read_benchmark optinfo >/dev/null
fi
generator="$PWD/$builddir/bench/model_generator"
exact="$PWD/$builddir/bench/model_read_benchmark"
# optinfo replaces the bench reader once it summarises MPS and LP files through the model.
optinfo="$PWD/$builddir/bin/optinfo"

if [ -n "$dir" ]; then
  mkdir -p "$dir"
else
  dir=$(mktemp -d)
  ((keep)) || trap 'rm -rf "$dir"' EXIT
  ((keep)) && echo "files in $dir"
fi
qsopt="$dir/qsopt_read"
if [ ! -x "$qsopt" ] && [ -f /usr/include/qsopt_ex/QSopt_ex.h ]; then
  cc -O2 -o "$qsopt" bench/qsopt_read.c -lqsopt_ex -lgmp -lz -lbz2 -lm 2>/dev/null ||
    cc -O2 -o "$qsopt" bench/qsopt_read.c -lqsopt_ex -lgmp -lm
fi
model="$dir/model"
if [ ! -f "$model.mps" ]; then
  echo "generating $rows rows x $cols columns, $nnz nonzeros..."
  "$generator" "$rows" "$cols" "$nnz" 1 "$model"
fi
printf 'MPS %d MB, LP %d MB (MB = 10^6 bytes)\n' $(($(stat -c %s "$model.mps") / 1000000)) \
  $(($(stat -c %s "$model.lp") / 1000000))
if "$optinfo" "$model.mps" >/dev/null 2>&1; then exact="$optinfo"; fi
echo "exact reader: $exact"

# time_of LABEL FILE COMMAND...: best wall seconds and largest peak RSS (MB) of N runs.
declare -A seconds memory cpu
time_of() {
  local label=$1 file=$2
  shift 2
  local best="" peak=0 t m c bestcpu=""
  for ((k = 0; k < tries; k++)); do
    if ! /usr/bin/time -v -o "$dir/time" "$@" >"$dir/out" 2>"$dir/err"; then
      echo "$label failed on $file:" && head -3 "$dir/err" "$dir/out"
      seconds[$label]="fail" memory[$label]=0
      return
    fi
    t=$(awk -F': ' '/Elapsed \(wall clock\)/ { n = split($2, p, ":"); s = 0;
         for (i = 1; i <= n; i++) s = s * 60 + p[i]; print s }' "$dir/time")
    m=$(awk -F': ' '/Maximum resident set size/ { printf "%d", $2 / 1000 }' "$dir/time")
    c=$(awk -F': ' '/User time|System time/ { s += $2 } END { printf "%.2f", s }' "$dir/time")
    [ -z "$best" ] || awk -v a="$t" -v b="$best" 'BEGIN { exit !(a < b) }' && best=$t
    [ -z "$bestcpu" ] || awk -v a="$c" -v b="$bestcpu" 'BEGIN { exit !(a < b) }' && bestcpu=$c
    ((m > peak)) && peak=$m
  done
  seconds[$label]=$best memory[$label]=$peak cpu[$label]=$bestcpu
}

status=0
for ext in mps lp; do
  file="$model.$ext"
  time_of "exact" "$file" "$exact" "$file"
  time_of "clp" "$file" clp "$file" -quit
  if [ "$ext" = mps ]; then
    time_of "glpsol" "$file" glpsol --check --freemps "$file"
  else
    time_of "glpsol" "$file" glpsol --check --lp "$file"
  fi
  if [ -x "$qsopt" ]; then time_of "QSopt_ex" "$file" "$qsopt" "$file"; fi
  echo
  echo "read $ext:"
  printf '  %-10s %8s %8s %10s\n' reader "wall s" "cpu s" "peak MB"
  for r in exact clp glpsol QSopt_ex; do
    [ -n "${seconds[$r]:-}" ] || continue
    printf '  %-10s %8s %8s %10s\n' "$r" "${seconds[$r]}" "${cpu[$r]:-}" "${memory[$r]}"
  done
  if [ "$ext" = mps ]; then
    e=${seconds[exact]} c=${seconds[clp]} q=${seconds[QSopt_ex]:-}
    if [ "$e" = fail ]; then
      status=1
      continue
    fi
    awk -v e="$e" -v c="$c" 'BEGIN { exit !(e <= c) }' && r1=met || { r1=MISSED; status=3; }
    echo "  target time <= clp's: $r1"
    if [ -n "$q" ] && [ "$q" != fail ]; then
      awk -v e="$e" -v q="$q" 'BEGIN { exit !(5 * e <= q) }' && r2=met || { r2=MISSED; status=3; }
      echo "  target 5x faster than QSopt_ex ($(awk -v e="$e" -v q="$q" 'BEGIN { printf "%.1fx", q / e }')): $r2"
    fi
    ((${memory[exact]} <= ${memory[clp]})) && r3=met || { r3=MISSED; status=3; }
    echo "  target peak memory <= clp's: $r3"
  fi
  unset seconds memory cpu
  declare -A seconds memory cpu
done
exit $status
