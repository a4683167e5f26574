#!/usr/bin/env bash
# Write speed of optconv to .opt against the I/O floor of the same run: a generated sparse free
# MPS model (ROWS x COLUMNS, PER_ROW nonzeros a row, decimal values of up to 15 significant
# digits) is converted to .opt, and the floor is `cat` of the input plus `dd` of as many bytes
# as the output has.
# Usage: bench/optconv_write.sh OPTCONV [ROWS COLUMNS PER_ROW [WORK_DIR]]
set -euo pipefail
optconv=$1 rows=${2:-5000} columns=${3:-50000} per_row=${4:-10}
work=${5:-$(mktemp -d)}
mkdir -p "$work"
model=$work/model.mps

python3 - "$model" "$rows" "$columns" "$per_row" <<'PY'
import random, sys
path, rows, columns, per_row = sys.argv[1], int(sys.argv[2]), int(sys.argv[3]), int(sys.argv[4])
rng = random.Random(7)
by_column = [[] for _ in range(columns)]
def value():
    digits = rng.randint(1, 15)
    mantissa = rng.randint(1, 10**digits - 1)
    text = str(mantissa)
    point = rng.randint(0, len(text))
    text = (text[:point] or "0") + ("." + text[point:] if text[point:] else "")
    return ("-" if rng.random() < 0.3 else "") + text
for i in range(rows):
    for j in rng.sample(range(columns), per_row):
        by_column[j].append((i, value()))
with open(path, "w") as out:
    out.write("NAME bench\nROWS\n N obj\n")
    kinds = "LGE"
    for i in range(rows):
        out.write(" %s r%d\n" % (kinds[i % 3], i))
    out.write("COLUMNS\n")
    for j in range(columns):
        out.write(" c%d obj %s\n" % (j, value()))
        for i, v in sorted(by_column[j]):
            out.write(" c%d r%d %s\n" % (j, i, v))
    out.write("RHS\n")
    for i in range(rows):
        out.write(" rhs r%d %s\n" % (i, value()))
    out.write("BOUNDS\n")
    for j in range(0, columns, 7):
        out.write(" UP bnd c%d %s\n" % (j, value()))
    out.write("ENDATA\n")
PY

now() { date +%s.%N; }
since() { awk -v s="$1" -v e="$(now)" 'BEGIN { printf "%.3f", e - s }'; }
least() { awk -v a="$1" -v b="$2" 'BEGIN { print (a == "" || b < a) ? b : a }'; }

# Each try starts with no dirty pages pending; the best of three counts, for optconv and for
# each part of the floor, as in bench/run.sh.
convert=""
for try in 1 2 3; do
  rm -f "$work/model.opt"
  sync -f "$work"
  start=$(now)
  /usr/bin/time -f "%M %U %S" -o "$work/rss" "$optconv" "$model" "$work/model.opt"
  convert=$(least "$convert" "$(since "$start")")
done
input_bytes=$(stat -c %s "$model")
output_bytes=$(stat -c %s "$work/model.opt")
rm -f "$work/model.opt"
read_floor="" write_floor=""
for try in 1 2 3; do
  sync -f "$work"
  start=$(now)
  cat "$model" >/dev/null
  read_floor=$(least "$read_floor" "$(since "$start")")
  start=$(now)
  /usr/bin/time -f "%U %S" -o "$work/dd.cpu" \
    dd if=/dev/zero of="$work/floor.bytes" bs=4M iflag=count_bytes count="$output_bytes" status=none
  write_floor=$(least "$write_floor" "$(since "$start")")
  rm -f "$work/floor.bytes"
done
floor=$(awk -v r="$read_floor" -v w="$write_floor" 'BEGIN { printf "%.3f", r + w }')
printf 'input %d bytes, output %d bytes, optconv peak RSS %d KiB\n' "$input_bytes" \
  "$output_bytes" "$(awk '{ print $1 }' "$work/rss")"
# On a loaded machine the wall times wait for a core; the processor time of the last try of each
# tells whether the work itself stays near the floor.
awk -v o="$(awk '{ print $2 + $3 }' "$work/rss")" -v d="$(awk '{ print $1 + $2 }' "$work/dd.cpu")" \
  'BEGIN { printf "processor time: optconv %.2f s, dd %.2f s\n", o, d }'
awk -v t="$convert" -v r="$read_floor" -v w="$write_floor" -v f="$floor" 'BEGIN {
  printf "optconv %.3f s; I/O floor %.3f s (read %.3f s + write %.3f s); ratio %.2f (target <= 1.5)\n",
    t, f, r, w, t / f }'
