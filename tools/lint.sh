#!/usr/bin/env bash
# clang-tidy over what changed, or over everything with --all: the rules as the native build sees them, the rest as the
# cross compiler does.
set -euo pipefail
cd "$(dirname "$0")/.."
. tools/changed_sources.sh
mkdir -p build/log
for preset in logic win32; do
  [ -f "build/$preset/build.ninja" ] || cmake --preset "$preset" >build/log/lint-configure.txt 2>&1
  cmake --preset "$preset" -DCMAKE_EXPORT_COMPILE_COMMANDS=ON >>build/log/lint-configure.txt 2>&1
done
# The cross compiler's own headers, which clang-tidy does not know by itself.
includes=$(i686-w64-mingw32-g++-win32 -E -x c++ - -v </dev/null 2>&1 | sed -n '/^#include </,/^End/s|^ ||p' | sed 's|^|--extra-arg=-isystem|')
files=$(changed_sources "${1:-}" | grep -E '^(src|companions)/.*\.cpp$' || true)
[ -n "$files" ] || { echo 'lint: nothing changed'; exit 0; }
failed=0
for file in $files; do
  if grep -q "^  $file\$" <(sed -n '/LOGIC_SOURCES/,/^)/p' cmake/sources.cmake); then
    clang-tidy --quiet -p build/logic "$file" 2>/dev/null || failed=1
  else
    clang-tidy --quiet -p build/win32 --extra-arg=--target=i686-w64-windows-gnu --extra-arg=-nostdinc --extra-arg=-nostdinc++ \
      $includes "$file" 2>/dev/null || failed=1
  fi
done
exit $failed
