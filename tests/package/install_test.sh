#!/usr/bin/env bash
# Installs the build into a temporary prefix, checks that the programs and their man pages are
# there, then builds and runs examples/library against it,
# once through find_package(lpconv) and once through pkg-config, and compares the output.
# Usage: install_test.sh <build dir> <source dir> <C++ compiler> <extra compile/link flags>
set -euo pipefail
build=$1 source=$2 cxx=$3 flags=$4
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
example=$source/examples/library

cmake --install "$build" --prefix "$work/prefix" >/dev/null

echo "--- the programs and their man pages"
for program in lpconv optinfo optconv; do
  test -x "$work/prefix/bin/$program"
  test -f "$(find "$work/prefix" -path "*/man1/$program.1" | head -n 1)"
done
"$work/prefix/bin/optconv" --version | grep -q '^optconv (lpconv) '
"$work/prefix/bin/optinfo" --version | grep -q '^optinfo (lpconv) '

echo "--- find_package(lpconv)"
cmake -S "$example" -B "$work/cmake" -G Ninja -DCMAKE_BUILD_TYPE=Release \
  -DCMAKE_CXX_COMPILER="$cxx" -DCMAKE_CXX_FLAGS="$flags" -DCMAKE_EXE_LINKER_FLAGS="$flags" \
  -DCMAKE_PREFIX_PATH="$work/prefix" >/dev/null
cmake --build "$work/cmake" >/dev/null
"$work/cmake/library_example" | diff -u "$example/expected.txt" -

echo "--- pkg-config lpconv"
libdir=$(dirname "$(find "$work/prefix" -name lpconv.pc)")
# shellcheck disable=SC2046,SC2086
"$cxx" -std=c++20 $flags "$example/main.cpp" -o "$work/pc_example" \
  $(PKG_CONFIG_PATH=$libdir pkg-config --cflags --libs lpconv)
"$work/pc_example" | diff -u "$example/expected.txt" -
echo "both consumers built and printed the expected output"
