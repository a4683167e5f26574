#!/usr/bin/env bash
# Checks that every tracked C++ source (or the files given) is as clang-format would write it,
# with the root .clang-format; `clang-format -i <file>` fixes one. Exit status 1 on a difference.
set -euo pipefail
cd "$(dirname "$0")/.."
if (($#)); then
  files=("$@")
else
  mapfile -t files < <(git ls-files '*.h' '*.cpp')
fi
clang-format --dry-run --Werror "${files[@]}"
echo "clang-format: ${#files[@]} files checked, all formatted"
