"""The exceptions of the package."""

from __future__ import annotations

from collections.abc import Sequence

from . import _veltra


class Error(Exception):
    """An error of the host or of the library.

    `identifier` tells what kind of error it is ("VELTRA:class:RequireScalar"); `arguments` are the
    texts that the message was made with.
    """

    identifier: str
    arguments: tuple[str, ...]

    def __init__(
        self, identifier: str, arguments: Sequence[str] = (), message: str | None = None
    ) -> None:
        self.identifier = identifier
        # A name may hold unpaired surrogates, which could not be printed.
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
