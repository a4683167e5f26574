#!/usr/bin/env bash
# No false "clean": on generated dialect files, whenever lpcheck exits 0, lpconv converts the file
# and its .opt means the model a standard LP reader reads (compared through canonical_model);
# whenever the two differ, or lpconv fails, lpcheck exits 1.
#   no_false_clean.sh <lpcheck> <lpconv> <lp_fuzz_gen> <canonical_model> [first seed] [count]
set -uo pipefail
(($# >= 4)) || { echo "usage: $0 <lpcheck> <lpconv> <generator> <canonical_model> [first] [count]" >&2; exit 2; }
lpcheck=$(readlink -f "$1") lpconv=$(readlink -f "$2") generator=$(readlink -f "$3")
canonical=$(readlink -f "$4") first=${5:-1} count=${6:-300}
work=$(mktemp -d "${TMPDIR:-/tmp}/lpcheck-nfc.XXXXXX")
trap 'rm -rf "$work"' EXIT
cd "$work" || exit 2

false_clean=0 clean=0 differ=0 alarms=0
for ((seed = first; seed < first + count; seed++)); do
  "$generator" "$seed" >model.lp
  rm -f model.opt
  "$lpcheck" model.lp >check.out 2>&1
  check=$?
  # A file that implies a huge output is stopped by the file size limit (a failure of lpconv).
  { (ulimit -f 200000; exec "$lpconv" model.lp >/dev/null 2>&1 </dev/null); } 2>/dev/null
  convert=$?
  same=no
  if ((convert == 0)) && "$canonical" opt model.opt >opt.txt 2>/dev/null &&
    "$canonical" lp model.lp >lp.txt 2>/dev/null && cmp -s opt.txt lp.txt; then
    same=yes
  fi
  if ((check > 1)); then
    echo "=== seed $seed: lpcheck exited $check"
    head -n 5 check.out
    false_clean=$((false_clean + 1))
  elif ((check == 0)) && [ "$same" = no ]; then
    false_clean=$((false_clean + 1))
    echo "=== seed $seed: lpcheck says clean, but lpconv status $convert and the models differ; input:"
    cat -A model.lp | head -n 40 | cut -c 1-200
    [ -e opt.txt ] && [ -e lp.txt ] && diff opt.txt lp.txt | head -n 20
  fi
  ((check == 0)) && clean=$((clean + 1))
  [ "$same" = no ] && differ=$((differ + 1))
  ((check == 1)) && [ "$same" = yes ] && alarms=$((alarms + 1))
  rm -f opt.txt lp.txt
done
echo "seeds $first..$((first + count - 1)): $clean clean, $differ differ or fail," \
  "$alarms reported though lpconv's output means the file's model"
((false_clean == 0)) || { echo "FAILED: $false_clean false clean"; exit 1; }
((count < 100 || clean > 0)) || { echo "FAILED: no file was clean"; exit 1; }
