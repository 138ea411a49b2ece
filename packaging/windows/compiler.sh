# Sourced: the cross compiler. Sets $compiler. Function: compiler_library.

compiler=x86_64-w64-mingw32

# Where the compiler keeps one of its own libraries.
compiler_library() {
  local path
  path=$($compiler-g++-posix -print-file-name="$1")
  [ -e "$path" ] || path=/usr/$compiler/lib/$1
  printf '%s\n' "$path"
}
