"""Makes the packages of the host's registry importable."""

from __future__ import annotations

import importlib.abc
import importlib.machinery
import sys
from collections.abc import Sequence
from types import ModuleType
from typing import Any

from . import _classes, _veltra


def subpackages(package: str) -> set[str]:
    """The names directly below a package that lead to registered classes."""
    prefix = package + "."
    return {
        name.removeprefix(prefix).split(".")[0]
        for name in _veltra.package_names()
        if name.startswith(prefix)
    }


class _Importer(importlib.abc.MetaPathFinder, importlib.abc.Loader):
    """Finds and fills the packages that have classes, or have such a package below them.

    A class is made when it is first asked for, so that one that is registered later is there too.
    """

    def find_spec(
        self, fullname: str, path: Sequence[str] | None, target: ModuleType | None = None
    ) -> importlib.machinery.ModuleSpec | None:
        if not fullname.startswith("veltra."):
            return None
        if fullname not in _veltra.package_names() and not subpackages(fullname):
            return None
        return importlib.machinery.ModuleSpec(fullname, self, origin="host", is_package=True)

    def create_module(self, spec: importlib.machinery.ModuleSpec) -> ModuleType | None:
        return None

    def exec_module(self, module: ModuleType) -> None:
        package = module.__name__
        module.__doc__ = f"The host's classes of the package {package}."

        def get(name: str) -> Any:
            if name == "__all__":
                return _veltra.class_names(package)
            if not name.isidentifier():
                raise AttributeError(f"module {package!r} has no attribute {name!r}")
            try:
                value = _classes.class_of(f"{package}.{name}")
            except LookupError:
                raise AttributeError(f"module {package!r} has no attribute {name!r}") from None
            setattr(module, name, value)
            return value

        def names() -> list[str]:
            return sorted({*vars(module), *_veltra.class_names(package), *subpackages(package)})

        vars(module).update(__getattr__=get, __dir__=names)


def install() -> None:
    """Puts the importer before the one for files, which would find only type stubs here."""
    if not any(isinstance(finder, _Importer) for finder in sys.meta_path):
        sys.meta_path.insert(0, _Importer())
