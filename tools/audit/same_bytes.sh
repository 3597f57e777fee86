#!/usr/bin/env bash
# Builds what ships once more from a copy of the sources in another folder: the files must be the same, bit for bit.
set -euo pipefail
cd "$(dirname "$0")/../.."
copy=build/same-bytes
rm -rf "$copy"
mkdir -p "$copy"
git ls-files -co --exclude-standard -z -- CMakeLists.txt CMakePresets.json cmake src companions bench tests/runtime | tar -c --null -T - | tar -x -C "$copy"
{ cmake --preset win32 -S "$copy" -B "$copy/build/win32" && cmake --build "$copy/build/win32" --target Quellix iea; } >"$copy/log.txt" 2>&1 ||
  { tail -n 20 "$copy/log.txt"; exit 1; }
status=0
for program in Quellix.exe iea.exe; do
  python3 -B -m tools.audit.audit_pe "build/dist/$program" --same "$copy/build/win32/$program" || status=1
done
exit "$status"
