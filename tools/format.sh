#!/usr/bin/env bash
# clang-format over what changed, or over everything with --all; --check changes nothing and fails on a difference.
set -euo pipefail
cd "$(dirname "$0")/.."
. tools/changed_sources.sh
how=-i; which=
for argument in "$@"; do
  case "$argument" in --check) how='--dry-run --Werror';; --all) which=--all;; *) echo "format.sh: unknown $argument" >&2; exit 2;; esac
done
changed_sources "$which" | xargs -r clang-format $how
