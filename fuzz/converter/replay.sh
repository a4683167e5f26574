#!/usr/bin/env bash
# Replays a corpus (a folder of LP texts, such as an afl-fuzz queue) through lpconv and the
# literal reference, and reports every input where standard output, standard error, exit status or
# the output bytes differ, and every run that ended by a signal other than the NaN abort.
#   bash fuzz/converter/replay.sh <lpconv> <lpconv_reference> <corpus folder>
set -uo pipefail
fast=$(readlink -f "$1") reference=$(readlink -f "$2") corpus=$3
work=$(mktemp -d "${TMPDIR:-/tmp}/lpconv-replay.XXXXXX")
trap 'rm -rf "$work"' EXIT
total=0 differ=0 signals=0
for input in "$corpus"/*; do
  [ -f "$input" ] || continue
  total=$((total + 1))
  for side in fast reference; do
    exe=$fast
    [ "$side" = reference ] && exe=$reference
    rm -rf "${work:?}/$side" && mkdir -p "$work/$side/run" && cp "$input" "$work/$side/run/model.lp"
    { (cd "$work/$side/run" && ulimit -f 2048 && trap '' XFSZ &&
        exec timeout 20 "$exe" model.lp >../stdout 2>../stderr </dev/null); } 2>/dev/null
    echo $? >"$work/$side/status"
  done
  status=$(cat "$work/fast/status")
  if ((status > 128)) && ! grep -q 'mpz_set_str' "$work/fast/stderr"; then
    signals=$((signals + 1)) && echo "signal: $input (status $status)"
  fi
  for item in status stdout stderr run/model.opt; do
    if ! cmp -s "$work/fast/$item" "$work/reference/$item"; then
      differ=$((differ + 1)) && echo "differs ($item): $input" && break
    fi
  done
done
echo "replayed $total inputs: $differ differ, $signals ended by a signal"
((differ == 0 && signals == 0))
