# Sourced by ./quellix: installs what a task needs from the distribution's packages, once.
# Each step prints one line; what cannot be had ends the command with one sentence and the remedy.

# What begins, and how long it takes the first time where that is worth knowing; `took` says how long it was.
step() {
  printf '== %s%s\n' "$1" "${2:+ ($2)}"
  began=$SECONDS
}
took() { [ $((SECONDS - began)) -lt 5 ] || printf '   done in %d s\n' $((SECONDS - began)); }
fail() { printf 'quellix: %s\n' "$1" >&2; exit 1; }

as_root() {
  if [ "$(id -u)" = 0 ]; then "$@"
  elif command -v sudo >/dev/null; then sudo "$@"
  else fail "Packages are missing and this user may not install them; run the command as root, or install sudo."
  fi
}

installed() { # every package named
  local package
  for package in "$@"; do
    [ "$(dpkg-query -W -f '${db:Status-Status}' "$package" 2>/dev/null)" = installed ] || return 1
  done
}

refresh_index() {
  # One index that its mirror serves out of date makes the update end with an error; the others are good all the same.
  as_root apt-get update >>build/log/setup.txt 2>&1 || true
}

install_packages() { # what for, packages...
  local what=$1; shift
  installed "$@" && return
  command -v apt-get >/dev/null ||
    fail "$what needs the packages $*; this machine has no apt-get, so install them by hand and start again."
  step "installing $what" "$(printf '%s packages, half a minute to some minutes; only once' $#)"
  mkdir -p build/log
  local options=(-y -q --no-install-recommends -o Dpkg::Options::=--force-confold)
  export DEBIAN_FRONTEND=noninteractive
  as_root apt-get "${options[@]}" install "$@" >>build/log/setup.txt 2>&1 && took && return
  refresh_index
  as_root apt-get "${options[@]}" install "$@" >>build/log/setup.txt 2>&1 && took && return
  # A 32-bit package of another point release than the 64-bit one is refused; naming the release makes both agree.
  as_root apt-get "${options[@]}" -t "$(. /etc/os-release && echo "${VERSION_CODENAME:-stable}")" install "$@" >>build/log/setup.txt 2>&1 && took && return
  fail "$what could not be installed ($*); see build/log/setup.txt, put the package source right and start again."
}

need_compiler() {
  install_packages 'the cross compiler and build tools' \
    g++-mingw-w64-i686-win32 cmake ninja-build python3 python3-markdown
  # What ships takes its runtime from there; the compiler calls itself 12-win32.
  local release; release=$(i686-w64-mingw32-g++-win32 -dumpversion)
  install_packages "the compiler's own sources" "gcc-${release%%-*}-source"
}

need_test_compiler() {
  need_compiler
  install_packages 'the compiler, linker and library of the tests' g++-mingw-w64-i686-posix lld googletest
}

need_native() {
  install_packages 'the native compiler of the logic tests' clang libclang-rt-14-dev googletest cmake ninja-build
}

need_packager() {
  install_packages 'the maker of installers' nsis
}

need_page_checkers() {
  install_packages 'the validator of the manual' opensp w3c-sgml-lib
}

need_checkers() {
  install_packages 'the formatter and linter' clang-format clang-tidy
}

need_wine() {
  if ! installed wine32:i386; then
    if ! dpkg --print-foreign-architectures | grep -qx i386; then
      mkdir -p build/log
      step 'adding the 32-bit architecture'
      as_root dpkg --add-architecture i386
      refresh_index
    fi
  fi
  install_packages '32-bit Wine' wine wine32:i386 fonts-wine fonts-liberation fonts-dejavu-core
  install_packages 'the display and its tools' xvfb xdotool imagemagick x11-utils
}

# Wine takes its code page from the locale; that of Japan has letters whose second byte is a backslash's.
need_japanese() {
  install_packages 'the Japanese locale and letters' locales fonts-ipafont-gothic
  if ! locale -a | grep -qix 'ja_JP\.utf-\?8'; then
    step 'making the Japanese locale'
    as_root localedef -i ja_JP -f UTF-8 ja_JP.UTF-8 || fail 'The Japanese locale could not be made; `localedef -i ja_JP -f UTF-8 ja_JP.UTF-8` says why.'
  fi
}
