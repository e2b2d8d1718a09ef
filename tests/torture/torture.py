"""Lets the tool's system calls and allocations fail one by one, and kills its imports.

Prints what each command did, and ends with status 0 if that was right everywhere."""

import argparse
import random
import re
import sys
import tempfile
import time
from pathlib import Path

from commands import BAD, COMMANDS, NAMED, RIGHT, WARNED
from faults import Failure, FaultSweep, Results, label
from kills import KillSweep
from sets import Sets
from tool import Tool

COLUMNS = ("tried", RIGHT, WARNED, NAMED, "failures")


def rows_of(results: Results) -> list[tuple[str, ...]]:
    rows = []
    for row in sorted(results.tried):
        bad = sum(results.kinds[row, kind] for kind in BAD)
        figures = [results.tried[row], *(results.kinds[row, kind] for kind in COLUMNS[1:4]), bad]
        rows.append((*row, *map(str, figures)))
    total = [sum(int(row[at]) for row in rows) for at in range(2, 7)]
    rows.append(("all", "", *map(str, total)))
    return rows


def table(results: Results, markdown: bool) -> str:
    head = ("command", "fault", *COLUMNS)
    rows = rows_of(results)
    widths = [max(len(row[at]) for row in [head, *rows]) for at in range(len(head))]
    lines = []
    for row in [head, *rows]:
        cells = [
            cell.ljust(width) if at < 2 else cell.rjust(width)
            for at, (cell, width) in enumerate(zip(row, widths, strict=True))
        ]
        lines.append(f"| {' | '.join(cells)} |" if markdown else "  ".join(cells).rstrip())
    if markdown:
        rule = ["-" * (width - 1) + "-:"[at >= 2] for at, width in enumerate(widths)]
        lines.insert(1, f"| {' | '.join(rule)} |")
    return "\n".join(lines)


def likeness(failure: Failure) -> tuple[str, ...]:
    """What failures of one cause have in common."""
    fault = failure.fault
    why = re.sub(r"/\S*/|compiled|plain|<[a-z ]+>", "", failure.verdict.why)
    why = re.sub(r"\d+", "N", why.splitlines()[0] if why else "")
    return (failure.verdict.kind, label(fault), re.sub(r"\w+\.\w+(\.\w+)*", "FILE", why)[:120])


def listed(failures: list[Failure], most: int) -> str:
    """Alike failures once, with how many there are and how to repeat one of them."""
    alike: dict[tuple[str, ...], list[Failure]] = {}
    for failure in failures:
        alike.setdefault(likeness(failure), []).append(failure)
    lines = []
    for members in sorted(alike.values(), key=len, reverse=True)[:most]:
        first = min(members, key=lambda member: (member.place, member.fault.number))
        places = sorted({member.place for member in members})
        lines.append(
            f"\n{first.verdict.kind}, {len(members)} times, {label(first.fault)},"
            f" in {'; '.join(places)}"
        )
        lines.append(f"    {first.verdict.why[:600]}")
        lines.append(f"    {first.shell}")
    if len(alike) > most:
        lines.append(f"\nand {len(alike) - most} more kinds")
    return "\n".join(lines)


def parse() -> argparse.Namespace:
    parser = argparse.ArgumentParser(description=__doc__, prog="scripts/torture")
    parser.add_argument("--tool", type=Path, required=True, help="the program vref")
    parser.add_argument("--library", type=Path, required=True, help="the library failing_calls")
    parser.add_argument("--short", action="store_true", help="a sample of each kind, in a minute")
    parser.add_argument("--faults", action="store_true", help="calls that fail")
    parser.add_argument("--kills", action="store_true", help="imports that are killed")
    parser.add_argument("--markdown", action="store_true", help="print the table as Markdown")
    parser.add_argument("--commands", default="", help="only these, divided by commas")
    parser.add_argument("--families", default="", help="only these families of calls")
    parser.add_argument("--kill", default="", help="only these kinds of kills, divided by commas")
    parser.add_argument("--list", type=int, default=40, help="kinds of failures that are listed")
    parser.add_argument("--most", type=int, help="how many calls of each kind of fault are tried")
    parser.add_argument("--workers", type=int, default=2, help="how many run at a time")
    parser.add_argument("--seed", type=int, default=random.SystemRandom().randrange(10**6))
    parser.add_argument("minutes", type=float, nargs="?", help="at most; else all is tried")
    return parser.parse_args()


def seconds_of(wanted: argparse.Namespace) -> float:
    """How long imports are killed at random, and how long several run at once."""
    if wanted.minutes:
        return float(wanted.minutes) * 15
    return 3 if wanted.short else 120


def main() -> int:
    wanted = parse()
    random.seed(wanted.seed)
    both = wanted.faults == wanted.kills
    most = wanted.most or (6 if wanted.short else None)
    started = time.monotonic()
    deadline = started + wanted.minutes * 60 if wanted.minutes else None
    names = [name for name in wanted.commands.split(",") if name]
    unknown = set(names) - {command.name for command in COMMANDS}
    if unknown:
        print(f"There is no command {', '.join(unknown)} among those that are tortured.")
        return 2
    results = Results()
    with tempfile.TemporaryDirectory(prefix="torture") as folder:
        scratch = Path(folder)
        tool = Tool(wanted.tool.resolve(), wanted.library.resolve(), scratch)
        sets = Sets(tool, scratch)
        if wanted.faults or both:
            sweep = FaultSweep(tool, sets, scratch, wanted.workers)
            families = [name for name in wanted.families.split(",") if name]
            sweep.sweep(names, families, most, deadline, results)
        if wanted.kills or both:
            kinds = [kind for kind in wanted.kill.split(",") if kind]
            kills = KillSweep(tool, sets, scratch, results)
            kills.sweep(kinds, wanted.most or (25 if wanted.short else None), seconds_of(wanted))
    print(table(results, wanted.markdown))
    if results.left_out:
        print(f"For {results.left_out} more the time did not suffice.")
    if results.failures:
        print(f"\n{len(results.failures)} failures:\n{listed(results.failures, wanted.list)}")
    print(f"\nSeed {wanted.seed}; {time.monotonic() - started:.0f} s")
    return 1 if results.failures or not results.tried else 0


if __name__ == "__main__":
    sys.exit(main())
