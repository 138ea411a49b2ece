"""The table of docs/benchmarks.md."""
import datetime
import os
import platform

MARKS = ("<!-- measured -->", "<!-- end of what was measured -->")


class Row:
    """One line of the table: a figure, what it is to reach, and what it was measured from."""

    def __init__(self, name, against, figure, reach, note="", unit="times"):
        self.name, self.against, self.figure = name, against, figure
        self.reach, self.note, self.unit = reach, note, unit

    def is_reached(self):
        return self.reach is None or self.figure <= self.reach

    def line(self):
        digits = 2 if self.unit == "times" else 0
        measured = f"{self.figure:.{digits}f} {self.unit}".strip()
        reach = "–" if self.reach is None else f"{round(self.reach, 2):g}"
        mark = "" if self.is_reached() else " (not reached, see below)"
        return f"| {self.name} | {self.against} | {measured} | {reach}{mark} | {self.note} |"


def machine():
    model = next((line.split(":", 1)[1].strip() for line in open("/proc/cpuinfo") if line.startswith("model name")), "?")
    return f"{os.cpu_count()} cores, {model}, Linux {platform.release()}, {datetime.date.today()}"


def write_page(page, rows, rounds):
    """Puts the rows in the place of those that the page has, a path."""
    text = page.read_text()
    start_at, end_at = text.index(MARKS[0]) + len(MARKS[0]), text.index(MARKS[1])
    table = [f"Measured on {machine()}, medians of {rounds} rounds.", "",
             "| work | against | measured | to reach | |", "|---|---|---|---|---|", *[row.line() for row in rows]]
    page.write_text(text[:start_at] + "\n" + "\n".join(table) + "\n" + text[end_at:])
