# Sourced by scripts/walk: the program of this machine, under the conditions that decide on Windows what a run leaves:
# every folder lists its entries in Wine's order (see sortedfolders.cpp), and the player's root has a name of three
# characters, for whole paths count when a name is too long. Root only. Needs windows_build.

short_root=/e

g++ -std=c++17 -O1 -Wall -Wextra -shared -fPIC -o "$windows_build/sortedfolders.so" \
  "$root/packaging/windows/sortedfolders.cpp" -ldl || fail "sortedfolders.cpp cannot be compiled"
eval "run_here() $(declare -f run_program | tail -n +2)"

# The player under its short name, in a name space that ends with the program.
run_in_own_space() {
  export -f run_here
  export walk build bin player short_root
  # In a chroot the root is no mount that could be made private; what is mounted is taken away again in any case.
  unshare --mount --propagation unchanged bash -c '
    mount --make-rprivate / 2>/dev/null || true
    mount --bind "$player" "$short_root" || exit 1
    code=0
    run_here || code=$?
    umount "$short_root"
    exit $code'
}

# Where nothing can be mounted the player is a plain folder, which can bear the short name itself meanwhile.
run_renamed() {
  local code=0 place=$player
  rmdir "$short_root"
  mv "$place" "$short_root"
  (player=$short_root && run_here) || code=$?
  mv "$short_root" "$place"
  mkdir "$short_root"
  return $code
}

run_program() {
  local code=0 way=run_renamed
  mkdir "$short_root" || fail "$short_root is taken"
  ! unshare --mount --propagation unchanged true 2>/dev/null || way=run_in_own_space
  (
    export CORVIN_VOLUMES=$short_root LD_PRELOAD=$windows_build/sortedfolders.so
    $way
  ) || code=$?
  rmdir "$short_root"
  return $code
}
