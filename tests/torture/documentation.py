"""The documentation that the tool is tortured with: small sets and a small built Sphinx tree."""

import json
import zlib
from pathlib import Path
from typing import Any

# Neither is Chinese or Japanese: where memory runs out while ICU loads its dictionary of their
# words, ICU crashes or hangs by itself.
LOCALES = ("en_US", "de_DE")

PURPOSES = {
    "twice": {"en_US": "Double a number", "de_DE": "Eine Zahl verdoppeln"},
    "half": {"en_US": "Halve a number", "de_DE": "Eine Zahl halbieren"},
    "sortRows": {"en_US": "Sort the rows of a table", "de_DE": "Die Zeilen einer Tabelle ordnen"},
}


def _function(name: str, purpose: str) -> dict[str, Any]:
    return {
        "entities": [{"name": name, "type": "function", "functionType": "function"}],
        "purpose": purpose,
        "description": f"{purpose}. What follows says how {name} does that.",
        "syntaxGroups": [{"title": "", "syntaxes": [f"y := {name}(x)"]}],
        "inputs": [{"name": "x", "purpose": "What it works on", "href": f"ref/{name}.html#x"}],
        "examples": [{"title": "A first step", "code": f"import arith as ar\ny := ar.{name}(4)"}],
    }


def _write(path: Path, document: dict[str, Any]) -> None:
    path.parent.mkdir(parents=True, exist_ok=True)
    path.write_text(json.dumps(document, ensure_ascii=False, indent=1) + "\n", encoding="utf-8")


def _write_product(root: Path, product: str, locale: str) -> None:
    head = {
        "shortName": product,
        "displayName": product.title(),
        "helpFolder": product,
        "version": "1.0",
    }
    entities = {}
    pages = {}
    for function, purposes in PURPOSES.items():
        name = f"{product}.{function}"
        href = f"ref/{function}.html"
        purpose = purposes[locale]
        entities[name] = [
            {"type": "function", "functionType": "function", "href": href, "purpose": purpose}
        ]
        pages[href] = [_function(name, purpose)]
    href = "ref/Table.html"
    whole = f"{product}.Table"
    entities[whole] = [
        {"type": "class", "functionType": "constructor", "href": href, "purpose": "A table"}
    ]
    entities[f"{whole}.Height"] = [
        {"type": "property", "functionType": "property", "href": href, "purpose": "How high it is"}
    ]
    pages[href] = [
        {
            "entities": [{"name": whole, "type": "class", "functionType": "constructor"}],
            "purpose": "A table",
            "seeAlso": [{"page": "ref/sortRows.html", "name": "sortRows"}],
            "classPropertyGroups": [
                {
                    "title": "Size",
                    "properties": [
                        {"name": "Height", "purpose": "How high it is", "href": f"{href}#Height"}
                    ],
                }
            ],
        }
    ]
    folder = root / locale
    _write(
        folder / f"{product}.lookup.json",
        {
            "format": "veltra-documentation-lookup",
            "formatVersion": 1,
            "product": head,
            "entities": entities,
        },
    )
    _write(
        folder / f"{product}.reference.json",
        {
            "format": "veltra-documentation-reference",
            "formatVersion": 1,
            "products": [{**head, "pages": pages}],
        },
    )
    _write(
        folder / f"{product}.lookup.aliases.json",
        {
            "format": "veltra-documentation-aliases",
            "formatVersion": 1,
            "aliases": {"ar": {product: 3}},
        },
    )


def write_set(root: Path, products: tuple[str, ...] = ("arith", "extra")) -> None:
    """A set that is not compiled, with each product in two languages."""
    for product in products:
        for locale in LOCALES:
            _write_product(root, product, locale)
    _write(
        root / "documentation-set.json",
        {
            "format": "veltra-documentation-set",
            "formatVersion": 1,
            "title": "Documentation to be tortured",
            "locales": list(LOCALES),
            "products": [
                {
                    "shortName": product,
                    "installed": True,
                    "files": {
                        locale: {
                            "lookup": f"{locale}/{product}.lookup.json",
                            "reference": f"{locale}/{product}.reference.json",
                        }
                        for locale in LOCALES
                    },
                }
                for product in products
            ],
        },
    )


def _page(names: list[str], purpose: str) -> str:
    described = "".join(
        f'<dl class="py function"><dt class="sig sig-object py" id="{name}">'
        f'<span class="sig-name descname">{name}</span>(x)</dt><dd><p>{purpose}</p>'
        f"<p>More of it.</p></dd></dl>"
        for name in names
    )
    return f"<!DOCTYPE html><html><head><title>t</title></head><body>{described}</body></html>"


def write_tree(folder: Path, edition: str, pages: int = 4) -> None:
    """A built Sphinx tree; the purpose of each of its functions names the edition."""
    folder.mkdir(parents=True, exist_ok=True)
    lines = []
    for number in range(pages):
        names = [f"gadget{number}", f"widget{number}"]
        (folder / f"g{number}.html").write_text(_page(names, f"Edition {edition}."))
        lines += [f"{name} py:function 1 g{number}.html#$ -\n" for name in names]
    head = (
        "# Sphinx inventory version 2\n# Project: Gadgets\n"
        f"# Version: {edition}\n# The remainder of this file is compressed using zlib.\n"
    )
    (folder / "objects.inv").write_bytes(head.encode() + zlib.compress("".join(lines).encode()))
