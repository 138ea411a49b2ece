# Sourced by scripts/walk: the program of this machine, under the conditions that decide on Windows what a run leaves:
# every folder lists its entries in Wine's order (see sortedfolders.cpp), and the player's root has a name of three
# characters, for whole paths count when a name is too long. Root only. Needs windows_build.

short_root=/e

g++ -std=c++17 -O1 -Wall -Wextra -shared -fPIC -o "$windows_build/sortedfolders.so" \
  "$root/packaging/windows/sortedfolders.cpp" -ldl || fail "sortedfolders.cpp cannot be compiled"
eval "run_here() $(declare -f run_program | tail -n +2)"

# The short name leads to the player in a name space that ends with the program.
run_program() {
  local code=0
  mkdir "$short_root" || fail "$short_root is taken"
  (
    export -f run_here
    export walk build bin player short_root
    export CORVIN_VOLUMES=$short_root PRELOADED=$windows_build/sortedfolders.so
    unshare --mount bash -c 'mount --bind "$player" "$short_root" && LD_PRELOAD=$PRELOADED run_here'
  ) || code=$?
  rmdir "$short_root"
  return $code
}
