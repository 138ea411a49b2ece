"""comparebackup.py PLAYER BACKUP [--but-playlists]

Ends with 0 only when BACKUP holds exactly what a backup of PLAYER holds, byte for byte: every visible file whose name
has a dot, without the player's system parts, and of the system the playlists alone.
"""

import filecmp
import os
import sys

player, backup = sys.argv[1:3]
but_playlists = "--but-playlists" in sys.argv


def files(root):
    for folder, folders, names in os.walk(root):
        folders[:] = [name for name in folders if not name.startswith(".")]
        for name in names:
            yield os.path.relpath(os.path.join(folder, name), root)


def is_saved(path):
    lower = "/" + path.lower()
    if lower.startswith("/system/playlist/"):
        return not but_playlists
    if any(part in lower for part in ("/bridges/", "/effects/", "/system/")) or "autoexec.bat" in lower:
        return False
    name = os.path.basename(path)
    return "." in name and not name.startswith(".")


def saved_files(root):
    """Path without regard to case, as on the player's disk -> path as it is written here."""
    return {path.lower(): os.path.join(root, path) for path in files(root)
            if is_saved(path) and not path.startswith("CorvinUpdate")}


wanted, saved = saved_files(player), saved_files(backup)
lost = wanted.keys() - saved.keys()
strange = saved.keys() - wanted.keys()
different = {path for path in wanted.keys() & saved.keys()
             if not filecmp.cmp(wanted[path], saved[path], shallow=False)}
for title, paths in (("not in the backup", lost), ("not on the player", strange), ("different", different)):
    for path in sorted(paths)[:10]:
        print(f"    {title}: {path}")
print(f"{len(wanted)} files compared")
sys.exit(1 if lost or strange or different or not wanted else 0)
