"""Makes a Python class for each class in the host's registry. No class is named here."""

from __future__ import annotations

import enum
import inspect
import threading
import weakref
from typing import TYPE_CHECKING, Any, Self

from . import _veltra
from ._errors import PropertyError

_MAX_NUMBER = 2**32 - 1


class _Unset:
    """What a signature shows as the default of a property: the native class decides."""

    def __repr__(self) -> str:
        return "..."


_UNSET = _Unset()


class Enumeration(enum.IntEnum):
    """What the host's enumerations have in common: any 32-bit number can be a member."""

    @classmethod
    def _missing_(cls, value: object) -> Enumeration | None:
        if not isinstance(value, int) or not 0 <= value <= _MAX_NUMBER:
            return None
        member = int.__new__(cls, value)
        member._name_ = str(int(value))
        member._value_ = int(value)
        return member

    def __reduce_ex__(self, protocol: object) -> Any:
        return type(self), (int(self),)  # by number: not every member has a name


class Object:
    """What the classes of the host's objects have in common.

    A new object takes its properties as keywords. Two objects are equal when they stand for the
    same host object.
    """

    __slots__ = ("__weakref__", "_handle")

    _handle: _veltra.HostObject
    _host_class = ""
    _shown: tuple[str, ...] = ()

    def __new__(cls, *unnamed: Any, **properties: Any) -> Self:
        if not cls._host_class:
            raise TypeError("Object itself cannot be constructed; use one of the host's classes.")
        made = super().__new__(cls)
        object.__setattr__(made, "_handle", _veltra.construct(cls._host_class))
        _objects[made._handle.key] = made
        return made

    def __init__(self, *unnamed: Any, **properties: Any) -> None:
        name = type(self).__name__
        if unnamed:
            raise TypeError(f"{name} takes its properties by name, as in {name}(Property=value).")
        for key, value in properties.items():
            if not isinstance(getattr(type(self), key, None), property):
                raise _no_such_property(type(self), key)
            setattr(self, key, value)

    def __init_subclass__(cls, **keywords: Any) -> None:
        super().__init_subclass__(**keywords)
        known = {base._host_class for base in cls.__mro__ if issubclass(base, Object)} - {""}
        if len(known) > 1:
            raise TypeError(
                f"{cls.__name__} cannot be derived from several of the host's classes: "
                + ", ".join(sorted(known))
            )

    if not TYPE_CHECKING:  # for a type checker they would mean that any attribute is there

        def __getattr__(self, name: str) -> Any:
            if hasattr(type(self), name):
                # A property that a script defines failed with an AttributeError of its own.
                return object.__getattribute__(self, name)
            raise _no_such_property(type(self), name)

        def __setattr__(self, name: str, value: Any) -> None:
            # A class that a script derives from one of the host's may have attributes of its own.
            is_known = hasattr(getattr(type(self), name, None), "__set__")
            if not is_known and type(self).__dictoffset__ == 0:
                raise _no_such_property(type(self), name)
            object.__setattr__(self, name, value)

    def __eq__(self, other: object) -> bool:
        if not isinstance(other, Object):
            return NotImplemented
        return bool(self._handle.key == other._handle.key)

    def __hash__(self) -> int:
        return hash(self._handle.key)

    def __repr__(self) -> str:
        name = type(self).__name__
        depth = getattr(_repr_depth, "value", 0)
        if depth == _MAX_REPR_DEPTH:
            return f"{name}(...)"
        _repr_depth.value = depth + 1
        try:
            values = {key: getattr(self, key) for key in self._shown}
            fields = [f"{key}={_shortened(value)}" for key, value in values.items() if value != ""]
        finally:
            _repr_depth.value = depth
        return f"{name}({', '.join(fields)})"

    def __reduce_ex__(self, protocol: object) -> Any:
        raise TypeError(
            f"A {type(self).__name__} can be neither copied nor pickled; make a new one and set "
            "its properties."
        )


# How deep repr() looks into the objects of an object; a compound comparator may hold itself.
_MAX_REPR_DEPTH = 4
_repr_depth = threading.local()

# The Python objects that stand for host objects, so that a property gives back the object
# that it was set to.
_objects: weakref.WeakValueDictionary[int, Object] = weakref.WeakValueDictionary()

_classes: dict[str, type] = {}
_classes_lock = threading.RLock()


def object_of(handle: _veltra.HostObject) -> Object:
    """The Python object that stands for a host object."""
    known = _objects.get(handle.key)
    if known is not None and known._handle.key == handle.key:
        return known
    made: Object = object.__new__(class_of(handle.class_name))
    object.__setattr__(made, "_handle", handle)
    return _objects.setdefault(handle.key, made)


def member_of(class_name: str, number: int) -> Enumeration:
    """The member of an enumeration that has a number."""
    member: Enumeration = class_of(class_name)(number)
    return member


def class_of(qualified_name: str) -> Any:
    """The Python class of a registered class; LookupError for another name."""
    with _classes_lock:
        if qualified_name not in _classes:
            description = _veltra.describe_class(qualified_name)
            if description is None:
                raise LookupError(qualified_name)
            make = _make_enumeration if description["isEnumeration"] else _make_class
            _classes[qualified_name] = make(qualified_name, description)
        return _classes[qualified_name]


def _make_enumeration(qualified_name: str, description: dict[str, Any]) -> Any:
    base: Any = Enumeration
    made = base(
        description["name"],
        description["members"],
        module=description["package"],
        qualname=description["name"],
    )
    made.__doc__ = description["doc"]
    made._host_class = qualified_name  # tells the bridge whose member a number is
    return made


def _make_class(qualified_name: str, description: dict[str, Any]) -> type[Object]:
    properties = description["properties"]
    namespace: dict[str, Any] = {
        "__slots__": (),
        "__module__": description["package"],
        "__qualname__": description["name"],
        "__doc__": description["doc"],
        "_host_class": qualified_name,
        "_shown": _shown_properties(properties),
    }
    for name, doc, _, settable in properties:
        namespace[name] = _make_property(qualified_name, name, doc, settable)
    for name, doc, _ in description["methods"]:
        namespace[name] = _make_method(qualified_name, name, doc)
    if description["isConstructible"]:
        namespace["__init__"] = _make_init([name for name, _, _, settable in properties if settable])
    return type(description["name"], (Object,), namespace)


def _shown_properties(properties: list[Any]) -> tuple[str, ...]:
    """What an object's repr() shows: what can be set, else what is short, else all."""
    settable = tuple(name for name, _, _, is_settable in properties if is_settable)
    short = tuple(name for name, _, shape, _ in properties if shape[0] in ("text", "member"))
    return settable or short or tuple(name for name, _, _, _ in properties)


def _make_init(names: list[str]) -> Any:
    def __init__(self: Object, *unnamed: Any, **properties: Any) -> None:
        Object.__init__(self, *unnamed, **properties)

    by_name = [
        inspect.Parameter(name, inspect.Parameter.KEYWORD_ONLY, default=_UNSET) for name in names
    ]
    own = inspect.Parameter("self", inspect.Parameter.POSITIONAL_OR_KEYWORD)
    vars(__init__)["__signature__"] = inspect.Signature([own, *by_name])
    __init__.__doc__ = "Makes an object and sets the properties that are given."
    return __init__


def _make_property(class_name: str, name: str, doc: str, settable: bool) -> property:
    def get(self: Object) -> Any:
        return self._handle.get(name)

    def put(self: Object, value: Any) -> None:
        self._handle.set(name, value)

    def refuse(self: Object, value: Any) -> None:
        raise PropertyError("VELTRA:class:ReadOnlyProperty", (class_name, name))

    return property(get, put if settable else refuse, doc=doc)


def _make_method(class_name: str, name: str, doc: str) -> Any:
    def method(self: Object) -> Any:
        return self._handle.call(name)

    method.__annotations__ = {}  # the stubs have the types
    method.__name__ = name
    method.__qualname__ = f"{class_name.rpartition('.')[2]}.{name}"
    method.__module__ = class_name.rpartition(".")[0]
    method.__doc__ = doc
    return method


def _no_such_property(of: type[Object], name: str) -> PropertyError:
    properties = [key for key in dir(of) if isinstance(getattr(of, key), property)]
    return PropertyError(
        "VELTRA:class:NoSuchProperty",
        (of._host_class, name, ", ".join(properties) or "none"),
    )


def _shortened(value: object) -> str:
    text = repr(value)
    return text if len(text) <= 80 else text[:77] + "..."
