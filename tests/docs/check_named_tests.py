"""Checks that the tests exist which pages name as holding what they promise.

    check_named_tests.py CTEST BUILD_FOLDER PAGE...

A page names a test as `Suite.Test`, or all of a suite as `Suite.*`. In a table with a column "Test" or
"Tests", each row must name one."""

import json
import re
import subprocess
import sys
from pathlib import Path


def existing_tests(ctest: str, build: str) -> set[str]:
    shown = subprocess.run(
        [ctest, "--test-dir", build, "--show-only=json-v1"],
        check=True,
        stdout=subprocess.PIPE,
        encoding="utf-8",
    )
    names = (test["name"] for test in json.loads(shown.stdout)["tests"])
    # A test with a parameter is "Values/Suite.Test/Value".
    return {re.sub(r"^(?:\w+/)?(\w+\.\w+)(?:/.*)?$", r"\1", name) for name in names}


def faults_of(page: Path, tests: set[str]) -> list[str]:
    suites = {test.rsplit(".", 1)[0] for test in tests}
    faults = []
    column = None
    for number, line in enumerate(page.read_text(encoding="utf-8").splitlines(), start=1):
        place = f"{page}:{number}"
        cells = [cell.strip() for cell in line.strip().strip("|").split("|")]
        if not line.startswith("|"):
            column = None
        elif cells[-1] in ("Test", "Tests"):
            column = len(cells) - 1
        names = re.findall(r"`([A-Z]\w*\.(?:\w+|\*))`", line)
        if column is not None and line.startswith("| ") and cells[column] not in ("Test", "Tests"):
            if not cells[0].startswith("---") and not re.search(r"`[A-Z]\w*\.", cells[column]):
                faults.append(f"{place}: This row names no test.")
        for name in names:
            suite, test = name.rsplit(".", 1)
            exists = suite in suites if test == "*" else name in tests
            if not exists:
                faults.append(f'{place}: There is no test "{name}".')
    return faults


def main() -> int:
    ctest, build, *pages = sys.argv[1:]
    tests = existing_tests(ctest, build)
    faults = [fault for page in pages for fault in faults_of(Path(page), tests)]
    print("\n".join(faults) or f"{len(pages)} pages name tests that exist.")
    return 1 if faults or not tests or not pages else 0


if __name__ == "__main__":
    sys.exit(main())
