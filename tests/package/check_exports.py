"""Holds what a library exports against the list that is kept of it.

    check_exports.py LIBRARY LIST NAMESPACE...            compares
    check_exports.py LIBRARY LIST NAMESPACE... --write    makes the list anew

The list has the functions, the data and the classes (by their type information) that programs can be linked
with. Besides them a library has only what compilers put into every object that needs it: members
of templates and of classes that have no place of their own. Those are of the standard library, of Boost
or of the named namespaces."""

import re
import subprocess
import sys
from pathlib import Path

# Of the standard library and of Boost, which are used by both sides of an interface.
SHARED = ("std::", "__gnu_cxx::", "boost::")


def symbols(library: str) -> list[tuple[str, str]]:
    shown = subprocess.run(
        ["nm", "--dynamic", "--demangle", "--defined-only", "--format=posix", library],
        check=True,
        stdout=subprocess.PIPE,
        encoding="utf-8",
    )
    pairs = []
    for line in shown.stdout.splitlines():
        match = re.fullmatch(r"(.+) ([A-Za-z]) [0-9a-f]+(?: [0-9a-f]+)?", line)
        if match:
            pairs.append((match[1], match[2]))
    return pairs


def subject(name: str) -> str:
    """The name without what describes it: "typeinfo for a::B" is about a::B."""
    name = re.sub(r"^(typeinfo name|typeinfo|vtable|VTT|guard variable) for ", "", name)
    return re.sub(r"^(non-)?virtual thunk to ", "", name)


def belongs(name: str, namespaces: list[str]) -> bool:
    """What a compiler puts into every object; of a function template, the result stands first."""
    return any(
        re.search(rf"(^|[ (<*&]){re.escape(namespace)}", subject(name))
        for namespace in (*SHARED, *namespaces)
    )


def main() -> int:
    library, listed, *rest = sys.argv[1:]
    namespaces = [name for name in rest if name != "--write"]
    exported = set()
    faults = []
    for name, kind in symbols(library):
        is_class = kind == "V" and name.startswith("typeinfo for ")
        if kind in "TDBRG" or (is_class and not subject(name).startswith(SHARED)):
            exported.add(name)
        elif not belongs(name, namespaces):
            faults.append(f"It has {name}, which is not of this project.")
    if "--write" in rest:
        Path(listed).write_text("".join(f"{name}\n" for name in sorted(exported)), encoding="utf-8")
        return 0
    kept = set(Path(listed).read_text(encoding="utf-8").splitlines())
    faults += [f"It exports {name}, which is not in the list." for name in sorted(exported - kept)]
    faults += [f"It does not export {name}." for name in sorted(kept - exported)]
    print("\n".join(faults) or f"{library} exports the {len(kept)} names of the list.")
    if faults:
        print(f"If that is meant, make {listed} anew: add --write to this program's arguments.")
    return 1 if faults or not kept else 0


if __name__ == "__main__":
    sys.exit(main())
