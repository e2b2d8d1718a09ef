"""The bridge to the host's object system, written in C++."""

from collections.abc import Callable, Sequence
from typing import Any

class HostObject:
    """What a Python object holds of its host object."""
    @property
    def class_name(self) -> str: ...
    @property
    def key(self) -> int:
        """Different for any two host objects that are alive."""
    def get(self, property: str) -> Any: ...
    def set(self, property: str, value: Any) -> None: ...
    def call(self, method: str) -> Any: ...

def ask(
    question: str, limit: int, prefer: list[str], products: list[str], types: list[str]
) -> tuple[
    list[tuple[str, str, str, Any]], int, int, list[tuple[str, str, str, Any]]
]: ...
def construct(class_name: str) -> HostObject: ...
def package_names() -> set[str]:
    """All packages that have classes."""

def class_names(package: str) -> list[str]: ...
def describe_class(qualified_name: str) -> dict[str, Any] | None:
    """What the registry knows of a class.

    A dict with "package", "name", "doc", "isEnumeration", "isConstructible", "members" (of
    (name, number)), "properties" (of (name, doc, shape, settable)) and "methods" (of (name, doc,
    shape)). A shape is (kind, class name, may be null).
    """

def message(identifier: str, arguments: Sequence[str]) -> str:
    """The catalogue's text of an error."""

def live_counts() -> tuple[int, int]: ...
def install(
    make_object: Callable[[HostObject], object],
    make_member: Callable[[str, int], object],
    object_class: type,
    member_class: type,
    error_class: type[Exception],
) -> None: ...
