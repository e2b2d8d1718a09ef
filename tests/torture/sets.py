"""The sets that commands are run on, and what is left of one after a command that failed."""

import hashlib
import json
import shutil
from dataclasses import dataclass
from pathlib import Path

import documentation
from commands import LEFT_BEHIND, MISLED, NEXT, RIGHT, TORN, Command, Verdict
from tool import Run, Tool

MANIFEST = "documentation-set.json"


def contents(root: Path) -> dict[str, bytes]:
    """All files of a set by their names, each with the hash of its bytes."""
    return {
        str(file.relative_to(root)): hashlib.blake2b(file.read_bytes()).digest()
        for file in sorted(root.rglob("*"))
        if file.is_file()
    }


def named_files(root: Path) -> set[str]:
    """What belongs to a set: what its manifest names, and what may stand beside that."""
    manifest = json.loads((root / MANIFEST).read_text(encoding="utf-8"))
    names = {MANIFEST, ".documentation-set.lock"}
    names |= {f"documentation-set.{locale}.image" for locale in manifest["locales"]}
    for product in manifest["products"]:
        for files in product["files"].values():
            for name in (files["lookup"], files.get("reference", "")):
                if name:
                    stem = name.removesuffix(".json")
                    names |= {name, f"{stem}.image", f"{stem}.aliases.json"}
    return names


@dataclass
class Sets:
    """`plain` is not compiled, `compiled` is, and has a product that was imported."""

    tool: Tool
    folder: Path

    def __post_init__(self) -> None:
        self.plain = self.folder / "plain"
        self.compiled = self.folder / "compiled"
        self.old_tree = self.folder / "tree-old"
        self.tree = self.folder / "tree"
        documentation.write_set(self.plain)
        documentation.write_set(self.compiled)
        documentation.write_tree(self.old_tree, "old")
        documentation.write_tree(self.tree, "new")
        self.must(["compile", str(self.compiled)])
        self.must(self.importing(self.old_tree, self.compiled))
        self.old = self.answers(self.compiled)
        self.new = self.answers(self.copy(self.compiled, "imported", self.tree))
        self.plain_answers = self.answers(self.plain)

    @staticmethod
    def importing(tree: Path, root: Path, product: str = "gadgets") -> list[str]:
        return ["import", "sphinx", str(tree), "--product", product, "--into", str(root)]

    def must(self, arguments: list[str]) -> Run:
        run = self.tool.run(arguments)
        if run.status != 0:
            raise RuntimeError(f"{run.command}: {run.messages}")
        return run

    def copy(self, source: Path, name: str, tree: Path | None = None) -> Path:
        target = self.folder / name
        shutil.rmtree(target, ignore_errors=True)
        shutil.copytree(source, target)
        if tree is not None:
            self.must(self.importing(tree, target))
        return target

    def answers(self, root: Path) -> str:
        """All that the set says, or why nothing."""
        run = self.tool.run(["find", "--exact", "--all", "--json", "--doc-root", str(root)])
        return run.output if run.status == 0 else f"{run.status}: {run.messages}"

    def after_import(self, root: Path, run_failed: bool, is_new_set: bool) -> Verdict:
        """Judges a set that an import has changed, or was to change."""
        before = {} if is_new_set else contents(self.compiled)
        now = contents(root) if root.exists() else {}
        wanted = self.new_alone if is_new_set else self.new
        if run_failed and {**now, ".documentation-set.lock": b""} == {
            **before,
            ".documentation-set.lock": b"",
        }:
            return Verdict(RIGHT)
        verdict = Verdict(RIGHT)
        if (root / MANIFEST).exists():
            check = self.tool.run(["validate", str(root)])
            if check.status != 0:
                return Verdict(TORN, check.output + check.messages)
            answers = self.answers(root)
            if answers not in ((wanted,) if is_new_set else (wanted, self.old)):
                return Verdict(TORN, answers[:300])
            if not run_failed and answers != wanted:
                return Verdict(TORN, "the import has succeeded, and the product is the old one")
            if run_failed and answers == wanted:
                verdict = Verdict(MISLED)
        elif not is_new_set or not run_failed:
            return Verdict(TORN, "there is no manifest")
        if not run_failed:
            return verdict
        # What a failed import left is gone after the next one.
        kept = named_files(root) if (root / MANIFEST).exists() else set()
        again = self.tool.run(self.importing(self.tree, root))
        if again.status != 0:
            return Verdict(NEXT, again.messages)
        if self.answers(root) != wanted:
            return Verdict(NEXT, "the next import has succeeded, and the answers are wrong")
        left = set(contents(root)) - named_files(root) - kept
        if left:
            return Verdict(LEFT_BEHIND, " ".join(sorted(left)))
        return verdict

    def after_compile(self, root: Path, run_failed: bool) -> Verdict:
        if self.answers(root) != self.plain_answers:
            return Verdict(TORN, self.answers(root)[:300])
        check = self.tool.run(["validate", str(root)])
        if check.status != 0:
            return Verdict(TORN, check.output + check.messages)
        if run_failed:
            again = self.tool.run(["compile", str(root)])
            if again.status != 0:
                return Verdict(NEXT, again.messages)
            if self.answers(root) != self.plain_answers:
                return Verdict(NEXT, "compiled again, the answers are wrong")
        left = set(contents(root)) - named_files(root)
        return Verdict(LEFT_BEHIND, " ".join(sorted(left))) if left else Verdict(RIGHT)

    @property
    def new_alone(self) -> str:
        """What a set says that holds nothing but the imported product."""
        if not hasattr(self, "_new_alone"):
            root = self.folder / "alone"
            self.must(self.importing(self.tree, root))
            self._new_alone = self.answers(root)
        return self._new_alone

    def judge_set(self, command: Command, root: Path, run_failed: bool) -> Verdict:
        if command.name == "compile":
            return self.after_compile(root, run_failed)
        return self.after_import(root, run_failed, command.name == "import-new")
