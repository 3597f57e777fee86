#!/usr/bin/env bash
# clang-format over what changed, or over everything with --all; --check changes nothing and fails on a difference.
set -euo pipefail
cd "$(dirname "$0")/.."
how=-i; which=
for argument in "$@"; do
  case "$argument" in --check) how='--dry-run --Werror';; --all) which=--all;; *) echo "format.sh: unknown $argument" >&2; exit 2;; esac
done

sources() { # the C++ files that differ from the last commit, or all of them
  if [ "$which" = --all ]; then git ls-files -co --exclude-standard '*.cpp' '*.h'
  else { git diff --name-only --diff-filter=d HEAD; git ls-files -o --exclude-standard; } | grep -E '\.(cpp|h)$'
  fi | grep -v '_ids\.h$' | sort -u || true
}
sources | xargs -r clang-format $how
