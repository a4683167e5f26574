#!/usr/bin/env bash
# lpconv against the slow, literal lpconv_reference on generated LP texts: the same standard
# output, standard error, exit status and output bytes, seed by seed.
#   differential_test.sh <lpconv> <lpconv_reference> <lp_fuzz_gen> [first seed] [count]
# A mismatch prints the seed, the input and the differences; rerun one seed with count 1. With
# 100 seeds or more, the inputs must also reach the conversion and every failure of the reader.
set -uo pipefail
(($# >= 3)) || { echo "usage: $0 <lpconv> <reference> <generator> [first] [count]" >&2; exit 2; }
fast=$(readlink -f "$1") reference=$(readlink -f "$2") generator=$3 first=${4:-1} count=${5:-300}
work=$(mktemp -d "${TMPDIR:-/tmp}/lpconv-diff.XXXXXX")
trap 'rm -rf "$work"' EXIT

run_side() {  # converter, folder: one run on model.lp in a fresh folder
  rm -rf "$2" && mkdir -p "$2/run" && cp "$work/model.lp" "$2/run/"
  { (cd "$2/run" && exec "$1" model.lp >"$2/stdout" 2>"$2/stderr" </dev/null); } 2>/dev/null
  echo $? >"$2/status"
}

mismatches=0 converted=0
declare -A seen=()
for ((seed = first; seed < first + count; seed++)); do
  "$generator" "$seed" >"$work/model.lp"
  run_side "$fast" "$work/fast"
  run_side "$reference" "$work/ref"
  differs=()
  for item in status stdout stderr run/model.opt; do
    if [ -e "$work/fast/$item" ] || [ -e "$work/ref/$item" ]; then
      cmp -s "$work/fast/$item" "$work/ref/$item" 2>/dev/null || differs+=("$item")
    fi
  done
  if [ "$(cat "$work/ref/status")" = 0 ]; then
    converted=$((converted + 1))
  else
    seen["$(cat "$work/ref/status") $(grep -a -m1 '^\*\*\* FAIL: ' "$work/ref/stderr")"]=1
  fi
  if ((${#differs[@]})); then
    mismatches=$((mismatches + 1))
    echo "=== seed $seed: ${differs[*]} differ(s); input:"
    cat -A "$work/model.lp" | head -n 40 | cut -c 1-200
    for item in "${differs[@]}"; do
      diff -u --label lpconv --label reference <(cat -A "$work/fast/$item" 2>/dev/null) \
        <(cat -A "$work/ref/$item" 2>/dev/null) | head -n 30 | cut -c 1-200
    done
  fi
done

echo "seeds $first..$((first + count - 1)): $converted converted; failures seen:"
printf '  %s\n' "${!seen[@]}" | sort
problems=$((mismatches > 0))
((mismatches)) && echo "FAILED: $mismatches of $count inputs differ"
((count < 100)) && exit "$problems"
((converted * 4 >= count)) || { echo "FAILED: fewer than a quarter converted"; problems=1; }
for message in "The file [ model.lp ] is incomplete!" "The amount of <= and >= equations differ!" \
  "scan for digit failed!" "Array: index out of range" \
  "Objective function error: relation sign found!" "relation error: no sign found!"; do
  [ -n "${seen["1 *** FAIL: $message"]+yes}" ] || { echo "FAILED: no input ended with \"$message\""; problems=1; }
done
exit "$problems"
