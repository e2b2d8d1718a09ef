"""The examples, run as they stand."""

import os
import re
import subprocess
import sys
from pathlib import Path

import pytest

SOURCES = Path(os.environ["VELTRA_SOURCE_DIR"]) / "examples"
PYTHON = [sys.executable, str(SOURCES / "python/look_up.py")]
CPP = [str(Path(os.environ["VELTRA_BINARY_DIR"]) / "examples/lookUp")]


def run(command, *arguments):
    # What the sanitizer needs in an interpreter is in the way in a program that was built with it.
    environment = dict(os.environ)
    if command is CPP:
        environment.pop("LD_PRELOAD", None)
    return subprocess.run(
        [*command, *arguments], capture_output=True, text=True, env=environment
    )


def without_types(table):
    """The lines of a table without its third column, which each language writes in its own way."""
    header, *lines = table.splitlines()
    start, end = header.index("TYPE"), header.index("PURPOSE")
    return [line[:start] + line[end:] for line in [header, *lines]]


def test_python_prints_a_table():
    done = run(PYTHON, "FILTER", "brisk")
    assert (done.returncode, done.stderr) == (0, "")
    lines = done.stdout.splitlines()
    assert lines[0].split() == ["PRODUCT", "NAME", "TYPE", "PURPOSE"]
    assert lines[1].startswith("brisk ")
    assert len(lines) > 3


@pytest.mark.parametrize("name", ["filter", "Table", "table", "plot", "signals"])
@pytest.mark.parametrize("product", ["veltra", "brisk", "nothing"])
def test_both_languages_print_the_same(name, product):
    python, cpp = run(PYTHON, name, product), run(CPP, name, product)
    assert (python.returncode, cpp.returncode) in {(0, 0), (1, 1)}
    assert without_types(python.stdout or "TYPE PURPOSE") == without_types(
        cpp.stdout or "TYPE PURPOSE"
    )


@pytest.mark.parametrize(
    ("page", "first_lines"),
    [
        ("README.md", ["Table.sortBy parts"]),
        (
            "docs/python.md",
            [
                "qix Keep the rows of a table that meet a condition",
                "Table.sortBy parts  Sort the rows by a column",
            ],
        ),
    ],
)
def test_what_the_pages_show_works(page, first_lines):
    text = (SOURCES.parent / page).read_text(encoding="utf-8")
    shown = re.findall(r"```python\n(.*?)```", text, re.DOTALL)
    assert len(shown) == len(first_lines)
    for script, first_line in zip(shown, first_lines):
        done = run([sys.executable, "-c", script])
        assert (done.returncode, done.stderr) == (0, "")
        assert done.stdout.splitlines()[0] == first_line


@pytest.mark.parametrize("command", [PYTHON, CPP])
def test_wrong_use_is_told(command):
    done = run(command)
    assert done.returncode == 2
    assert done.stderr.startswith("usage: look")
    done = run(command, "no.such.name")
    assert (done.returncode, done.stdout) == (1, "")
    assert 'Nothing is called "no.such.name".' in done.stderr


@pytest.mark.parametrize("command", [PYTHON, CPP])
def test_broken_documentation_is_told(command, tmp_path, monkeypatch):
    monkeypatch.setenv("VELTRA_DOC_ROOT", str(tmp_path))
    done = run(command, "filter")
    assert (done.returncode, done.stdout) == (2, "")
    assert str(tmp_path) in done.stderr
    assert "Traceback" not in done.stderr
