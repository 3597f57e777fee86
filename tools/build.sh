# Sourced: builds a CMake preset, quietly; what went wrong is shown, the whole output kept.

configure_preset() { # preset
  mkdir -p build/log
  cmake --preset "$1" >"build/log/$1.txt" 2>&1 || fail "The build cannot be set up; see build/log/$1.txt."
}

build_preset() { # preset, what it is in words
  local log="build/log/$1.txt"
  local first=''
  [ -f "build/$1/build.ninja" ] || first='some minutes the first time'
  step "building $2" "$first"
  mkdir -p build/log
  if ! { [ -f "build/$1/build.ninja" ] || cmake --preset "$1"; } >"$log" 2>&1 ||
     ! cmake --build --preset "$1" >>"$log" 2>&1; then
    grep -nE 'error:|warning:|FAILED|undefined reference' "$log" | head -n 40 >&2 || true
    sed -n '/^CMake Error/,/^Call Stack/{/^  [^ ]/p}' "$log" >&2  # the message alone
    fail "Building $2 failed; the whole output is in $log."
  fi
  took
}

build_product() {
  build_preset win32 'what ships (32-bit Windows)'
  mkdir -p build/dist
  cp build/win32/Quellix.exe build/win32/iea.exe build/dist/
  /usr/bin/python3 -B -m tools.manual build/dist/manual
}
