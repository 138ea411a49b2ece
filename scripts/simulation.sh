# shellcheck shell=bash disable=SC2034,SC2154 # set here for those who source it, or by them
# Sourced, after setup.sh, by what drives the program with a simulated player: what the PC and the update server hold.
# Sets $python. Functions: start_update_server, stop_update_server, make_songs.

python=/usr/bin/python3
update_server=

# start_update_server FOLDER: makes a system archive and an update in FOLDER, and serves them on this machine; the program
# finds them there (CORVIN_UPDATE_SERVER). What the archives hold lies in FOLDER/system and FOLDER/update.
start_update_server() {
  local folder=$1 port
  "$python" "$root/tools/walk/makearchives.py" "$folder/server/download/Corvin4" "$folder/system" "$folder/update"
  : >"$folder/server.log"
  "$python" -u -m http.server --bind 127.0.0.1 --directory "$folder/server" 0 >"$folder/server.log" 2>&1 &
  update_server=$!
  for _ in $(seq 100); do
    port=$(sed -n 's/.*port \([0-9]*\).*/\1/p' "$folder/server.log")
    [ -z "$port" ] || break
    sleep 0.1
  done
  [ -n "$port" ] || fail "The local update server did not start"
  export CORVIN_UPDATE_SERVER=http://127.0.0.1:$port
}

stop_update_server() {
  [ -z "$update_server" ] || kill "$update_server" 2>/dev/null || true
  update_server=
}

# make_songs FOLDER: makes, by $tool, what is copied to a player: FOLDER/pc/Nuove basi, and the songs Prima.mid, Seconda.mp3 and Terza.mid
# beside it. FOLDER/songs names the songs that they were taken from, from the 31st line on Prima, Terza, and those left over.
make_songs() {
  local folder=$1 song
  mkdir -p "$folder/source" "$folder/pc/Nuove basi"
  "$tool" make "$folder/source" --songs 1500 --seed 7 >/dev/null
  find "$folder/source/My Songs" -name '*.mid' -size +0 | sort | sed -n '1,40p' >"$folder/songs"
  while read -r song; do
    cp "$song" "$folder/pc/Nuove basi/"
  done < <(sed -n '1,30p' "$folder/songs")
  cp "$(sed -n 31p "$folder/songs")" "$folder/pc/Prima.mid"
  cp "$(sed -n 32p "$folder/songs")" "$folder/pc/Terza.mid"
  cp "$(find "$folder/source/My Songs" -name '*.mp3' -size +0 | sort | sed -n 20p)" "$folder/pc/Seconda.mp3"
}
