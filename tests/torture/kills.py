"""Kills imports, before each of their system calls and at random under readers, and lets several
importers and readers work at once."""

import json
import random
import re
import shutil
import signal
import subprocess
import threading
import time
from collections import Counter
from collections.abc import Callable
from pathlib import Path
from typing import IO

import documentation
from commands import DIED, LEFT_BEHIND, MISLED, NEXT, RIGHT, TORN, WRONG, Verdict
from faults import Failure, Results
from sets import MANIFEST, Sets, contents, named_files
from tool import Fault, Tool

KINDS = ("calls", "random", "crowd")
EDITION = re.compile(r"Edition ([\w-]+)\.")


def editions(text: str) -> set[str]:
    return set(EDITION.findall(text))


class Readers:
    """Ask for all of a product over and over; each answer must be of one edition, and whole."""

    def __init__(self, tool: Tool, root: Path, product: str, entries: int) -> None:
        self.tool = tool
        self.root = root
        self.product = product
        self.entries = entries
        self.answers = 0
        self.seen: set[str] = set()
        self.faults: list[str] = []
        self.is_over = threading.Event()
        self.threads = [
            threading.Thread(target=self.find),
            threading.Thread(target=self.watch, args=(self.first_version, 1)),
            threading.Thread(target=self.watch, args=(self.second_version, 2)),
        ]

    def __enter__(self) -> "Readers":
        for thread in self.threads:
            thread.start()
        return self

    def __exit__(self, *_: object) -> None:
        self.is_over.set()
        for thread in self.threads:
            thread.join()

    def judge(self, who: str, text: str, count: int) -> None:
        found = editions(text)
        self.seen |= found
        self.answers += 1
        if len(found) != 1 or count != self.entries:
            self.faults.append(f"{who}: editions {sorted(found)}, {count} entries: {text[:300]}")

    def find(self) -> None:
        words = ["find", "--exact", "--all", "--json", "--product", self.product]
        while not self.is_over.is_set():
            run = self.tool.run([*words, "--doc-root", str(self.root)])
            if run.status != 0:
                self.faults.append(f"find: status {run.status}: {run.messages}")
                continue
            entries = json.loads(run.output)
            self.judge("find", json.dumps([entry["purpose"] for entry in entries]), len(entries))

    def first_version(self, number: int) -> str:
        return f"--all --product {self.product}"

    def second_version(self, number: int) -> str:
        params = {"all": True, "product": self.product, "limit": 1000, "fields": ["purpose"]}
        return json.dumps({"jsonrpc": "2.0", "id": number, "method": "find", "params": params})

    def watch(self, request: Callable[[int], str], version: int) -> None:
        session = subprocess.Popen(
            [str(self.tool.program), "watch", "--json", "--doc-root", str(self.root)],
            stdin=subprocess.PIPE,
            stdout=subprocess.PIPE,
            text=True,
            env=self.tool.environment,
        )
        assert session.stdin is not None and session.stdout is not None
        number = 0
        try:
            while not self.is_over.is_set():
                number += 1
                session.stdin.write(request(number) + "\n")
                session.stdin.flush()
                self.take_answer(session.stdout, version)
        except (BrokenPipeError, EOFError, ValueError) as error:
            self.faults.append(f"watch {version}: the session has ended: {error!r}")
        finally:
            session.stdin.close()
            session.wait(timeout=30)
            session.stdout.close()
        if session.returncode != 0:
            self.faults.append(f"watch {version}: status {session.returncode}")

    def take_answer(self, answers: IO[str], version: int) -> None:
        """Reads to the answer; what comes before are notices."""
        while True:
            line = answers.readline()
            if not line:
                raise EOFError
            message = json.loads(line)
            if "line" not in message and "id" not in message:
                if "warning" in (message.get("notice"), message.get("method")):
                    self.faults.append(f"watch {version}: {line.strip()}")
                continue
            if "error" in message:
                self.faults.append(f"watch {version}: {line.strip()}")
                return
            found = message["results"] if version == 1 else message["result"]["hits"]
            self.judge(
                f"watch {version}", json.dumps([entry["purpose"] for entry in found]), len(found)
            )
            return


class KillSweep:
    def __init__(self, tool: Tool, sets: Sets, scratch: Path, results: Results) -> None:
        self.tool = tool
        self.sets = sets
        self.scratch = scratch
        self.results = results

    def note(self, place: str, kind: str, number: int, verdict: Verdict, shell: str) -> None:
        self.results.add((place, kind), verdict.kind)
        if verdict.kind != RIGHT:
            fault = Fault("", "kill", number=number)
            self.results.failures.append(Failure(place, fault, verdict, shell))

    def sweep(self, kinds: list[str], most: int | None, seconds: float) -> None:
        """`most` kills before a call, in each place; `seconds` for each of the other kinds."""
        if shutil.which("strace") is None:
            raise RuntimeError("strace is missing; scripts/install-packages installs it.")
        for kind in kinds or KINDS:
            if kind == "calls":
                self.before_each_call("import", most)
                self.before_each_call("import-new", most)
            elif kind == "random":
                self.at_random(seconds)
            else:
                self.crowd(seconds)

    # Before each system call

    def before_each_call(self, place: str, most: int | None) -> None:
        """strace counts the calls of each name and of each thread apart."""
        is_new = place == "import-new"
        root = self.fresh("killed", is_new)
        words = Sets.importing(self.sets.tree, root)
        log = self.scratch / "calls"
        run = self.tool.run(words, before=["strace", "-f", "-qq", "-o", str(log)])
        if run.status != 0:
            raise RuntimeError(f"{run.command}: {run.messages}")
        counts: Counter[str] = Counter()
        by_thread: Counter[tuple[str, str]] = Counter()
        for line in log.read_text(errors="replace").splitlines():
            if call := re.match(r"(\d+) +(\w+)\(", line):
                by_thread[call[1], call[2]] += 1
        for (_, name), count in by_thread.items():
            # It has no beginning that the tool could be killed at.
            if name not in ("execve", "exit_group", "exit"):
                counts[name] = max(counts[name], count)
        jobs = [(name, number) for name, count in counts.items() for number in range(1, count + 1)]
        # What changes the set is tried before what only reads.
        first = ("renameat", "unlinkat", "fsync", "mkdir", "mkdirat", "flock")
        then = ("write", "openat")
        random.shuffle(jobs)
        jobs.sort(key=lambda job: 0 if job[0] in first else 1 if job[0] in then else 2)
        kills = 0
        for name, number in jobs[:most]:
            root = self.fresh("killed", is_new)
            words = Sets.importing(self.sets.tree, root)
            inject = f"--inject={name}:signal=SIGKILL:when={number}"
            before = ["strace", "-f", "-qq", "-o", "/dev/null", "-e", f"trace={name}", inject]
            run = self.tool.run(words, before=before)
            kills += run.status == -signal.SIGKILL
            verdict = self.sets.after_import(root, run.status != 0, is_new)
            # What was killed after the rename need not have told that it was done.
            if verdict.kind == MISLED:
                verdict = Verdict(RIGHT)
            if run.status not in (0, -signal.SIGKILL):
                verdict = Verdict(DIED, f"{run.status}: {run.messages}")
            self.note(place, "killed before a call", number, verdict, run.command)
        if kills == 0:
            raise RuntimeError("No import was killed.")

    def fresh(self, name: str, is_new: bool) -> Path:
        if is_new:
            shutil.rmtree(self.scratch / name, ignore_errors=True)
            return self.scratch / name
        return self.sets.copy(self.sets.compiled, name)

    # At random, under readers

    def trees(self, count: int, pages: int = 4) -> list[Path]:
        made = []
        for number in range(count):
            tree = self.scratch / f"tree{number}-{pages}"
            documentation.write_tree(tree, f"e{number}", pages)
            made.append(tree)
        return made

    def at_random(self, seconds: float) -> None:
        pages = 30
        trees = self.trees(4, pages)
        root = self.sets.copy(self.sets.compiled, "random")
        self.sets.must([*Sets.importing(trees[0], root), "--force"])
        started = time.monotonic()
        self.sets.must(Sets.importing(trees[0], root))
        longest = (time.monotonic() - started) * 1.2
        others = self.answer_of(root, "arith")
        kills = 0
        number = 0
        current = {"e0"}
        with Readers(self.tool, root, "gadgets", 2 * pages) as readers:
            end = time.monotonic() + seconds
            while time.monotonic() < end:
                number += 1
                tree = trees[number % len(trees)]
                edition = f"e{number % len(trees)}"
                delay = random.uniform(0, longest)
                words = [str(self.tool.program), *Sets.importing(tree, root)]
                child = subprocess.Popen(
                    words,
                    stdout=subprocess.DEVNULL,
                    stderr=subprocess.DEVNULL,
                    env=self.tool.environment,
                )
                time.sleep(delay)
                child.kill()
                status = child.wait()
                kills += status == -signal.SIGKILL
                verdict = self.after_kill(root, current, edition, status)
                self.note("import", "killed at random", number, verdict, " ".join(words))
                found = editions(self.sets.answers(root))
                current = found if len(found) == 1 else current
        self.judge_readers(readers, "killed imports", number)
        self.sets.must(Sets.importing(trees[0], root))
        left = set(contents(root)) - named_files(root) - self.kept(root)
        verdict = Verdict(LEFT_BEHIND, " ".join(sorted(left))) if left else Verdict(RIGHT)
        if self.answer_of(root, "arith") != others:
            verdict = Verdict(TORN, "another product has changed")
        if kills == 0:
            verdict = Verdict(WRONG, "no import was killed in time")
        self.note("import", "after all kills", number, verdict, "")

    def answer_of(self, root: Path, product: str) -> str:
        words = ["find", "--exact", "--all", "--json", "--product", product]
        return self.sets.must([*words, "--doc-root", str(root)]).output

    def after_kill(self, root: Path, old: set[str], edition: str, status: int) -> Verdict:
        check = self.tool.run(["validate", str(root)])
        if check.status != 0:
            return Verdict(TORN, check.output + check.messages)
        found = editions(self.sets.answers(root))
        allowed = [{edition}] if status == 0 else [{edition}, old]
        if status not in (0, -signal.SIGKILL):
            return Verdict(NEXT, f"status {status}")
        return Verdict(RIGHT) if found in allowed else Verdict(TORN, f"{found} after {old}")

    @staticmethod
    def kept(root: Path) -> set[str]:
        """The files of the edition before, which readers may still have in mind."""
        names = set()
        manifest = json.loads((root / MANIFEST).read_text(encoding="utf-8"))
        numbers: dict[str, set[int]] = {}
        for name in contents(root):
            if found := re.fullmatch(r"(.*/gadgets\d*)-(\d+)(\..*)", name):
                numbers.setdefault(found[1], set()).add(int(found[2]))
        for product in manifest["products"]:
            for files in product["files"].values():
                if found := re.fullmatch(r"(.*)-(\d+)\.lookup\.json", files["lookup"]):
                    before = [at for at in numbers.get(found[1], ()) if at < int(found[2])]
                    if before:
                        start = f"{found[1]}-{max(before)}."
                        names |= {name for name in contents(root) if name.startswith(start)}
        return names

    def judge_readers(self, readers: Readers, what: str, number: int) -> None:
        for fault in readers.faults[:20]:
            self.note("readers", what, number, Verdict(WRONG, fault), "")
        for _ in range(readers.answers - len(readers.faults)):
            self.results.add(("readers", what), RIGHT)
        if readers.answers == 0:
            self.note("readers", what, number, Verdict(WRONG, "nothing was answered"), "")

    # Several at once

    def crowd(self, seconds: float) -> None:
        pages = 10
        trees = self.trees(3, pages)
        root = self.sets.copy(self.sets.compiled, "crowd")
        products = ["gadgets", "gadgets", "gadgets2", "gadgets3"]
        for product in set(products):
            self.sets.must([*Sets.importing(trees[0], root, product), "--force"])
        end = time.monotonic() + seconds
        count = [0]
        lock = threading.Lock()

        def work(product: str) -> None:
            number = 0
            while time.monotonic() < end:
                number += 1
                words = Sets.importing(trees[number % len(trees)], root, product)
                run = self.tool.run(words)
                verdict = Verdict(RIGHT)
                if run.status != 0:
                    verdict = Verdict(NEXT, f"status {run.status}: {run.messages[-500:]}")
                with lock:
                    count[0] += 1
                    self.note("import", "several at once", number, verdict, run.command)

        with Readers(self.tool, root, "gadgets", 2 * pages) as readers:
            threads = [threading.Thread(target=work, args=(product,)) for product in products]
            for thread in threads:
                thread.start()
            for thread in threads:
                thread.join()
        self.judge_readers(readers, "several importers", count[0])
        check = self.tool.run(["validate", str(root)])
        verdict = Verdict(RIGHT) if check.status == 0 else Verdict(TORN, check.output)
        left = set(contents(root)) - named_files(root) - self.kept(root)
        if left:
            verdict = Verdict(LEFT_BEHIND, " ".join(sorted(left)))
        self.note("import", "after all imports", count[0], verdict, "")
