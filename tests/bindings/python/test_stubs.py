"""What type checkers and editors see."""

import os
import subprocess
from pathlib import Path

import pytest

import veltra

SOURCES = Path(os.environ["VELTRA_SOURCE_DIR"])
PACKAGE = Path(veltra.__file__).parent
PREAMBLE = """
from veltra.internal.reference.api import *
from veltra.internal.reference.api.comparator import *
from veltra.internal.reference.property import *
request = ReferenceRequest()
retriever = ReferenceDataRetriever()
"""


def check(folder, *arguments):
    environment = {**os.environ, "MYPYPATH": str(PACKAGE.parent)}
    environment.pop("LD_PRELOAD", None)
    command = ["/usr/bin/mypy", "--strict", "--cache-dir", str(folder / "cache"), *arguments]
    return subprocess.run(command, capture_output=True, text=True, env=environment)


@pytest.fixture(scope="module")
def folder(tmp_path_factory):
    return tmp_path_factory.mktemp("mypy")


def test_the_package_and_the_example_are_typed_throughout(folder):
    done = check(folder, "-p", "veltra")
    assert (done.returncode, done.stderr) == (0, ""), done.stdout
    done = check(folder, str(SOURCES / "examples/python/look_up.py"))
    assert (done.returncode, done.stderr) == (0, ""), done.stdout


def test_good_use_is_accepted_and_yields_the_right_types(folder):
    path = folder / "good.py"
    path.write_text(
        PREAMBLE
        + """
request.EntityText = "fit"
reveal_type(request.Types)
request.Types = [RefEntityType.Class, 3]
request.Types = None
request.Products = ("veltra",)
request.EntityPrecision = 1
request.EntityPrecision = EntityPrecision.Ignore_Package
request.Comparator = ProductMatchComparator(ProductName="veltra")
CompoundReferenceComparator(Comparators=[IndexOrderComparator()])
retriever.ReferenceRequest = request
reveal_type(request.EntityText)
reveal_type(request.EntityPrecision)
reveal_type(retriever.ReferenceRequest)
reveal_type(retriever.getReferenceData()[0].RefItem.RefEntities[0].RefEntityType)
"""
    )
    done = check(folder, str(path))
    revealed = [line.split('"')[1] for line in done.stdout.splitlines() if "Revealed" in line]
    prefix = "veltra.internal.reference."
    assert revealed == [
        f"Union[builtins.list[{prefix}property.RefEntityType], None]",
        "builtins.str",
        f"{prefix}api.EntityPrecision",
        f"{prefix}api.ReferenceRequest",
        f"{prefix}property.RefEntityType",
    ], done.stdout
    assert done.returncode == 0


@pytest.mark.parametrize(
    "line",
    [
        "request.EntityText = 1",
        "request.Types = 'Class'",
        "request.Products = [1]",
        "request.EntityPrecision = 'x'",
        "request.Comparator = 1",
        "request.Text",
        "request.Text = 'fit'",
        "retriever.ReferenceRequest = IndexOrderComparator()",
        "retriever.getReferenceData()[0].RefItem.Purpose = 'mine'",
        "ReferenceRequest('fit')",
        "ReferenceRequest(Text='fit')",
        "EntityPrecision.Nothing",
    ],
)
def test_wrong_use_is_found(folder, line):
    path = folder / "bad.py"
    path.write_text(PREAMBLE + line + "\n")
    done = check(folder, str(path))
    assert done.returncode == 1, line
    lines = [one for one in done.stdout.splitlines() if ": error:" in one]
    expected = len(PREAMBLE.splitlines()) + 1
    assert lines and all(f"bad.py:{expected}: " in one for one in lines), done.stdout
