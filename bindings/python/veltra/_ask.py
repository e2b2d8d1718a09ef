"""Questions as people put them."""

from __future__ import annotations

from collections.abc import Sequence
from dataclasses import dataclass, field
from typing import Any

from . import _veltra


class QuestionError(ValueError):
    """A question that cannot be asked.

    `position` and `length` are those of the wrong part of it, in UTF-16 units: those of characters,
    but for characters beyond U+FFFF, which are two.
    """

    position: int
    length: int

    def __init__(self, message: str, position: int = 0, length: int = 0) -> None:
        super().__init__(message)
        self.position = position
        self.length = length


@dataclass(frozen=True)
class Hit:
    """An entry that a question found.

    `name` is the documented name by which it was found. `rung` tells how: "name", "any-case",
    "without-package", "other-package", "parts", "beginning", "spelling", "words", "text" or
    "most-words". `change` tells what had to be changed in the question, and is often empty. `data` is
    the entry, a veltra.internal.reference.api.ReferenceData.
    """

    name: str
    rung: str
    change: str
    data: Any = field(repr=False)


@dataclass(frozen=True)
class Answer(Sequence[Hit]):
    """What a question found, in order: a sequence of hits.

    `total` counts all that there are, returned or not. `filtered_away` counts what the filters
    turned away; where there are no hits, `turned_away` has the first of that.
    """

    hits: tuple[Hit, ...]
    total: int
    filtered_away: int
    turned_away: tuple[Hit, ...]

    def __len__(self) -> int:
        return len(self.hits)

    def __getitem__(self, at: Any) -> Any:
        return self.hits[at]


def ask(
    question: str,
    *,
    limit: int = 10,
    prefer: Sequence[str] = (),
    products: Sequence[str] = (),
    types: Sequence[str] = (),
) -> Answer:
    """Finds what a person means who types loosely: "read csv", "guassian_kde", "how to sort a list".

    At most `limit` hits are returned. Hits of the products in `prefer` go before equal ones of
    others. `products` and `types` are filters besides those that the question may hold. Raises
    QuestionError for a question that cannot be asked, and ValueError for a type that there is not.
    """
    if limit < 0:
        raise ValueError("limit must not be negative")
    hits, total, filtered_away, turned_away = _veltra.ask(
        question, limit, list(prefer), list(products), list(types)
    )
    return Answer(
        tuple(Hit(*hit) for hit in hits),
        total,
        filtered_away,
        tuple(Hit(*hit) for hit in turned_away),
    )
