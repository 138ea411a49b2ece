"""makearchives.py FOLDER: the archives that tst_unar unpacks, good ones and evil ones."""
import io
import os
import sys
import tarfile
import zipfile

folder = sys.argv[1]
os.makedirs(folder, exist_ok=True)


def make_zip(name, entries, method=zipfile.ZIP_STORED):
    path = os.path.join(folder, name)
    with zipfile.ZipFile(path, "w", method) as archive:
        for entry, content in entries:
            archive.writestr(entry, content)
    return path


def add_file(archive, name, content):
    info = tarfile.TarInfo(name)
    info.size = len(content)
    archive.addfile(info, io.BytesIO(content))


def add_link(archive, name, kind, target):
    info = tarfile.TarInfo(name)
    info.type = kind
    info.linkname = target
    archive.addfile(info)


make_zip("whole", [("System/Corvin/Corvin.exe", b"MZ" * 5000), ("System/.hidden", b"h"), ("README", b"no dot"),
                   ("Canzoni/Perch\u00e9.mid", b"MThd"), ("Empty/", b"")], zipfile.ZIP_DEFLATED)
make_zip("many", [("d%d/f%d.txt" % (i % 7, i), b"%d" % i) for i in range(1200)])
make_zip("new", [("a.txt", b"new")])
with tarfile.open(os.path.join(folder, "tar"), "w:gz") as archive:
    add_file(archive, "a/b.txt", b"tar")

# Entries that lead outside.
for kind, name in [("parent", "../evil"), ("parent-from-inside", "a/../../evil"),
                   ("absolute", "/tmp/corvin-unar-evil"), ("drive-letter", "C:/evil"),
                   ("backslashes", "..\\..\\evil")]:
    make_zip(kind, [("before.txt", b"1"), (name, b"evil"), ("after.txt", b"2")])
with tarfile.open(os.path.join(folder, "links"), "w") as archive:
    add_link(archive, "way", tarfile.SYMTYPE, "..")
    add_file(archive, "way/evil", b"evil")
    add_link(archive, "hard", tarfile.LNKTYPE, "/etc/hostname")

# Damaged ones.
with open(make_zip("cut", [("big.bin", os.urandom(200000))], zipfile.ZIP_DEFLATED), "r+b") as file:
    file.truncate(100000)
with open(make_zip("checksum", [("a.txt", b"AAAAAAAAAAAAAAAA")]), "r+b") as file:
    data = file.read().replace(b"AAAAAAAAAAAAAAAA", b"AAAAAAAABAAAAAAA")
    file.seek(0)
    file.write(data)
