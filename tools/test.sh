#!/usr/bin/env bash
# Every test and audit. Called by ./quellix test.
#   --logic        only the native rules, seconds
#   --match REGEX  only the tests whose names match
#   --faults       the loop of faults: every system call and every allocation fails once, every write is the last; hours
#   --soak         the same again and again, half an hour and more
set -euo pipefail
cd "$(dirname "$0")/.."
. tools/setup.sh
. tools/build.sh

choice=()
long_loop() { # module
  need_test_compiler; need_wine
  build_product
  build_preset win32-debug 'the test programs'
  exec python3 -B -m "$1"
}
while [ $# -gt 0 ]; do
  case "$1" in
    --logic)
      need_native
      build_preset logic 'the rules and their tests, natively'
      exec ctest --test-dir build/logic --output-on-failure
      ;;
    --faults) long_loop tests.standin.faults ;;
    --soak) long_loop tests.standin.soak ;;
    --match) choice+=(-R "${2:?--match needs an expression}"); shift 2 ;;
    *) fail "test takes --logic, --match REGEX, --faults or --soak, not '$1'." ;;
  esac
done

need_test_compiler; need_native; need_checkers; need_packager; need_page_checkers; need_wine; need_japanese
# At once: each by itself leaves a processor alone while it is set up and where all that is left waits for one file.
step 'building the rules, what ships and the test programs' "$([ -d build/win32-debug ] || echo 'some minutes the first time')"
builds=() failed=0
CMAKE_BUILD_PARALLEL_LEVEL=$(nproc)
export CMAKE_BUILD_PARALLEL_LEVEL
build_preset logic 'the rules and their tests, natively' >/dev/null & builds+=($!)
build_product >/dev/null & builds+=($!)
build_preset win32-debug 'the test programs' >/dev/null & builds+=($!)
for build in "${builds[@]}"; do wait "$build" || failed=1; done
[ "$failed" = 0 ] || exit 1
took
step 'running the tests'
mkdir -p build/log
status=0
# Nearly each task with a Windows keeps to one processor and waits there for windows and for pauses of the program.
ctest --test-dir build/win32-debug --output-on-failure --parallel "$((4 * $(nproc)))" "${choice[@]}" || status=$?
exit "$status"
