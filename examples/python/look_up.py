#!/usr/bin/env python3
"""Looks a name up and prints what is found as a table, the likeliest first.

    look_up.py NAME [PRODUCT]

Results of PRODUCT go before all others, then those that bear exactly the name; the rest is left to
the usual order. Letter case and packages do not count.
"""

import sys

import veltra
from veltra.internal.reference.api import (
    EntityCaseSensitivity,
    EntityPrecision,
    ReferenceData,
    ReferenceDataRetriever,
    ReferenceRequest,
)
from veltra.internal.reference.api.comparator import (
    CompoundReferenceComparator,
    EntityNameMatchComparator,
    PreferredOrderComparator,
    ProductMatchComparator,
)


def look_up(name: str, product: str) -> list[ReferenceData]:
    order = CompoundReferenceComparator(
        Comparators=[
            ProductMatchComparator(ProductName=product),
            EntityNameMatchComparator(EntityName=name),
            PreferredOrderComparator(),
        ]
    )
    request = ReferenceRequest(
        EntityText=name,
        EntityCaseSensitivity=EntityCaseSensitivity.Insensitive,
        EntityPrecision=EntityPrecision.Ignore_Package,
        Comparator=order,
    )
    return ReferenceDataRetriever(ReferenceRequest=request).getReferenceData()


def print_table(results: list[ReferenceData]) -> None:
    rows = [("PRODUCT", "NAME", "TYPE", "PURPOSE")]
    for result in results:
        product = result.HeaderInfo.ShortName
        # One row for an item: an item may document several entities, or none.
        entities = result.RefItem.RefEntities
        name = entities[0].Name if entities else ""
        kind = entities[0].RefEntityType.name if entities else ""
        rows.append((product, name, kind, result.RefItem.Purpose))
    widths = [max(len(row[column]) for row in rows) for column in range(3)]
    for *cells, purpose in rows:
        print("  ".join([*map(str.ljust, cells, widths), purpose]))


def main(arguments: list[str]) -> int:
    if not 1 <= len(arguments) <= 2:
        print("usage: look_up.py NAME [PRODUCT]", file=sys.stderr)
        return 2
    name, product = [*arguments, "veltra"][:2]
    try:
        results = look_up(name, product)
    except veltra.Error as error:
        print(f"look_up.py: {error}", file=sys.stderr)
        return 2
    if not results:
        print(f'look_up.py: Nothing is called "{name}".', file=sys.stderr)
        return 1
    print_table(results)
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
