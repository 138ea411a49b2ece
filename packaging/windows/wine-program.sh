# shellcheck shell=bash disable=SC2154 # what scripts/walk and walk-wine have set
# Sourced by scripts/walk: the program is the packaged one, unpacked into an empty Windows (Wine), and the player is its
# removable drive E:. Needs a display, windows_build (the folder with the package and the driver) and CORVIN_QT_MINGW.

# shellcheck source=packaging/windows/wine.sh
. "$root/packaging/windows/wine.sh"
walk=$windows_build/walk
# Wine gives drives to the volumes of this machine that the system's message bus tells it of. It hears of none: the only
# player in sight is the simulated one.
export DBUS_SYSTEM_BUS_ADDRESS=unix:path=/nonexistent
# A PC whose code page is UTF-8: names are as long as on Linux, where this decides which of them are too long.
# (One of the languages without a code page of its own does it; texts and order are not that language's.)
make_locales "$windows_build/locale" hi_IN
unset LC_ALL
export LANG=C
export LC_CTYPE=hi_IN.UTF-8 2>/dev/null # the shell itself does not look there

program_path() { printf 'Z:%s\n' "$1"; }

session_log() { ls "$WINEPREFIX"/drive_c/users/*/AppData/Roaming/Corvin4Manager/log_*.txt; }

# What a user does, and what only the walk needs: its driver and the library of it, which lie outside the package.
install_program() {
  mkdir -p "$walk/program" "$walk/driver/generic"
  new_prefix "$walk/wine"
  (cd "$walk/program" && unzip -q "$windows_build"/Corvin4Manager-*-win64.zip)
  cp "$windows_build"/plugins/generic/*.dll "$walk/driver/generic/"
  cp "$CORVIN_QT_MINGW/bin/Qt5Test.dll" "$walk/driver/"
  windows_variable QT_PLUGIN_PATH "$(program_path "$walk/driver")"
  windows_variable QT_QPA_GENERIC_PLUGINS corvinwalk
  windows_fonts
}

# A folder will do: under Wine its names ignore case as well, and Wine takes the label of a mounted volume from the
# volume itself, where it knows the file systems of former days only.
mount_volume() { return 1; }

plug_player() { "$wine" "$windows_build/wine/plugdrive.exe" e "$player"; }

# The scenario plugs the player in by writing its label.
plug_player_when_labelled() {
  until [ -s "$player/.windows-label" ]; do sleep 0.2; done
  plug_player
}

run_program() {
  local code=0 watcher=
  [ -d "$walk/wine" ] || install_program
  "$wine" reg add 'HKCU\Software\Q-Arte\Corvin4Manager\Application' /v Language /t REG_SZ /d lang_it /f >/dev/null
  if [ -e "$player/.windows-label" ]; then
    plug_player
  else
    plug_player_when_labelled &
    watcher=$!
  fi
  env -u CORVIN_VOLUMES WINEPATH="$(program_path "$walk/driver")" \
    CORVIN_WALK_SCENARIO="$(program_path "$walk/scenario")" CORVIN_WALK_SHOTS="$(program_path "$walk/shots")" \
    CORVIN_WALK_PLAYER="$(program_path "$player")" CORVIN_WALK_LOG="$(program_path "$walk/driver.log")" \
    "$wine" "$walk/program/Corvin4Manager/Corvin4Manager.exe" >"$walk/stderr" 2>&1 || code=$?
  [ -z "$watcher" ] || kill "$watcher" 2>/dev/null || true
  # Also the file manager that the program has opened, and the drive with what Wine keeps of it.
  end_prefix "$walk/wine"
  sed 's/\r$//' "$walk/driver.log"
  return $code
}
