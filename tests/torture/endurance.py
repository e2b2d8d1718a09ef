"""Asks a session of the tool as often as wanted, and checks that its memory stays flat.

    endurance.py --tool VREF --set ROOT REQUESTS CHANGES

The session is spoken to as an editor would: requests of both versions of the protocol, questions, lines
that are wrong, and changes of the language in between. At ten moments in equal distances, after the same
round of lines, its size is printed. Ends with status 1 when it has grown since the second of them."""

import argparse
import json
import subprocess
import sys
import time
from pathlib import Path

MOMENTS = 10
# Lines that are sent before their answers are read: less than a pipe holds.
AT_A_TIME = 50


class Session:
    """A running `vref watch --json`; each line that is sent has one answer."""

    def __init__(self, tool: Path, root: Path):
        self.process = subprocess.Popen(
            [str(tool), "watch", "--json", "--doc-root", str(root), "--language", "en"],
            stdin=subprocess.PIPE,
            stdout=subprocess.PIPE,
            encoding="utf-8",
        )
        self.answers = 0
        self.results = 0

    def ask(self, lines: list[str]) -> None:
        assert self.process.stdin and self.process.stdout
        self.process.stdin.write("".join(line + "\n" for line in lines))
        self.process.stdin.flush()
        left = len(lines)
        while left:
            text = self.process.stdout.readline()
            if not text:
                raise RuntimeError(f"The session ended with {self.process.wait()}.")
            value = json.loads(text)
            if "notice" not in value and "method" not in value:
                left -= 1
                self.answers += 1
                result = value.get("result")
                self.results += len(value.get("results") or (result or {}).get("hits") or ())

    def kilobytes(self) -> int:
        for line in Path(f"/proc/{self.process.pid}/status").read_text().splitlines():
            if line.startswith("VmRSS:"):
                return int(line.split()[1])
        raise RuntimeError("The session has ended.")

    def end(self) -> int:
        assert self.process.stdin
        self.process.stdin.close()
        return self.process.wait()


def round_of_lines(tool: Path, root: Path) -> list[str]:
    found = subprocess.run(
        [str(tool), "find", "--all", "--json", "--doc-root", str(root), "--language", "en"],
        check=True,
        stdout=subprocess.PIPE,
        encoding="utf-8",
    )
    names = [entry["entities"][0]["name"] for entry in json.loads(found.stdout)]
    lines = []
    for number, name in enumerate(names):
        call = {"jsonrpc": "2.0", "id": number}
        lines += [
            f"'{name}' --ignore-case --ignore-package",
            f"--search text '{name[:6]}'",
            f"--search purpose '{name[:4]}' --limit 3",
            f"--search nonsense '{name}'",
            json.dumps({**call, "method": "ask", "params": {"question": name[:-1]}}),
            json.dumps({**call, "method": "complete", "params": {"prefix": name[:3]}}),
            json.dumps({**call, "method": "show", "params": {"question": name}}),
            json.dumps({**call, "method": "nothing"}),
        ]
    return lines


def run(session: Session, lines: list[str], requests: int, changes: int) -> list[int]:
    sizes = []
    changed = 0
    sent = 0
    print(f"{'answers':>10} {'changes':>9} {'process':>12}", flush=True)
    for moment in range(1, MOMENTS + 1):
        while changed < changes * moment // MOMENTS:
            changed += 1
            session.ask([":language " + ("en" if changed % 2 == 0 else "ja")])
            until = requests * changed // changes
            while sent < until:
                some = [lines[(sent + at) % len(lines)] for at in range(min(AT_A_TIME, until - sent))]
                session.ask(some)
                sent += len(some)
        # The same state at each moment.
        session.ask([":language en", ":reload"])
        for at in range(0, len(lines), AT_A_TIME):
            session.ask(lines[at : at + AT_A_TIME])
        sizes.append(session.kilobytes())
        print(f"{session.answers:>10} {changed:>9} {sizes[-1]:>9} kB", flush=True)
    return sizes


def main() -> int:
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--tool", type=Path, required=True)
    parser.add_argument("--set", type=Path, required=True)
    parser.add_argument("requests", type=int)
    parser.add_argument("changes", type=int)
    wanted = parser.parse_args()
    began = time.monotonic()
    session = Session(wanted.tool, wanted.set)
    sizes = run(session, round_of_lines(wanted.tool, wanted.set), wanted.requests, wanted.changes)
    status = session.end()
    print(f"{session.results} results, status {status}, {time.monotonic() - began:.0f} s")
    # Threads keep some of what they freed, how much depends on which of them did.
    if sizes[-1] > sizes[1] * 1.1 + 2048:
        print("Memory has grown.")
        return 1
    return 0 if status == 0 and session.results else 1


if __name__ == "__main__":
    sys.exit(main())
