"""The commands of the tool that are tortured, and what each must give when a call fails."""

import json
import re
from dataclasses import dataclass, replace
from pathlib import Path
from typing import Any

from tool import Fault, Run, end_of

Message = dict[str, Any]

# An answer, or the tool's own word that it could not give one.
RIGHT = "right answers"
WARNED = "warned"
NAMED = "named errors"

# What must not happen.
DIED = "died"
WRONG = "wrong answer"
SILENT = "nothing said"
VAGUE = "vague message"
BARE = "name of the inside"
INTERRUPTED = "not made again"
TORN = "torn set"
MISLED = "fails though done"
LEFT_BEHIND = "files left behind"
NEXT = "next one fails"
LEAK = "descriptor leak"

GOOD = (RIGHT, WARNED, NAMED)
BAD = (DIED, WRONG, SILENT, VAGUE, BARE, INTERRUPTED, TORN, MISLED, LEFT_BEHIND, NEXT, LEAK)


@dataclass(frozen=True)
class Verdict:
    kind: str
    why: str = ""


STANDARD_OUTPUT = 1
STANDARD_ERROR = 2

# Families of calls that are about a file, which a message has to name.
FILE_FAMILIES = (
    "open", "read", "fsync", "rename", "map", "mkdir", "unlink", "stat", "list", "link",
)  # fmt: skip

REASON = re.compile(
    r"cannot|could not|couldn't|not enough|memory|failed|damaged|left out|Input/output error"
    r"|too many|no space|interrupted|unavailable|not be|not locked|is not",
    re.IGNORECASE,
)


def cannot_tell(run: Run, fault: Fault) -> bool:
    """Whether the fault also keeps messages from being written."""
    return fault.family == "write" and (
        fault.times == "all" or run.failed_descriptor == STANDARD_ERROR
    )


def is_of_output(run: Run) -> bool:
    """Whether what failed was the output: the tool then ends with status 2, whatever it did. Where all
    writes fail from some file on, nothing can be said any more, which shows in silence."""
    said = [line for line in run.messages.splitlines() if not line.startswith("importing ")]
    return not (run.output or said) or run.failed_descriptor in (STANDARD_OUTPUT, STANDARD_ERROR)


def news(run: Run, right: Run) -> str:
    """What the run says that an unfailed one does not, and that is no progress of the work."""
    known = right.messages.splitlines()
    lines = [
        line
        for line in re.split(r"[\r\n]+", run.messages)
        if line.strip() and line not in known and not line.startswith("importing ")
    ]
    return "\n".join(lines)


def judge_message(run: Run, right: Run, fault: Fault) -> Verdict:
    """Whether a run that has failed tells a person what did."""
    messages = news(run, right)
    if cannot_tell(run, fault):
        return Verdict(NAMED)
    if not messages.strip():
        return Verdict(SILENT, end_of(run.status))
    if "std::" in messages or "basic_string" in messages:
        return Verdict(BARE, f"{end_of(run.status)}: {messages.strip()}")
    why = complaint(messages, fault)
    return Verdict(VAGUE, f"{end_of(run.status)}: {why}") if why else Verdict(NAMED)


def complaint(messages: str, fault: Fault) -> str:
    """Why the messages do not tell a person what failed; empty if they do."""
    text = messages.strip()
    for line in text.splitlines():
        if re.search(r'""|\(\)|^vref: *:|: :|: *$|^vref: *[a-z ]*$', line):
            return f"something is empty: {line}"
    if not REASON.search(text) and (not fault.error() or fault.error() not in text):
        return f"no reason: {text}"
    if fault.family in FILE_FAMILIES and "/" not in text and not re.search(r"put|\.\w+", text):
        return f"no file: {text}"
    return ""


@dataclass(frozen=True)
class Command:
    """Its words; "{set}", "{tree}" and "{new}" in them stand for folders."""

    name: str
    words: tuple[str, ...]
    text: str = ""
    changes: bool = False
    plain: bool = True  # on the set as it was written
    compiled: bool = True  # on the compiled one

    def arguments(self, folders: dict[str, Path]) -> list[str]:
        return [word.format(**folders) for word in self.words]

    def normal(self, output: str, folders: dict[str, Path]) -> str:
        """The output without what differs from run to run."""
        scratch = str(folders["new"].parent)
        output = re.sub(re.escape(scratch) + r"/(set|new)\d+", "<set>", output)
        output = re.sub(r"\d+\.\d+ ?s\b", "<time>", output)
        output = re.sub(r"\d+(\.\d+)? [kKMG]i?B of memory", "<memory>", output)
        return re.sub(r'"memoryBytes": ?\d+', "<memory>", output)

    def judge(self, run: Run, right: Run, fault: Fault, folders: dict[str, Path]) -> Verdict:
        if run.status is None or run.status < 0 or run.status not in (0, 1, 2):
            lines = run.messages.strip().splitlines()
            return Verdict(DIED, f"{end_of(run.status)}: {lines[-1] if lines else ''}")
        verdict = self.judge_answer(run, right, fault, folders)
        if verdict.kind in GOOD and fault.how in ("short", "4") and verdict.kind != RIGHT:
            return Verdict(INTERRUPTED, f"{end_of(run.status)}: {run.messages.strip()}")
        return verdict

    def judge_answer(
        self, run: Run, right: Run, fault: Fault, folders: dict[str, Path]
    ) -> Verdict:
        same = self.normal(run.output, folders) == self.normal(right.output, folders)
        if same and run.status == right.status:
            return Verdict(WARNED if run.messages != right.messages else RIGHT)
        if run.status == 0:
            if REASON.search(news(run, right)):
                return Verdict(WARNED)
            return Verdict(WRONG, run.messages.strip() or run.output[:200])
        return judge_message(run, right, fault)


class Conversation(Command):
    """A session whose answers are JSON. `text` is in the language of the set's first locale until a
    line changes that. Requests of version 2 that are read before that may be answered after it, so
    that the unfailed run has `other`, what it answers when the language is changed first."""

    def judge_answer(
        self, run: Run, right: Run, fault: Fault, folders: dict[str, Path]
    ) -> Verdict:
        answers, warnings, broken = self.parse(run.output)
        if broken and run.status == 0:
            return Verdict(WRONG, f"not JSON: {broken[:200]}")
        wanted, _, _ = self.parse(right.output)
        free, _, _ = self.parse(right.other)
        warned = bool(warnings)
        failed = []
        for name, answer in wanted.items():
            got = answers.get(name)
            if got is None:
                if run.status == 0:
                    return Verdict(WRONG, f"{name} is not answered, and the status is 0")
                continue
            if got == answer or got == free.get(name):
                continue
            if "error" in got and "error" not in answer:
                failed.append(json.dumps(got, ensure_ascii=False))
                continue
            if self.is_of_other_language(name, got, answers, wanted, ended=run.status != 0):
                continue
            if not warnings and not got.get("messages"):
                return Verdict(WRONG, f"{name}: {json.dumps(got, ensure_ascii=False)[:300]}")
            warned = True
        for text in [*failed, *warnings]:
            if "std::" in text:
                return Verdict(BARE, text)
        if run.status != 0:
            return judge_message(run, right, fault)
        if failed:
            return Verdict(NAMED)
        return Verdict(WARNED if warned or run.messages != right.messages else RIGHT)

    @staticmethod
    def parse(output: str) -> tuple[dict[str, Message], list[str], str]:
        """Answers by what they answer, warnings, and the first line that is no JSON."""
        answers: dict[str, Message] = {}
        warnings: list[str] = []
        for line in output.splitlines():
            try:
                value = json.loads(line)
            except ValueError:
                return answers, warnings, line
            for message in value if isinstance(value, list) else [value]:
                if message.get("notice") == "warning":
                    warnings.append(message["text"])
                elif message.get("method") == "warning":
                    warnings.append(message["params"]["text"])
                elif "line" in message:
                    answers[f"line {message['line']}"] = message
                elif "id" in message:
                    answers[f"request {message['id']}"] = message
        return answers, warnings, ""

    @staticmethod
    def is_of_other_language(
        name: str,
        got: Message,
        answers: dict[str, Message],
        wanted: dict[str, Message],
        ended: bool,
    ) -> bool:
        """The same request stands in the text before and after a change of the language. Where the
        change has failed, the second answer is the first. A session that ends for the failure may
        leave the change without an answer, and still answer what it has read."""
        twin = TWINS.get(name)
        if twin is None:
            return False
        change = answers.get(twin.change)
        has_failed = ended if change is None else "error" in change
        other = wanted[twin.name]
        same = {**other, **{key: got[key] for key in ("line", "id") if key in got}} == got
        return same and has_failed


class Validation(Command):
    """The faults that it finds are its output."""

    def judge_answer(
        self, run: Run, right: Run, fault: Fault, folders: dict[str, Path]
    ) -> Verdict:
        if run.status == 1:
            found = [line for line in run.output.splitlines() if not line.startswith("sound")]
            run = replace(run, messages="\n".join([*found, run.messages]))
        return super().judge_answer(run, right, fault, folders)


@dataclass(frozen=True)
class Twin:
    name: str
    change: str


VERSION_1 = """\
arith.twice
--search text number --limit 3
:reload
arith.twice
--all --product extra --search class
:language de
arith.twice
:language en
arith.twice
"""



def _version_2() -> str:
    requests = [
        ("ask", {"question": "double a number", "limit": 3}),
        ("complete", {"prefix": "tw"}),
        ("show", {"question": "sortRows"}),
        ("find", {"name": "arith.Table", "search": "class"}),
        ("products", {}),
        ("reload", {}),
        ("ask", {"question": "arith.twice"}),
        ("setLanguage", {"language": "de"}),
        ("ask", {"question": "arith.twice"}),
        ("shutdown", {}),
    ]
    return "".join(
        json.dumps({"jsonrpc": "2.0", "id": number, "method": method, "params": params}) + "\n"
        for number, (method, params) in enumerate(requests, start=1)
    )


VERSION_2 = _version_2()

TWINS = {
    "line 7": Twin("line 4", "line 6"),
    "line 9": Twin("line 7", "line 8"),
    "request 9": Twin("request 7", "request 8"),
}

ROOT = ("--doc-root", "{set}")

COMMANDS = (
    Command("version", ("--version",), compiled=False),
    Command("products", ("products", *ROOT)),
    Command("find", ("find", "--exact", "arith.twice", "--json", *ROOT)),
    Command("text", ("find", "--search", "text", "number", "--long", *ROOT)),
    Command("question", ("how", "to", "double", "a", "numbr", *ROOT)),
    Command("show", ("show", "sortRows", *ROOT)),
    Command("complete", ("complete", "tw", *ROOT)),
    Command("warm", ("warm", *ROOT)),
    Validation("validate", ("validate", "{set}")),
    Conversation("watch", ("watch", "--json", *ROOT), VERSION_1),
    Conversation("watch2", ("watch", "--json", *ROOT), VERSION_2),
    Command("compile", ("compile", "{set}"), changes=True, compiled=False),
    Command(
        "import",
        ("import", "sphinx", "{tree}", "--product", "gadgets", "--into", "{set}"),
        changes=True,
        plain=False,
    ),
    Command(
        "import-new",
        ("import", "sphinx", "{tree}", "--product", "gadgets", "--into", "{new}"),
        changes=True,
        plain=False,
    ),
)
