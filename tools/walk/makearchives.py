"""makearchives.py SERVER-FOLDER SYSTEM-FOLDER UPDATE-FOLDER

Makes a system and an update with made-up content in the last two folders, and packs them into SERVER-FOLDER as
CorvinAll.zip and CorvinUpdate.c4 (a zip as well, with everything below a folder "CorvinUpdate").
"""

import os
import random
import sys
import zipfile

server, system, update = sys.argv[1:]
noise = random.Random(4)


def write(root, name, size):
    path = os.path.join(root, name)
    os.makedirs(os.path.dirname(path), exist_ok=True)
    with open(path, "wb") as file:
        file.write(noise.randbytes(size))


def pack(root, archive, below=""):
    with zipfile.ZipFile(archive, "w", zipfile.ZIP_DEFLATED) as packed:
        for folder, _, names in os.walk(root):
            for name in sorted(names):
                path = os.path.join(folder, name)
                packed.write(path, os.path.join(below, os.path.relpath(path, root)))


write(system, "AUTOEXEC.BAT", 120)
write(system, "System/Corvin/Corvin.exe", 300000)
write(system, "System/Corvin/Corvin.ini", 900)
write(system, "System/GuiProc/GuiProc.exe", 200000)
write(system, "System/GuiProc/Lingua/Perché.txt", 400)
write(system, "System/Playlist/Demo.pls", 100)
for number in range(40):
    write(system, f"Bridges/bridge{number:02}.mid", 300)
    write(system, f"Effects/effect{number:02}.mp3", 500)
write(update, "release.txt", 50)
for number in range(30):
    write(update, f"files/part{number:02}.bin", 4000)

os.makedirs(server)
pack(system, os.path.join(server, "CorvinAll.zip"))
pack(update, os.path.join(server, "CorvinUpdate.c4"), "CorvinUpdate")
