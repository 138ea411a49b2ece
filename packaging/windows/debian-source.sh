# Sourced: source packages of this system, fetched through an apt folder of our own.
# Sets $cache. Functions: source_version PACKAGE, fetch_source SOURCE VERSION FOLDER.

cache=${XDG_CACHE_HOME:-$HOME/.cache}/corvin4manager
mkdir -p "$cache"
apt_root=$cache/apt

# source_version PACKAGE: the version of the source package that the installed or available binary PACKAGE comes from.
source_version() {
  local version
  version=$(dpkg-query -W -f '${source:Version}' "$1" 2>/dev/null || true)
  [ -n "$version" ] || version=$(apt-cache show --no-all-versions "$1" | sed -n 's/^Version: //p' | head -n 1)
  printf '%s\n' "$version"
}

source_apt() {
  apt-get -o Dir::Etc::sourcelist=/dev/null -o "Dir::Etc::sourceparts=$apt_root/sources" \
    -o "Dir::State::lists=$apt_root/lists" -o "Dir::Cache::archives=$apt_root/archives" \
    -o Dir::Cache::pkgcache= -o Dir::Cache::srcpkgcache= -o APT::Sandbox::User=root "$@"
}

# The system's package lists, read as source lists: the system's own lists stay as they are.
prepare_source_apt() {
  local list
  mkdir -p "$apt_root/sources" "$apt_root/lists/partial" "$apt_root/archives/partial"
  for list in /etc/apt/sources.list /etc/apt/sources.list.d/*.list; do
    [ ! -s "$list" ] || sed -E 's/^deb /deb-src /' "$list" >"$apt_root/sources/$(basename "$list" .list)-src.list"
  done
  for list in /etc/apt/sources.list.d/*.sources; do
    [ ! -s "$list" ] ||
      sed -E 's/^Types:.*/Types: deb-src/' "$list" >"$apt_root/sources/$(basename "$list" .sources)-src.sources"
  done
}

# fetch_source SOURCE VERSION FOLDER: unpacks the source package, with the distribution's patches, into FOLDER/source.
fetch_source() {
  local source=$1 version=$2 folder=$3
  prepare_source_apt
  mkdir -p "$folder"
  (
    cd "$folder"
    source_apt update >apt.log 2>&1 || { tail apt.log >&2; exit 1; }
    source_apt source --download-only "$source=$version" >>apt.log 2>&1 || { tail apt.log >&2; exit 1; }
    dpkg-source --no-check -x "${source}"_*.dsc source >unpack.log 2>&1 || { tail unpack.log >&2; exit 1; }
  )
}
