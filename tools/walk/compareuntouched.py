"""compareuntouched.py BEFORE AFTER

Both are snapshots of a player. Ends with 0 only when every file outside the system's folders is the same in both.
"""

import json
import sys

SYSTEM = ("system/", "bridges/", "effects/", "corvinupdate/", "autoexec.bat")


def files(snapshot):
    with open(snapshot, encoding="utf-8") as lines:
        entries = [json.loads(line) for line in lines]
    return {(entry["path"], entry["sha1"]) for entry in entries
            if "path" in entry and not entry["path"].lower().startswith(SYSTEM)}


before, after = files(sys.argv[1]), files(sys.argv[2])
for row in sorted(before ^ after)[:10]:
    print("    differs:", row[0])
print(f"{len(before)} files compared")
sys.exit(1 if before ^ after or not before else 0)
