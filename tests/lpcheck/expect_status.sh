#!/usr/bin/env bash
# Runs lpcheck on each file and fails unless every run exits with the expected status.
#   expect_status.sh <lpcheck> <status> <file>...
set -uo pipefail
lpcheck=$1 expected=$2
shift 2
wrong=0
for file in "$@"; do
  "$lpcheck" "$file" >/dev/null 2>&1
  status=$?
  if ((status != expected)); then
    echo "$file: lpcheck exited $status, expected $expected"
    wrong=$((wrong + 1))
  fi
done
echo "$# files, $wrong with another status"
((wrong == 0))
