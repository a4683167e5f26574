#!/usr/bin/env bash
# A conversion that cannot get the memory it needs (an objective line of 32 MiB under an
# address-space limit of 80 MiB) ends as every failure does: the banner, the status lines, the
# failure "Out of memory", status 1 and an empty output file; never an abort.
#   out_of_memory_test.sh LPCONV WORK_DIR SANITIZED
# A sanitized build cannot run under an address-space limit at all: the test is skipped (77).
set -euo pipefail
lpconv=$1
work=$2
if [[ $3 == 1 ]]; then
  echo "skipped: the sanitizers' shadow memory does not fit under ulimit -v"
  exit 77
fi
rm -rf "$work"
mkdir -p "$work"
cd "$work"
awk 'BEGIN {
  printf "Maximize\nobj: 3 x100000"
  for (k = 0; k < 24; ++k) for (i = 1; i <= 100000; ++i) printf " + %d x%d", i % 97 + 1, i
  printf "\nSubject To\n x1 >= 1\n x1 <= 2\nBounds\n"
}' >model.lp
status=0
bash -c 'ulimit -v 81920 && exec "$@"' run "$lpconv" model.lp >stdout 2>stderr || status=$?
printf '|-> InEquations: 1\n|-> Equations: 0\n|-> Variables: 100000\n' >stdout.expected
{
  printf "Note: This converter is not perfect, but it should\nwork correctly, as long as ALL variables are named\nwith a lower case 'x'.\n\n"
  printf '\n*** FAIL: Out of memory\n'
} >stderr.expected
failed=0
[[ $status == 1 ]] || { echo "status $status, expected 1"; failed=1; }
cmp -s stdout stdout.expected || { echo "stdout differs:"; cat stdout; failed=1; }
cmp -s stderr stderr.expected || { echo "stderr differs:"; cat stderr; failed=1; }
[[ -f model.opt && ! -s model.opt ]] || { echo "model.opt is missing or not empty"; failed=1; }
exit $failed
