"""Writes type stubs of the registered classes: python -m veltra._stubs FOLDER

FOLDER is the package's folder; every package below it that has classes gets a file.
"""

from __future__ import annotations

import sys
from pathlib import Path
from typing import Any

from . import _importer, _veltra

_HEADER = '''"""The host's classes of the package {package}."""

# Written from the registry; changes made here are lost.
'''

def _class_name(shape: tuple[str, str, bool]) -> str:
    """How a class is written: in full, because a property may have the same name."""
    return shape[1] or "Object"


def _got(shape: tuple[str, str, bool]) -> str:
    """The type that a property or method gives."""
    kind, _, may_be_null = shape
    name = _class_name(shape)
    types = {
        "text": "str",
        "texts": "list[str]",
        "member": name,
        "members": f"list[{name}]",
        "object": name,
        "objects": f"list[{name}]",
        "cells": "list[Any]",
    }
    return types[kind] + (" | None" if may_be_null else "")


def _taken(shape: tuple[str, str, bool]) -> str:
    """The type that a property takes."""
    name = _class_name(shape)
    types = {
        "text": "str | None",
        "texts": "str | Sequence[str] | None",
        "member": f"{name} | int | None",
        "members": f"{name} | Sequence[{name} | int] | None",
        "object": f"{name} | None",
        "objects": f"Sequence[{name}] | None",
        "cells": "Sequence[Any] | None",
    }
    return types[shape[0]]


def _doc(text: str, indent: str) -> str:
    escaped = text.replace("\\", "\\\\").replace('"""', '\\"\\"\\"')
    if escaped.endswith('"'):
        escaped = escaped[:-1] + '\\"'
    return f'{indent}"""{escaped}"""\n'


def _enumeration(description: dict[str, Any]) -> str:
    lines = [f"class {description['name']}(Enumeration):\n", _doc(description["doc"], "    ")]
    lines += [f"    {name} = {number}\n" for name, number in description["members"]]
    return "".join(lines)


def _class(description: dict[str, Any]) -> str:
    lines = [f"class {description['name']}(Object):\n", _doc(description["doc"], "    ")]
    settable = [(name, shape) for name, _, shape, is_set in description["properties"] if is_set]
    if description["isConstructible"]:
        keywords = "".join(
            f"        {name}: {_taken(shape)} = ...,\n" for name, shape in settable
        )
        signature = f"\n        self,\n        *,\n{keywords}    " if keywords else "self"
        lines.append(f"    def __init__({signature}) -> None: ...\n")
    for name, doc, shape, is_set in description["properties"]:
        if is_set:
            types = f"{_got(shape)}, {_taken(shape)}"
            lines += [f"    {name}: Property[{types}]\n", _doc(doc, "    ")]
        else:
            lines += [
                f"    @property\n    def {name}(self) -> {_got(shape)}:\n",
                _doc(doc, "        "),
            ]
    for name, doc, shape in description["methods"]:
        lines += [f"    def {name}(self) -> {_got(shape)}:\n", _doc(doc, "        ")]
    return "".join(lines)


def stub(package: str) -> str:
    """The text of a package's stub."""
    names = [f"{package}.{name}" for name in _veltra.class_names(package)]
    descriptions = [_veltra.describe_class(name) or {} for name in names]
    texts = [
        _enumeration(one) if one["isEnumeration"] else _class(one) for one in descriptions
    ]
    shapes = [
        shape
        for one in descriptions
        for shape in [entry[2] for entry in one["properties"] + one["methods"]]
    ]
    homes = {name.rpartition(".")[0] for _, name, _ in shapes if name}
    imports = "".join(f"import {home}\n" for home in sorted(homes))
    return (
        _HEADER.format(package=package)
        + "from collections.abc import Sequence\n"
        + "from typing import Any\n\n"
        + imports
        + "from veltra import Enumeration, Object\n"
        + "from veltra._property import Property\n"
        + "".join("\n" + text for text in texts)
    )


def write(folder: Path) -> list[Path]:
    """Writes the stubs of all packages below "veltra" and returns their paths."""
    written = []
    pending = ["veltra"]
    while pending:
        package = pending.pop()
        pending += [f"{package}.{name}" for name in _importer.subpackages(package)]
        if package == "veltra":
            continue
        path = folder.joinpath(*package.split(".")[1:], "__init__.pyi")
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text(stub(package), encoding="utf-8")
        written.append(path)
    return written


if __name__ == "__main__":
    if len(sys.argv) != 2:
        sys.exit("usage: python -m veltra._stubs FOLDER")
    write(Path(sys.argv[1]))
