#!/usr/bin/env bash
# Agreement with the peer readers over a corpus of LP and MPS files:
#   peers_test.sh MODEL_DIFF MODEL_REWRITE CORPUS_DIR EXPECTED
# For every file that glpsol or clp reads, our reader must read it too, unless EXPECTED lists it
# as rejected (a section the model cannot hold). Where glpsol reads it, the model GLPK read
# (written by glpsol --wglp, 15 significant digits) must agree with ours within 1e-12 relative,
# except for the differences EXPECTED lists for that file, each one of our documented rules.
# Then a few models are solved by glpsol from the original and from our MPS output.
# Exit 77 (skipped) when glpsol or the corpus is missing.
set -uo pipefail
diff_tool=$1 rewrite=$2 corpus=$3 expected=$4
if ! command -v glpsol >/dev/null; then
  echo "glpsol not found (Debian package glpk-utils): skipped"
  exit 77
fi
if [ ! -d "$corpus" ]; then
  echo "no corpus at $corpus: skipped"
  exit 77
fi
have_clp=1
command -v clp >/dev/null || { echo "clp not found (coinor-clp): its reads are not checked"; have_clp=0; }
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
failures=0 checked=0 agreed=0

fail() {
  echo "FAIL $*"
  failures=$((failures + 1))
}

# The lines EXPECTED gives for a file: "FILE: text".
expected_for() {
  grep -F -- "$1: " "$expected" | sed "s|^$1: ||" | sort
}

glpk_reads() {  # FILE OUT.glp
  case "$1" in
    *.lp | *.lp.gz) glpsol --check --lp "$1" --wglp "$2" >/dev/null 2>&1 ;;
    *) glpsol --check --freemps "$1" --wglp "$2" >/dev/null 2>&1 ||
         glpsol --check --mps "$1" --wglp "$2" >/dev/null 2>&1 ;;
  esac
}

clp_reads() {
  ((have_clp)) || return 1
  local out
  out=$(timeout 60 clp "$1" -quit 2>&1) || return 1
  grep -q "^Problem .* has .* rows" <<<"$out" && ! grep -q "errors" <<<"$out"
}

for file in "$corpus"/*.mps "$corpus"/*.lp "$corpus"/*.mps.gz "$corpus"/*.lp.gz; do
  [ -e "$file" ] || continue
  name=$(basename "$file")
  glp="$work/$name.glp"
  by_glpk=0 by_clp=0
  glpk_reads "$file" "$glp" && by_glpk=1
  clp_reads "$file" && by_clp=1
  ((by_glpk || by_clp)) || continue
  ours=$("$diff_tool" --quiet "$file" "$file" 2>&1)
  status=$?
  if ((status == 2)); then
    reason=$(expected_for "$name" | sed -n 's/^rejected: //p')
    if [ -n "$reason" ] && grep -qF -- "$reason" <<<"$ours"; then
      checked=$((checked + 1))
      continue
    fi
    fail "$name: read by glpsol=$by_glpk clp=$by_clp, rejected here:"
    echo "$ours" | head -3
    continue
  fi
  checked=$((checked + 1))
  ((by_glpk)) || continue
  got=$("$diff_tool" "$file" "$glp" 2>&1 | grep -v ' differences$' | sort)
  want=$(expected_for "$name" | grep -v '^rejected: ')
  if [ "$got" != "$want" ]; then
    fail "$name: differences from GLPK's reading are not the expected ones"
    diff <(echo "$want") <(echo "$got") | head -10
  else
    agreed=$((agreed + 1))
  fi
done
echo "read $checked files the peers read; $agreed agree with GLPK up to the listed rules"

# The solve check: the LP relaxation's optimum from the original and from our MPS output.
objective() {  # glpsol input options...
  glpsol --nomip "$@" -o "$work/solution" >/dev/null 2>&1 || return 1
  sed -n 's/^Objective: *[^ ]* = \([^ ]*\).*/\1/p' "$work/solution"
}
solved=0
for name in afiro.mps adlittle.mps blending.mps e226.mps p0548.mps israel.mps; do
  file="$corpus/$name"
  [ -e "$file" ] || continue
  if ! "$diff_tool" --quiet "$file" "$file" >/dev/null 2>&1; then continue; fi
  "$rewrite" "$file" "$work/out.mps" || { fail "$name: not rewritten"; continue; }
  a=$(objective --freemps "$file") b=$(objective --freemps "$work/out.mps")
  if [ -z "$a" ] || ! awk -v a="$a" -v b="$b" 'BEGIN { d = a - b; if (d < 0) d = -d;
      s = a < 0 ? -a : a; exit !(d <= 1e-9 * (s > 1 ? s : 1)) }'; then
    fail "$name: optimum $a from the original, $b from our MPS"
  else
    solved=$((solved + 1))
  fi
done
echo "$solved LP relaxations have the same optimum from the original and from our MPS"

((failures == 0)) || { echo "$failures failures"; exit 1; }
echo "all agree"
