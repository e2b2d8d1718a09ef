"""Runs the tool, whole or with a call that fails, and tells what came of it."""

import os
import shlex
import signal
import subprocess
from dataclasses import dataclass, field
from pathlib import Path

# Far longer than any run takes, so that only what hangs meets it.
TIMEOUT = 15.0


@dataclass(frozen=True)
class Fault:
    """One call, or several, of a family that fail."""

    family: str
    how: str  # an error's number, "short" or "kill"
    times: str = "1"  # or "all": that call and all after it
    number: int = 0
    since: str = "main"

    def variables(self) -> dict[str, str]:
        return {
            "VELTRA_TORTURE_CALL": self.family,
            "VELTRA_TORTURE_NUMBER": str(self.number),
            "VELTRA_TORTURE_HOW": self.how,
            "VELTRA_TORTURE_TIMES": self.times,
            "VELTRA_TORTURE_FROM": self.since,
        }

    def error(self) -> str:
        return os.strerror(int(self.how)) if self.how.isdigit() else ""


@dataclass
class Run:
    status: int | None  # None: it hung and was ended; negative: a signal
    output: str
    messages: str
    # What the library that was loaded before all others has counted; None if it could not.
    seen: int | None = None
    failed: int | None = None
    descriptors: int | None = None
    # What the first call to fail read or wrote, where that is known.
    failed_descriptor: int | None = None
    command: str = ""
    other: str = ""  # what the command may answer as well


@dataclass
class Tool:
    program: Path
    library: Path
    scratch: Path
    environment: dict[str, str] = field(default_factory=dict)

    def __post_init__(self) -> None:
        # What the person who runs this has set for the tool does not reach it.
        kept = {name: os.environ[name] for name in ("PATH", "TMPDIR") if name in os.environ}
        self.environment = {
            **kept,
            "HOME": str(self.scratch),
            "XDG_CONFIG_HOME": str(self.scratch / "none"),
            "LC_ALL": "C.UTF-8",
        }

    def run(
        self,
        arguments: list[str],
        text: str = "",
        fault: Fault | None = None,
        report: Path | None = None,
        before: list[str] | None = None,
    ) -> Run:
        """`before` stands before the tool on the command line, to run it."""
        variables = {}
        if fault is not None:
            variables = {"LD_PRELOAD": str(self.library), **fault.variables()}
        if report is not None:
            report.unlink(missing_ok=True)
            variables["VELTRA_TORTURE_REPORT"] = str(report)
        command = [*(before or []), str(self.program), *arguments]
        shown = shlex.join([*(f"{name}={value}" for name, value in variables.items()), *command])
        try:
            done = subprocess.run(
                command,
                input=text.encode(),
                capture_output=True,
                timeout=TIMEOUT,
                env={**self.environment, **variables},
                check=False,
            )
        except subprocess.TimeoutExpired as late:
            return Run(
                None, _text(late.stdout), _text(late.stderr), command=shown
            )
        run = Run(done.returncode, _text(done.stdout), _text(done.stderr), command=shown)
        if report is not None and report.exists():
            figures = report.read_text().split()
            if len(figures) == 4:
                run.seen, run.failed, run.descriptors, run.failed_descriptor = map(int, figures)
        return run


def _text(output: bytes | None) -> str:
    return (output or b"").decode(errors="replace")


def end_of(status: int | None) -> str:
    if status is None:
        return "hangs"
    if status < 0:
        return signal.Signals(-status).name
    return f"status {status}"
