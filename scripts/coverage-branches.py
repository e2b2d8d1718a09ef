"""Turns the counters of a build with coverage into a file that gcovr reads.

    coverage-branches.py OUTPUT FOLDER...

Counts each branch that the program decides. Not counted are, as pairs:

- the two ways out of a call that may throw, which are branches for the compiler;
- decisions that never ran in a line that did. They are those of the code that an exception runs, which
  lets go of what was made; or the right side of an "and" whose left side was never true, which is
  counted as missed already.

gcovr itself reads gcov's listing, which does not tell what throws where nothing ran, so that it counts
as missed what one program runs and another merely contains. gcov's JSON tells.
"""

import collections
import json
import os
import subprocess
import sys
from pathlib import Path

TOP = Path(__file__).resolve().parent.parent
FOLDERS = ("host/", "reference/")


def decisions(kinds, taken, is_run):
    """How often each branch of a line was taken, without those that nobody decides."""
    branches = [(falls, throws, count) for (falls, throws), count in zip(kinds, taken)]
    pairs = list(zip(branches[::2], branches[1::2]))
    if len(branches) % 2 != 0 or any(one[0] == other[0] for one, other in pairs):
        # A switch has as many as it likes.
        return [count for _, throws, count in branches if not throws]
    return [count for one, other in pairs for count in (one[2], other[2])
            if not (one[1] or other[1]) and not (is_run and one[2] == 0 and other[2] == 0)]


class Line:
    """A line of a source, in all programs that have it, and all instances of its template."""

    def __init__(self):
        self.count = 0
        self.taken = {}  # by the kinds of the branches

    def add(self, told):
        # What a process counts while it exits and its threads go on does not add up: gcov, which takes
        # one number from another, may come to less than nothing.
        self.count += max(told["count"], 0)
        kinds = tuple((branch["fallthrough"], branch["throw"]) for branch in told["branches"])
        known = self.taken.setdefault(kinds, [0] * len(kinds))
        for at, branch in enumerate(told["branches"]):
            known[at] += max(branch["count"], 0)

    def branches(self):
        return [count for kinds, taken in sorted(self.taken.items())
                for count in decisions(kinds, taken, self.count > 0)]


def main():
    output, *folders = sys.argv[1:]
    lines = collections.defaultdict(lambda: collections.defaultdict(Line))
    for folder in folders:
        for counters in sorted(Path(folder).rglob("*.gcda")):
            result = subprocess.run(
                ["gcov-12", "--branch-probabilities", "--json-format", "--stdout", counters],
                stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, check=True)
            told = json.loads(result.stdout)
            for file in told["files"]:
                path = os.path.normpath(os.path.join(told["current_working_directory"], file["file"]))
                name = os.path.relpath(path, TOP)
                if name.startswith(FOLDERS):
                    for line in file["lines"]:
                        lines[name][line["line_number"]].add(line)
    files = [{
        "file": name, "functions": [],
        "lines": [{
            "line_number": number, "count": line.count, "gcovr/noncode": False,
            "gcovr/excluded": False,
            "branches": [{"count": count, "fallthrough": False, "throw": False}
                         for count in line.branches()],
        } for number, line in sorted(found.items())],
    } for name, found in sorted(lines.items())]
    with open(output, "w", encoding="utf-8") as stream:
        json.dump({"gcovr/format_version": "0.3", "files": files}, stream)


if __name__ == "__main__":
    main()
