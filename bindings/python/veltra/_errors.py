"""The exceptions of the package."""

from __future__ import annotations

from collections.abc import Sequence

from . import _veltra


class Error(Exception):
    """An error of the host or of the library.

    `identifier` tells one kind from another ("VELTRA:class:RequireScalar"), `arguments` are what
    the message was made with.
    """

    identifier: str
    arguments: tuple[str, ...]

    def __init__(
        self, identifier: str, arguments: Sequence[str] = (), message: str | None = None
    ) -> None:
        self.identifier = identifier
        # What is said must be sayable: a name may hold unpaired surrogates.
        self.arguments = tuple(
            argument.encode("utf-8", "backslashreplace").decode() for argument in arguments
        )
        self._message = (
            _veltra.message(identifier, list(self.arguments)) if message is None else message
        )
        super().__init__(identifier, self.arguments, self._message)

    def __str__(self) -> str:
        return self._message


class PropertyError(Error, AttributeError):
    """A property that a class does not have, or that cannot be set."""
