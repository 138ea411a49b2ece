# Sourced: the cross compiler, and Qt and libarchive for Windows, which are built when they are not there yet.
# Sets $compiler, and for others CORVIN_QT_MINGW and CORVIN_LIBARCHIVE_MINGW. Function: compiler_library.

compiler=x86_64-w64-mingw32
packaging_folder=$(dirname "${BASH_SOURCE[0]}")
[ -n "${CORVIN_QT_MINGW:-}" ] || CORVIN_QT_MINGW=$("$packaging_folder/build-qt")
[ -n "${CORVIN_LIBARCHIVE_MINGW:-}" ] || CORVIN_LIBARCHIVE_MINGW=$("$packaging_folder/build-libarchive")
export CORVIN_QT_MINGW CORVIN_LIBARCHIVE_MINGW

# Where the compiler keeps one of its own libraries.
compiler_library() {
  local path
  path=$($compiler-g++-posix -print-file-name="$1")
  [ -e "$path" ] || path=/usr/$compiler/lib/$1
  printf '%s\n' "$path"
}
