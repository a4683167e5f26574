#!/usr/bin/env bash
# Runs lpconv and the slow, literal lpconv_reference on the same generated LP texts and demands
# the same standard output, standard error, exit status and output bytes from both.
#
#   differential_test.sh <lpconv> <lpconv_reference> <lp_fuzz_gen> [first seed] [count]
#
# A mismatch prints the seed, the input (with `cat -A` marks) and the differences; rerun one
# seed with count 1. Also checks that the inputs exercise the converter: enough of them must
# convert, and each failure message of the reader must occur, or the comparison proves little.
set -uo pipefail

if (($# < 3)); then
  echo "usage: $0 <lpconv> <lpconv_reference> <lp_fuzz_gen> [first seed] [count]" >&2
  exit 2
fi
fast=$1
reference=$2
generator=$3
first=${4:-1}
count=${5:-300}
for exe in "$fast" "$reference" "$generator"; do
  [ -x "$exe" ] || { echo "not an executable: $exe" >&2; exit 2; }
done
# The converters run inside their own folders.
fast=$(readlink -f "$fast")
reference=$(readlink -f "$reference")

work=$(mktemp -d "${TMPDIR:-/tmp}/lpconv-diff.XXXXXX")
trap 'rm -rf "$work"' EXIT

# Runs one converter on model.lp in a fresh folder of its own.
run_side() {
  local exe=$1 dir=$2
  rm -rf "$dir"
  mkdir -p "$dir/run"
  cp "$work/model.lp" "$dir/run/model.lp"
  # The outer redirection keeps the shell's own "Aborted" notes out of the log.
  { (cd "$dir/run" && exec "$exe" model.lp >"$dir/stdout" 2>"$dir/stderr" </dev/null); } 2>/dev/null
  echo $? >"$dir/status"
}

show_difference() {
  local name=$1 left=$2 right=$3
  echo "--- $name differs (lpconv first, reference second):"
  diff -u --label lpconv --label reference <(cat -A "$left" 2>/dev/null) \
    <(cat -A "$right" 2>/dev/null) | head -n 40 | cut -c 1-200
}

mismatches=0
failed_seeds=()
converted=0
declare -A outcomes=()
for ((seed = first; seed < first + count; seed++)); do
  "$generator" "$seed" >"$work/model.lp"
  run_side "$fast" "$work/fast"
  run_side "$reference" "$work/reference"

  differs=()
  for item in status stdout stderr; do
    cmp -s "$work/fast/$item" "$work/reference/$item" || differs+=("$item")
  done
  fast_opt="$work/fast/run/model.opt"
  reference_opt="$work/reference/run/model.opt"
  if [ -e "$fast_opt" ] || [ -e "$reference_opt" ]; then
    cmp -s "$fast_opt" "$reference_opt" 2>/dev/null || differs+=("model.opt")
  fi

  status=$(cat "$work/reference/status")
  if [ "$status" = 0 ]; then
    converted=$((converted + 1))
    outcomes[converted]=1
  else
    message=$(grep -a -m1 '^\*\*\* FAIL: ' "$work/reference/stderr" | sed 's/^\*\*\* FAIL: //')
    [ -n "$message" ] || message="no failure line; last line: $(tail -n 1 "$work/reference/stderr")"
    outcomes["status $status: $message"]=1
  fi

  if ((${#differs[@]})); then
    mismatches=$((mismatches + 1))
    failed_seeds+=("$seed")
    if ((mismatches <= 5)); then
      echo "=== seed $seed: ${differs[*]} differ(s); input:"
      cat -A "$work/model.lp" | cut -c 1-200
      for item in "${differs[@]}"; do
        case "$item" in
          model.opt) show_difference "$item" "$fast_opt" "$reference_opt" ;;
          *) show_difference "$item" "$work/fast/$item" "$work/reference/$item" ;;
        esac
      done
    fi
  fi
done

echo "seeds $first..$((first + count - 1)): $converted of $count converted by the reference"
echo "outcomes seen:"
printf '  %s\n' "${!outcomes[@]}" | sort

problems=0
if ((mismatches)); then
  echo "FAILED: $mismatches of $count inputs differ; seeds: ${failed_seeds[*]}"
  problems=1
fi
# The inputs must reach the conversion and every failure of the reader, or agreement means little;
# a short rerun of a few seeds is not held to that.
if ((count < 100)); then
  exit "$problems"
fi
if ((converted * 4 < count)); then
  echo "FAILED: fewer than a quarter of the inputs converted"
  problems=1
fi
for message in \
  "The file [ model.lp ] is incomplete!" \
  "The amount of <= and >= equations differ!" \
  "scan for digit failed!" \
  "Array: index out of range" \
  "Objective function error: relation sign found!" \
  "relation error: no sign found!"; do
  if [ -z "${outcomes["status 1: $message"]+seen}" ]; then
    echo "FAILED: no input ended with \"$message\""
    problems=1
  fi
done
exit "$problems"
