# Sourced: changed_sources prints the C++ files that differ from the last commit, or all of them with --all.
changed_sources() {
  if [ "${1:-}" = --all ]; then git ls-files -co --exclude-standard '*.cpp' '*.h'
  else { git diff --name-only --diff-filter=d HEAD; git ls-files -o --exclude-standard; } | grep -E '\.(cpp|h)$'
  fi | grep -v '_ids\.h$' | sort -u || true
}
