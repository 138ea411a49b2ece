# Sourced: Windows programs under Wine, in a prefix of their own, without a word from Wine itself.
# Functions: new_prefix, end_prefix, windows_path, windows_variable, windows_fonts, make_locales.

export WINEDEBUG=-all WINEARCH=win64
# Neither does Wine ask for components to be fetched, nor does it add its programs to the menus of this machine.
export WINEDLLOVERRIDES="mscoree,mshtml=;winemenubuilder.exe=d"

wine=$(command -v wine64 || echo /usr/lib/wine/wine64)

# new_prefix FOLDER: an empty Windows, whose user's folders lie within it.
new_prefix() {
  end_prefix "$1"
  rm -rf "$1"
  mkdir -p "$1/home"
  export WINEPREFIX=$1/prefix HOME=$1/home
  "$wine" wineboot --init >"$1/wineboot.log" 2>&1 || { tail "$1/wineboot.log" >&2; return 1; }
  "$wine" winecfg -v win10
  wineserver -w
}

# end_prefix FOLDER: what still runs in it is stopped.
end_prefix() {
  [ ! -d "$1/prefix" ] || WINEPREFIX=$1/prefix wineserver -k 2>/dev/null || true
}

# windows_path PATH: how a Windows program names a path of this machine, with backslashes.
windows_path() { "$wine" winepath -w "$1" | tr -d '\r'; }

# windows_variable NAME VALUE: a variable of the user's environment. Those that begin with QT_ do not come through from
# outside: Wine keeps them for programs of this machine.
windows_variable() {
  "$wine" reg add 'HKCU\Environment' /v "$1" /t REG_SZ /d "$2" /f >/dev/null
}

# The letters of a PC: as smooth as those of today, and with the font of the message boxes, which Wine has but does not
# find where Debian puts it.
windows_fonts() {
  local desktop='HKCU\Control Panel\Desktop'
  cp /usr/share/wine/fonts/tahoma*.ttf "$WINEPREFIX/drive_c/windows/Fonts/"
  "$wine" reg add "$desktop" /v FontSmoothing /t REG_SZ /d 2 /f >/dev/null
  "$wine" reg add "$desktop" /v FontSmoothingType /t REG_DWORD /d 1 /f >/dev/null
  wineserver -w
}

# make_locales FOLDER NAME...: languages that a Windows can have, whichever this machine has; LOCPATH leads to them. Others
# may make the same at the same time.
make_locales() {
  local folder=$1 name own
  shift
  mkdir -p "$folder"
  for name in "$@"; do
    [ ! -d "$folder/$name.UTF-8" ] || continue
    own=$(mktemp -d "$folder/making-XXXXXX")
    localedef -i "$name" -f UTF-8 "$own/$name.UTF-8"
    mv -T "$own/$name.UTF-8" "$folder/$name.UTF-8" 2>/dev/null || [ -d "$folder/$name.UTF-8" ]
    rm -rf "$own"
  done
  export LOCPATH=$folder
}
