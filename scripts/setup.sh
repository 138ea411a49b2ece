# shellcheck shell=bash disable=SC2034 # the lists of packages are for those who source it
# Sourced by run, test and .ci/run: what the machine needs, and one line a step on the terminal.
# Sets $root (the checkout). Functions: step, fail, need_packages, utf8_locale, build_preset.

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
cache=${XDG_CACHE_HOME:-$HOME/.cache}/corvin4manager

# Every checkout shares what was compiled before, wherever it lies.
export CCACHE_DIR=${CCACHE_DIR:-$cache/ccache} CCACHE_BASEDIR=$root CCACHE_NOHASHDIR=1
# What is new is compiled at once: the compiler says itself which headers it took.
export CCACHE_DEPEND=1
# Without these words it would keep nothing of what is compiled with headers compiled ahead.
export CCACHE_SLOPPINESS=pch_defines,time_macros CCACHE_PCH_EXTSUM=1

step() { printf '==> %s\n' "$*"; }
fail() {
  printf 'xx  %s\n' "$*" >&2
  exit 1
}

build_packages="g++ ccache cmake ninja-build qtbase5-dev qttools5-dev qttools5-dev-tools qttranslations5-l10n
  libqt5sql5-sqlite libarchive-dev fonts-bebas-neue fonts-liberation"
# Without DejaVu Sans what asks for any sans-serif font, like Qt's message boxes, gets Liberation's fixed-width one.
walk_packages="xvfb xauth unar exfatprogs exfat-fuse fuse3 python3-minimal fonts-dejavu-core"
test_packages="$walk_packages lhasa midicsv python3 python3-mido python3-mutagen id3v2 mpg123 ffmpeg zip dbus-daemon dosfstools"
ci_packages="clang-format clang-tidy doxygen"

# Installs the packages that are missing; where that is not allowed, prints the one line to type, and ends.
need_packages() {
  local missing=() package
  for package in "$@"; do
    [ "$(dpkg-query -W -f '${db:Status-Status}' "$package" 2>/dev/null)" = installed ] || missing+=("$package")
  done
  [ ${#missing[@]} -eq 0 ] && return 0
  if [ "$(id -u)" -ne 0 ]; then
    printf 'These packages are missing. Type this line, then start again:\n\n  sudo apt-get install -y --no-install-recommends %s\n\n' \
      "${missing[*]}" >&2
    exit 1
  fi
  step "Installing ${missing[*]}"
  local log
  log=$(mktemp)
  if ! { apt_install "${missing[@]}" || { apt-get update && apt_install "${missing[@]}"; }; } >"$log" 2>&1; then
    tail -n 20 "$log" >&2
    fail "The packages could not be installed"
  fi
  rm -f "$log"
}

apt_install() {
  DEBIAN_FRONTEND=noninteractive apt-get install -y --no-install-recommends "$@" </dev/null
}

# File names are UTF-8 on the player; in the plain C locale they could not be named at all.
utf8_locale() {
  case "$(locale charmap 2>/dev/null)" in
    UTF-8) ;;
    *) export LC_ALL=C.UTF-8 ;;
  esac
}

# Reads what ninja says, and shows how far it is: in a terminal one line that counts up, elsewhere a line a quarter.
count_up() {
  local line done all quarter=0
  while IFS= read -r line; do
    [[ $line =~ ^\[([0-9]+)/([0-9]+)\] ]] || continue
    done=${BASH_REMATCH[1]} all=${BASH_REMATCH[2]}
    if [ -t 1 ]; then
      printf '\r    %d of %d' "$done" "$all"
    elif [ $((4 * done / all)) -gt "$quarter" ]; then
      quarter=$((4 * done / all))
      printf '    %d of %d\n' "$done" "$all"
    fi
  done
  [ ! -t 1 ] || [ -z "${done:-}" ] || printf '\n'
}

# build_preset PRESET [TARGET...]: configures and builds; the output is shown only when something is wrong.
build_preset() {
  local preset=$1 log targets=()
  shift
  [ $# -eq 0 ] || targets=(--target "$@")
  log=$(mktemp)
  step "Building ($preset)"
  if ! (cd "$root" && cmake --preset "$preset" && cmake --build "build/$preset" "${targets[@]}") 2>&1 |
    tee "$log" | count_up; then
    grep -nE 'error|FAILED|CMake Error' "$log" | head -n 20 >&2
    tail -n 40 "$log" >&2
    fail "The build failed; its whole output is in $log"
  fi
  rm -f "$log"
}
