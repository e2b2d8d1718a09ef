"""A property that takes more types than it gives; only for type checkers."""

from typing import Generic, TypeVar, overload

_Got = TypeVar("_Got", covariant=True)
_Taken = TypeVar("_Taken", contravariant=True)

class Property(Generic[_Got, _Taken]):
    @overload
    def __get__(self, instance: None, owner: type) -> property: ...
    @overload
    def __get__(self, instance: object, owner: type) -> _Got: ...
    def __set__(self, instance: object, value: _Taken) -> None: ...
