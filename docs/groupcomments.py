#!/usr/bin/python3
"""Doxygen's filter for our headers. A comment above several declarations without a blank line between them stands for
all of them, but Doxygen gives it to the first alone. Every other one gets it too, on its own line: no line moves."""

import re
import sys

# What begins something that such a comment does not reach into.
ENDS_GROUP = re.compile(r"\s*($|[{}#]|//|(public|protected|private|signals|(public|private) slots):|(struct|class|enum)\b)")
# What stands below a constructor and says all by itself.
NEEDS_NONE = re.compile(r"~|= delete;|override;")

comment, wanted, done = [], False, []
with open(sys.argv[1], encoding="utf-8") as header:
    for line in header.read().split("\n"):
        if re.match(r"\s*///(?!<)", line):
            if not wanted:
                comment = []
            comment.append(re.sub(r"\s*/// ?", "", line))
            wanted = True
        elif ENDS_GROUP.match(line):
            comment, wanted = [], False
        else:
            whole = line.rstrip().endswith((";", "}"))
            if comment and not wanted and whole and "//" not in line and not NEEDS_NONE.search(line):
                line += " /**< " + " ".join(comment) + " */"
            if whole:
                wanted = False
        done.append(line)
# Free functions have pages only in a file that has one.
print("/** @file */ " + "\n".join(done), end="")
