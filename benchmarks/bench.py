#!/usr/bin/env python3
"""Measures the program beside what does the same, both sides in turn, and writes docs/benchmarks.md.

bench.py BUILD-FOLDER [ROW...]: rows by the beginning of their names, all when none is given; the page is then left
alone. Ends with 1 when a figure is over what it is to reach.
"""
import json
import os
import pathlib
import re
import shutil
import statistics
import struct
import subprocess
import sys
import tempfile

from table import Row, write_page

ROUNDS = 7
ROOT = pathlib.Path(__file__).resolve().parent.parent
PLAYER_FILES = ("AUTOEXEC.BAT", "System/Corvin/Corvin.exe", "System/GuiProc/GuiProc.exe")
SPLITTING = ("Organizzazione in sottocartelle", "Ricerca dei titoli")
SCANNING = "Scansione cartelle"

binaries = pathlib.Path()
work = pathlib.Path()


def say(text):
    print(text, flush=True)


def environment(player):
    home = work / "home"
    home.mkdir(exist_ok=True)
    names = ("HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_RUNTIME_DIR")
    return {**os.environ, **{name: str(home) for name in names}, "LC_ALL": "C.UTF-8", "QT_QPA_PLATFORM": "offscreen",
            "CORVIN_VOLUMES": str(player)}


def output(command, **more):
    return subprocess.run([str(part) for part in command], check=True, stdout=subprocess.PIPE,
                          stderr=subprocess.DEVNULL, **more).stdout.decode()


def report(player, before=()):
    """One optimisation by the real window, from the menu to the page of results."""
    text = output([*before, binaries / "Corvin4OptimizeBenchmark", "--report"], env=environment(player))
    found = json.loads(text.strip().splitlines()[-1])
    if not found["good"]:
        sys.exit(f"The optimisation of {player} failed")
    return found


def bare(mode, folder):
    return float(output([binaries / "Corvin4BareSide", mode, folder]))


def in_turn(*sides):
    """The medians of all sides, each run once a round."""
    taken = [[] for _ in sides]
    for _ in range(ROUNDS):
        for values, side in zip(taken, sides):
            values.append(side())
    return [statistics.median(values) for values in taken]


def small_song(number):
    title = f"Canzone {number}".encode()
    notes = b"".join(bytes((0, 0x90, 40 + i % 40, 64, 24, 0x80, 40 + i % 40, 0)) for i in range(60))
    track = b"\0\xff\x03" + bytes([len(title)]) + title + b"\0\xff\x4b\x04\x01Pop" + notes + b"\0\xff\x2f\0"
    return b"MThd\0\0\0\6\0\0\0\1\0\x60MTrk" + struct.pack(">I", len(track)) + track


def plain_player(name, songs, a_folder):
    """A player of small songs in folders of so many."""
    root = work / name
    for file in PLAYER_FILES:
        (root / file).parent.mkdir(parents=True, exist_ok=True)
        (root / file).write_bytes(b"x")
    (root / ".windows-label").write_text("CORVIN4\n")
    for number in range(songs):
        folder = root / "My Songs" / f"F{number // a_folder:05d}"
        if number % a_folder == 0:
            folder.mkdir(parents=True)
        (folder / f"song{number:06d}.mid").write_bytes(small_song(number))
    return root


def inner_loops():
    text = output([binaries / "Corvin4SongBenchmark", "--benchmark_format=json", f"--benchmark_repetitions={ROUNDS}",
                   "--benchmark_enable_random_interleaving=true", "--benchmark_min_time=0.1",
                   "--benchmark_report_aggregates_only=true"])
    times = {entry["run_name"]: entry["cpu_time"] for entry in json.loads(text)["benchmarks"]
             if entry.get("aggregate_name") == "median"}

    def ratio(name, other):
        return times[f"{name}/ours"] / times[f"{name}/{other}"]

    return [
        Row("`LzHuff::expand`, MIDI streams of 50 kB", "liblhasa, the same data as -lh1-", ratio("expand", "liblhasa"),
            0.5, f"{times['expand/ours'] / 1000:.1f} ms for all"),
        Row("`LzHuff::compress`", "the published encoder, transcribed", ratio("compress", "plain"), 1 / 1.5,
            "see below"),
        Row("`importFile` and `getSongInfo`, MP3 with a picture of 60 kB", "TagLib: title, artist, genre",
            ratio("import mp3", "TagLib"), 0.5, f"{times['import mp3/ours'] / 100:.1f} µs a song"),
        Row("the same, MIDI", "plain whole reads", ratio("import midi", "plain read"), 2),
        Row("the same, MFx", "plain reads and `expand`", ratio("import mfx", "read and expand"), 1.3),
    ]


def whole_run():
    player = plain_player("plain", 20000, 100)
    gaps = []

    def ours():
        found = report(player)
        gaps.append(found["gap"])
        return found["run"]

    run, read = in_turn(ours, lambda: bare("read", player))
    shutil.rmtree(player)
    return [Row("Optimisation of 20,000 small songs, nothing to split", "a bare walk and a whole read of each", run / read, 3,
                f"{run:.0f} ms, {read:.0f} ms"),
            Row("Longest gap between processed events in these", "", max(gaps), 50, unit="ms")]


def scaling():
    rows = []
    each = {}
    memory = 0
    gap = 0
    for songs in (20000, 50000, 100000, 200000):
        root = work / "realistic"
        taken = []
        for _ in range(3 if songs < 100000 else 1):
            shutil.rmtree(root, ignore_errors=True)
            root.mkdir()
            output([binaries / "Corvin4PlayerTool", "make", "--songs", str(songs), root])
            found = report(root)
            taken.append(found["run"] * 1000 / songs)
            gap = max(gap, found["gap"])
            memory = found["memory"] / 1024
        each[songs] = statistics.median(taken)
        say(f"  {songs} songs: {each[songs]:.1f} µs each, {memory:.0f} MB")
    shutil.rmtree(root)
    note = ", ".join(f"{songs:,}: {value:.0f} µs" for songs, value in each.items())
    rows.append(Row("Optimisation of 200,000 realistic songs, a song", "the same of 20,000", each[200000] / each[20000], 1.1, note))
    rows.append(Row("Memory with 200,000 songs", "", memory, 150, unit="MB"))
    rows.append(Row("Longest gap between processed events in these", "", gap, 50, unit="ms"))
    return rows


def scanning():
    player = plain_player("scanned", 100000, 100)

    def ours():
        return sum(ms for step, ms in report(player)["steps"].items() if step.startswith(SCANNING))

    scan, walk = in_turn(ours, lambda: bare("walk", player))
    shutil.rmtree(player)
    return [Row("`scan_directories`, 100,000 files", "`std::filesystem::recursive_directory_iterator`, paths collected",
                scan / walk, 2, f"{scan:.0f} ms, {walk:.0f} ms")]


def splitting():
    model = plain_player("model", 20000, 20000)
    copy = work / "split"

    def fresh():
        shutil.rmtree(copy, ignore_errors=True)
        output(["cp", "-a", model, copy])
        return copy

    def ours():
        steps = report(fresh())["steps"]
        return sum(ms for step, ms in steps.items() if any(name in step for name in SPLITTING))

    split, rename = in_turn(ours, lambda: bare("rename", fresh() / "My Songs" / "F00000"))
    shutil.rmtree(model)
    shutil.rmtree(copy)
    return [Row("Splitting 20,000 songs of one folder", "renaming them into prepared folders, 4 kB read of each", split / rename, 2,
                f"{split:.0f} ms, {rename:.0f} ms")]


def copying():
    rows = []
    for name, songs, size in (("2,000 files of 50 kB", 2000, 50000), ("5 files of 200 MB", 5, 200000000)):
        run = subprocess.run([binaries / "Corvin4TransferBenchmark", "--songs", str(songs), "--size", str(size),
                              "--rounds", str(ROUNDS)], stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, check=False)
        lines = run.stdout.decode().strip().splitlines()
        if not lines or not lines[-1].startswith("{"):
            say(f"  left out: {lines[-1] if lines else 'no volume'}")
            continue
        ms = json.loads(lines[-1])
        for what in ("transfer", "copyFileList"):
            rows.append(Row(f"{what}, {name}, exFAT", "`cp -r` and `sync`", ms[what] / ms["cp"], 1.1,
                            f"{ms[what]} ms, {ms['cp']} ms"))
    return rows


def start():
    import time

    def timed(command):
        begun = time.monotonic()
        output(command, env=environment(work / "none"))
        return (time.monotonic() - begun) * 1000

    ours, empty = in_turn(lambda: timed([binaries / "Corvin4StartBenchmark"]),
                          lambda: timed([binaries / "Corvin4BareSide", "window"]))
    return [Row("Program start to the first page", "an empty Qt window", ours / empty, 1.5, f"{ours:.0f} ms, {empty:.0f} ms")]


def requests():
    """What the disk is asked for a song, counted by the system."""
    rows = []
    for name, songs, a_folder, opens in (("nothing to split", 2000, 100, 1), ("all to be split", 2000, 2000, 2)):
        player = plain_player("counted", songs, a_folder)
        trace = work / "trace"
        report(player, ["strace", "-f", "-y", "-e", "trace=openat,getdents64,read,newfstatat,statx,rename", "-o", trace])
        counted = {"open": 0, "list": 0, "read": 0, "stat": 0}
        lists = {}
        for line in trace.read_text(errors="replace").splitlines():
            if str(player) not in line:
                continue
            call = line.split(None, 1)[1]
            if call.startswith("openat") and "O_DIRECTORY" in call:
                folder = re.search(r'"([^"]*)"', call).group(1).rstrip("/")
                lists[folder] = lists.get(folder, 0) + 1
            elif call.startswith("openat") and ".mid\"" in call:
                counted["open"] += 1
            elif call.startswith("read") and ".mid>" in call:
                counted["read"] += int(call.rsplit("=", 1)[1].split()[0])
            elif call.startswith(("statx", "newfstatat")) and ".mid\"" in call:
                counted["stat"] += 1
        song_lists = [count for folder, count in lists.items() if "My Songs/" in folder]
        rows.append(Row(f"Times a song is opened, {name}", "", counted["open"] / songs, opens, unit=""))
        rows.append(Row(f"Bytes read of a song of {len(small_song(0))}, {name}", "", counted["read"] / songs, None, unit=""))
        rows.append(Row(f"Stats of a song by its path, {name}", "", counted["stat"] / songs, 0 if a_folder == 100 else None, unit=""))
        rows.append(Row(f"Times a folder of songs is listed, {name}", "", max(song_lists), 2 if a_folder == 100 else None, unit=""))
        shutil.rmtree(player)
    return rows


def slow_disk():
    if not os.access("/dev/fuse", os.W_OK):
        say("  left out: no fuse here")
        return []
    player = plain_player("backing", 2000, 100)
    mount = work / "slow"
    mount.mkdir()

    def on_slow_disk(measure):
        mount_command = [binaries / "Corvin4SlowDisk", player, "2", mount, "-o", "kernel_cache"]
        output(mount_command)
        try:
            return measure(mount)
        finally:
            output(["fusermount3", "-u", mount])

    run, read = in_turn(lambda: on_slow_disk(lambda disk: report(disk)["run"]),
                        lambda: on_slow_disk(lambda disk: bare("read", disk)))
    shutil.rmtree(player)
    return [Row("Optimisation of 2,000 songs, 2 ms a request", "a bare walk and a whole read of each, on the same disk", run / read, 1.3,
                f"{run:.0f} ms, {read:.0f} ms")]


ALL = {"inner": inner_loops, "run": whole_run, "requests": requests, "slow": slow_disk, "scan": scanning,
       "split": splitting, "start": start, "copy": copying, "scale": scaling}


def main():
    global binaries, work
    binaries = pathlib.Path(sys.argv[1]).resolve() / "bin"
    wanted = sys.argv[2:]
    memory = "/dev/shm" if os.access("/dev/shm", os.W_OK) else None
    rows = []
    with tempfile.TemporaryDirectory(prefix="corvin-bench-", dir=memory) as folder:
        work = pathlib.Path(folder)
        for name, measure in ALL.items():
            if wanted and not any(name.startswith(word) for word in wanted):
                continue
            say(f"==> {name}")
            found = measure()
            for row in found:
                say("  " + row.line())
            rows += found
    if not wanted:
        write_page(ROOT / "docs" / "benchmarks.md", rows, ROUNDS)
    return 0 if all(row.is_reached() for row in rows) else 1


if __name__ == "__main__":
    sys.exit(main())
