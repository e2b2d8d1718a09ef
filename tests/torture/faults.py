"""Lets each call of a command fail in turn, and judges what the command then does."""

import errno
import json
import queue
import random
import shutil
import threading
import time
from collections import Counter
from collections.abc import Callable, Iterable
from concurrent.futures import ThreadPoolExecutor
from dataclasses import dataclass, field, replace
from pathlib import Path

from commands import COMMANDS, GOOD, LEAK, MISLED, RIGHT, Command, Verdict, is_of_output
from documentation import LOCALES
from sets import Sets
from tool import Fault, Run, Tool

ERRORS = {
    "open": (errno.EIO, errno.EMFILE),
    "read": (errno.EIO,),
    "write": (errno.ENOSPC, errno.EIO),
    "fsync": (errno.EIO, errno.ENOSPC),
    "rename": (errno.EIO, errno.ENOSPC),
    "map": (errno.ENOMEM,),
    "close": (errno.EIO,),
    "mkdir": (errno.ENOSPC,),
    "unlink": (errno.EIO,),
    "stat": (errno.EIO,),
    "list": (errno.EIO,),
    "link": (errno.EIO,),
    "thread": (errno.EAGAIN,),
    "lock": (errno.ENOLCK,),
    "memory": (errno.ENOMEM,),
}
# What a signal interrupts. The descriptor of an interrupted close() is gone all the same.
INTERRUPTED = ("open", "read", "write", "close", "lock", "poll")
SHORT = ("read", "write")

# Before main() the tool has nothing of its own to do, so that two commands stand for all.
FROM_START = ("version", "find")


def faults_of(command: Command) -> Iterable[Fault]:
    for family, errors in ERRORS.items():
        for error in errors:
            for times in ("1", "all"):
                yield Fault(family, str(error), times)
    for family in INTERRUPTED:
        yield Fault(family, str(errno.EINTR), "1")
        yield Fault(family, str(errno.EINTR), "3")
    for family in SHORT:
        yield Fault(family, "short", "1")
        yield Fault(family, "short", "all")
    if command.name in FROM_START:
        for times in ("1", "all"):
            yield Fault("memory", str(errno.ENOMEM), times, since="start")


def label(fault: Fault) -> str:
    """The family as the summary names it."""
    if fault.how == "kill":
        return "killed"
    if fault.since == "start":
        return f"{fault.family} from the start"
    if fault.how == str(errno.EINTR):
        return "interrupted calls"
    return "short counts" if fault.how == "short" else fault.family


@dataclass(frozen=True)
class Job:
    command: Command
    compiled: bool
    fault: Fault

    @property
    def place(self) -> str:
        if not (self.command.plain and self.command.compiled):
            return self.command.name
        return f"{self.command.name}, compiled" if self.compiled else self.command.name


@dataclass
class Failure:
    place: str
    fault: Fault
    verdict: Verdict
    shell: str  # the command line that repeats it


@dataclass
class Results:
    tried: Counter[tuple[str, str]] = field(default_factory=Counter)
    kinds: Counter[tuple[tuple[str, str], str]] = field(default_factory=Counter)
    failures: list[Failure] = field(default_factory=list)
    left_out: int = 0

    def add(self, row: tuple[str, str], kind: str) -> None:
        self.tried[row] += 1
        self.kinds[row, kind] += 1


class FaultSweep:
    def __init__(self, tool: Tool, sets: Sets, scratch: Path, workers: int) -> None:
        self.tool = tool
        self.sets = sets
        self.scratch = scratch
        self.workers = workers
        self.right: dict[tuple[str, bool], Run] = {}
        self.counts: dict[tuple[str, bool, str, str], int] = {}
        self.free: queue.Queue[int] = queue.Queue()
        for worker in range(workers):
            self.free.put(worker)

    def prepare(self, command: Command, compiled: bool, worker: int) -> dict[str, Path]:
        source = self.sets.compiled if compiled else self.sets.plain
        folders = {"set": source, "tree": self.sets.tree, "new": self.scratch / f"new{worker}"}
        if command.changes:
            folders["set"] = self.scratch / f"set{worker}"
            shutil.rmtree(folders["set"], ignore_errors=True)
            shutil.rmtree(folders["new"], ignore_errors=True)
            if "{set}" in command.words:
                shutil.copytree(source, folders["set"])
        return folders

    def run(self, command: Command, compiled: bool, fault: Fault) -> tuple[Run, dict[str, Path]]:
        worker = self.free.get()
        try:
            folders = self.prepare(command, compiled, worker)
            report = self.scratch / f"report{worker}"
            return self.tool.run(command.arguments(folders), command.text, fault, report), folders
        finally:
            self.free.put(worker)

    def count(self, command: Command, compiled: bool) -> None:
        """Runs the command whole, once for each family, to see how many calls it makes."""
        for fault in faults_of(command):
            key = (command.name, compiled, fault.family, fault.since)
            if key in self.counts:
                continue
            run, _ = self.run(command, compiled, replace(fault, number=0))
            if run.status != 0 or run.seen is None:
                raise RuntimeError(f"{run.command}: status {run.status}: {run.messages}")
            self.counts[key] = run.seen
            self.right[command.name, compiled] = self.in_order(command, compiled, run)

    def in_order(self, command: Command, compiled: bool, run: Run) -> Run:
        """The unfailed run of a session of version 2, as if its requests had waited for each other:
        those before the change of the language, and then, or as well, those after it."""
        if "setLanguage" not in command.text:
            return run
        words = command.arguments(self.prepare(command, compiled, 0))
        text = "".join(line for line in command.text.splitlines(True) if "setLang" not in line)
        outputs = [
            self.tool.run([*words, "--language", locale], text).output for locale in LOCALES
        ]
        changing = 1 + command.text[: command.text.index("setLanguage")].count("\n")

        def answers(output: str, wanted: Callable[[int], bool]) -> list[str]:
            numbered = [(json.loads(line).get("id"), line) for line in output.splitlines()]
            return [line for number, line in numbered if number is not None and wanted(number)]

        before = [answers(output, lambda number: number < changing) for output in outputs]
        after = answers(outputs[1], lambda number: number > changing)
        change = answers(run.output, lambda number: number == changing)
        return replace(
            run, output="\n".join([*before[0], *change, *after]), other="\n".join(before[1])
        )

    def jobs(self, command: Command, compiled: bool, most: int | None) -> list[Job]:
        """`most` is how many calls of a kind of fault are tried; of memory four times as many."""
        jobs = []
        for fault in faults_of(command):
            count = self.counts[command.name, compiled, fault.family, fault.since]
            numbers = list(range(1, count + 1))
            wanted = (most or count) * (4 if fault.family == "memory" else 1)
            if count > wanted:
                numbers = sorted({1, count, *random.sample(numbers, wanted)})
            jobs += [Job(command, compiled, replace(fault, number=number)) for number in numbers]
        return jobs

    def judge(self, job: Job) -> tuple[Verdict, str]:
        worker = self.free.get()
        try:
            command = job.command
            folders = self.prepare(command, job.compiled, worker)
            report = self.scratch / f"report{worker}"
            run = self.tool.run(command.arguments(folders), command.text, job.fault, report)
            right = self.right[command.name, job.compiled]
            verdict = command.judge(run, right, job.fault, folders)
            if command.changes:
                root = folders["new" if command.name == "import-new" else "set"]
                left = self.sets.judge_set(command, root, run.status != 0)
                if left.kind == MISLED and is_of_output(run):
                    left = Verdict(RIGHT)
                if left.kind != RIGHT and verdict.kind in GOOD:
                    verdict = left
            leaks = (
                run.descriptors is not None
                and right.descriptors is not None
                and run.descriptors > right.descriptors
            )
            if leaks and verdict.kind in GOOD:
                verdict = Verdict(LEAK, f"{run.descriptors} open at the end")
            return verdict, run.command
        finally:
            self.free.put(worker)

    def sweep(
        self,
        names: list[str],
        families: list[str],
        most: int | None,
        deadline: float | None,
        results: Results,
    ) -> None:
        jobs = []
        for command in COMMANDS:
            if names and command.name not in names:
                continue
            for compiled in (False, True):
                if command.compiled if compiled else command.plain:
                    self.count(command, compiled)
                    jobs += self.jobs(command, compiled, most)
        if families:
            jobs = [job for job in jobs if job.fault.family in families]
        # Where the time does not suffice for all, it goes to a sample of memory.
        random.shuffle(jobs)
        jobs.sort(key=lambda job: job.fault.family == "memory")
        lock = threading.Lock()

        def work(job: Job) -> None:
            if deadline is not None and time.monotonic() > deadline:
                with lock:
                    results.left_out += 1
                return
            verdict, shell = self.judge(job)
            with lock:
                results.add((job.place, label(job.fault)), verdict.kind)
                if verdict.kind not in GOOD:
                    results.failures.append(Failure(job.place, job.fault, verdict, shell))

        with ThreadPoolExecutor(self.workers) as pool:
            for _ in pool.map(work, jobs):
                pass
