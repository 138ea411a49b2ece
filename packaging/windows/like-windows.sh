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
    # In a chroot the root is no mount that could be made private; what is mounted is taken away again in any case.
    unshare --mount --propagation unchanged bash -c '
      mount --make-rprivate / 2>/dev/null || true
      mount --bind "$player" "$short_root" || exit 1
      code=0
      LD_PRELOAD=$PRELOADED run_here || code=$?
      umount "$short_root"
      exit $code'
  ) || code=$?
  rmdir "$short_root"
  return $code
}
