#!/usr/bin/env python3
"""Checks the JSON Schemas of the documentation-set format, and documents against them:

    check_schema.py SET

Claims, one printed line each:
- every JSON file of the documentation set in the folder SET, and every file shown on the page
  docs/documentation-set.md, is accepted by the schema of its format;
- a document that is made from a sound one by one change is refused at the place of that change, or
  accepted where the format allows it;
- the names that the schemas know are those of the property library.

Exit status: 0 when all claims hold, 1 when one does not, 2 when the call is wrong.
"""

import copy
import json
import pathlib
import re
import sys

import jsonschema

REPOSITORY = pathlib.Path(__file__).resolve().parents[3]
SCHEMAS = REPOSITORY / "host" / "docset" / "schema"
PAGE = REPOSITORY / "docs" / "documentation-set.md"
PROPERTY_LIBRARY = REPOSITORY / "host" / "property"

SCHEMA_OF_FORMAT = {
    "veltra-documentation-set": "documentation-set",
    "veltra-documentation-lookup": "lookup",
    "veltra-documentation-reference": "reference",
    "veltra-documentation-aliases": "aliases",
}

# Sound documents that use every member of their format. Each change below starts from one of them.
HEAD = {"shortName": "demo", "displayName": "Demo", "helpFolder": "demo", "version": "1.0"}
SOUND = {
    "documentation-set": {
        "format": "veltra-documentation-set",
        "formatVersion": 1,
        "title": "Demo",
        "locales": ["en_US", "ja_JP"],
        "products": [{
            "shortName": "demo",
            "installed": True,
            "files": {"en_US": {
                "lookup": "en_US/l.json",
                "reference": "en_US/r.json",
                "source": {"folder": "/srv/docs", "importer": "sphinx", "importerVersion": "1"},
            }},
        }],
    },
    "lookup": {
        "format": "veltra-documentation-lookup",
        "formatVersion": 1,
        "product": HEAD,
        "entities": {"area": [{
            "type": "function",
            "functionType": "function",
            "href": "ref/area.html",
            "purpose": "Area of a shape",
        }]},
    },
    "reference": {
        "format": "veltra-documentation-reference",
        "formatVersion": 1,
        "products": [{**HEAD, "pages": {"ref/area.html": [{
            "entities": [{"name": "area", "type": "class", "functionType": "constructor"}],
            "packageName": "shapes",
            "purpose": "Area of a shape",
            "introduced": "1.0",
            "description": "One paragraph.\n\nAnother.",
            "appThumbnail": {"source": "a.png", "alternativeText": "A square"},
            "deprecationStatus": "deprecated",
            "syntaxGroups": [{"title": "", "syntaxes": ["a := area(s)"]}],
            "inputs": [{"name": "s", "purpose": "A shape.", "href": "", "values": ["Shape"]}],
            "inputGroups": [{"title": "Shape", "inputs": [{"name": "s"}]}],
            "outputs": [{"name": "a"}],
            "classPropertyGroups": [{"title": "Size", "properties": [{"name": "width"}]}],
            "seeAlso": [{"page": "ref/edge.html", "name": "edge"}],
            "examples": [{"title": "", "code": "show area(s)"}],
            "parameters": [{"name": "unit", "purpose": "", "defaultValue": "m"}],
        }]}}],
    },
    "aliases": {
        "format": "veltra-documentation-aliases",
        "formatVersion": 1,
        "aliases": {"sh": {"shapes.flat": 12, "shapes": 1}},
    },
}

# Objects whose members are names that the author picks: there is no unknown member in them.
MAPS = {"files", "entities", "pages", "aliases", "sh"}

PRODUCT = ("products", 0)
FILES = (*PRODUCT, "files")
ENGLISH = (*FILES, "en_US")
SOURCE = (*ENGLISH, "source")
RECORD = ("entities", "area", 0)
PAGES = (*PRODUCT, "pages")
ITEM = (*PAGES, "ref/area.html", 0)
ALIAS = ("aliases", "sh")

REMOVED = object()

# What the format refuses: schema, the changed place, its new value, where the refusal must point
# (the changed place itself, or "parent" for what its owner must or must not have).
REFUSED = [
    ("documentation-set", ("format",), "veltra-documentation-lookup", "itself"),
    ("documentation-set", ("formatVersion",), 2, "itself"),
    ("documentation-set", ("formatVersion",), "1", "itself"),
    ("documentation-set", ("locales",), [], "itself"),
    ("documentation-set", ("locales",), ["en_US", "en_US"], "itself"),
    ("documentation-set", ("locales", 0), "", "itself"),
    ("documentation-set", ("locales", 0), "en/US", "itself"),
    ("documentation-set", ("locales", 0), "..", "itself"),
    ("documentation-set", ("locales", 0), "l" * 51, "itself"),
    ("documentation-set", (*PRODUCT, "shortName"), "", "itself"),
    ("documentation-set", (*PRODUCT, "installed"), "yes", "itself"),
    ("documentation-set", FILES, {}, "itself"),
    ("documentation-set", (*FILES, "../en_US"), {"lookup": "a", "reference": "b"}, "parent"),
    ("documentation-set", (*ENGLISH, "reference"), REMOVED, "parent"),
    *(
        ("documentation-set", (*ENGLISH, member), path, "itself")
        for member in ("lookup", "reference")
        for path in ("", "/a.json", "../a.json", "a/../b.json", "a/..", "./a", "a//b", "a/", "a\\b")
    ),
    *(
        ("documentation-set", (*SOURCE, "folder"), folder, "itself")
        for folder in ("", "docs", "./docs", "~/docs", "/a\0b")
    ),
    ("documentation-set", (*SOURCE, "importer"), "", "itself"),
    ("lookup", ("format",), "veltra-documentation-reference", "itself"),
    ("lookup", ("formatVersion",), 0, "itself"),
    ("lookup", ("product", "shortName"), "", "itself"),
    ("lookup", ("entities", ""), SOUND["lookup"]["entities"]["area"], "parent"),
    ("lookup", ("entities", "area"), [], "itself"),
    ("lookup", (*RECORD, "href"), "", "itself"),
    ("reference", ("format",), "veltra-documentation-set", "itself"),
    ("reference", ("formatVersion",), 1.5, "itself"),
    ("reference", (*PRODUCT, "shortName"), "", "itself"),
    ("reference", (*PAGES, ""), [{"entities": []}], "parent"),
    ("reference", ITEM[:-1], [], "itself"),
    ("reference", (*ITEM, "entities"), [], "itself"),
    ("reference", (*ITEM, "entities", 0, "name"), "", "itself"),
    ("reference", (*ITEM, "href"), "ref/area.html", "parent"),
    *(
        (schema, (*owner, member), value, "itself")
        for schema, owner, members in (
            ("lookup", RECORD, ("type", "functionType")),
            ("reference", (*ITEM, "entities", 0), ("type", "functionType")),
            ("reference", ITEM, ("deprecationStatus",)),
        )
        for member in members
        for value in ("", "subroutine", "Function", "7", -1, 4294967296, 1.5, True, ["function"])
    ),
    ("aliases", ("format",), "veltra-documentation-lookup", "itself"),
    ("aliases", ("formatVersion",), 2, "itself"),
    ("aliases", ALIAS, {}, "itself"),
    ("aliases", ALIAS, {f"shapes{number}": 1 for number in range(9)}, "itself"),
    ("aliases", ("aliases",), {f"s{number}": {"shapes": 1} for number in range(201)}, "itself"),
    *(
        ("aliases", ("aliases", alias), {"shapes": 1}, "parent")
        for alias in ("", "s h", "7s", "s.h", "s-h", "ß", "sh\n")
    ),
    *(
        ("aliases", (*ALIAS, name), 1, "parent")
        for name in ("", ".", "a.", ".a", "a..b", "a.7", "7", "a b", "a\n", "größe")
    ),
    *(
        ("aliases", (*ALIAS, "shapes"), count, "itself")
        for count in (0, -1, 1.5, "1", True, 4294967296)
    ),
]

# What the format requires: leaving it out is refused at its owner.
REQUIRED = {
    "documentation-set": [
        ("format",), ("formatVersion",), ("locales",), ("products",),
        (*PRODUCT, "shortName"), (*PRODUCT, "installed"), FILES, (*ENGLISH, "lookup"),
        (*SOURCE, "folder"), (*SOURCE, "importer"),
    ],
    "lookup": [
        ("format",), ("formatVersion",), ("product",), ("entities",),
        ("product", "shortName"), ("product", "displayName"), ("product", "helpFolder"),
        (*RECORD, "type"), (*RECORD, "functionType"), (*RECORD, "href"),
    ],
    "reference": [
        ("format",), ("formatVersion",), ("products",),
        (*PRODUCT, "shortName"), (*PRODUCT, "displayName"), (*PRODUCT, "helpFolder"), PAGES,
        (*ITEM, "entities"), (*ITEM, "entities", 0, "name"), (*ITEM, "entities", 0, "type"),
        (*ITEM, "entities", 0, "functionType"), (*ITEM, "inputs", 0, "name"),
        (*ITEM, "inputGroups", 0, "inputs", 0, "name"), (*ITEM, "outputs", 0, "name"),
        (*ITEM, "classPropertyGroups", 0, "properties", 0, "name"),
        (*ITEM, "seeAlso", 0, "name"), (*ITEM, "parameters", 0, "name"),
    ],
    "aliases": [("format",), ("formatVersion",), ("aliases",)],
}

# What the format allows, so that the schemas are not stricter than they ought to be.
ACCEPTED = [
    ("documentation-set", ("products",), []),
    ("documentation-set", PRODUCT, {"shortName": "x", "installed": False,
                                    "files": {"ja_JP": {"lookup": "ja_JP/x..1/...json"}}}),
    ("lookup", ("entities",), {}),
    ("lookup", ("product", "version"), ""),
    ("reference", ("products",), []),
    ("reference", PAGES, {}),
    ("reference", (*ITEM, "deprecationStatus"), 3),
    ("aliases", ("aliases",), {}),
    ("aliases", ("aliases", "_s7"), {"_a.B7": 4294967295}),
    *(
        (schema, (*owner, member), value)
        for schema, owner in (("lookup", RECORD), ("reference", (*ITEM, "entities", 0)))
        for member in ("type", "functionType")
        for value in (0, 4294967295, "operator")
    ),
]


class Claims:
    """Prints each claim with its outcome and counts those that do not hold."""

    def __init__(self):
        self.failed = 0

    def check(self, claim, problem):
        """`problem` says why the claim does not hold; empty when it does."""
        print(f"ok: {claim}" if not problem else f"FAILED: {claim}: {problem}")
        self.failed += bool(problem)


def field_name(path):
    """The place of a value as a reader of the file would write it: products[0].files.en_US."""
    text = ""
    for step in path:
        text += f"[{step}]" if isinstance(step, int) else f".{step}" if text else str(step)
    return text or "the top"


def shown(value):
    return json.dumps(value, ensure_ascii=False)


def changed(document, path, value):
    """A copy of `document` whose value at `path` is replaced, added or (REMOVED) taken out."""
    document = copy.deepcopy(document)
    owner = document
    for step in path[:-1]:
        owner = owner[step]
    if value is REMOVED:
        del owner[path[-1]]
    else:
        owner[path[-1]] = value
    return document


def places(value, path=()):
    """The paths of all values within `value`, outermost first."""
    yield path, value
    steps = value.items() if isinstance(value, dict) else ()
    steps = enumerate(value) if isinstance(value, list) else steps
    for step, inner in steps:
        yield from places(inner, (*path, step))


def objects(value):
    """The paths of all objects in `value` whose members the format lists."""
    for path, inner in places(value):
        if isinstance(inner, dict) and not (path and path[-1] in MAPS):
            yield path


def why_not_accepted(validator, document):
    error = jsonschema.exceptions.best_match(validator.iter_errors(document))
    return f"at {field_name(error.absolute_path)}: {error.message}" if error else ""


def why_not_refused_at(validator, document, where):
    found = [tuple(error.absolute_path) for error in validator.iter_errors(document)]
    if not found:
        return "it is accepted"
    if where not in found:
        return f"the refusal points at {', '.join(map(field_name, found))}"
    return ""


def parse(text):
    """The JSON document `text`, which must not repeat a member or go beyond JSON."""

    def without_repeated(members):
        names = [name for name, _ in members]
        repeated = {name for name in names if names.count(name) > 1}
        if repeated:
            raise ValueError(f"the member {shown(min(repeated))} occurs twice")
        return dict(members)

    def refuse_constant(name):
        raise ValueError(f"{name} is no JSON number")

    return json.loads(text, object_pairs_hook=without_repeated, parse_constant=refuse_constant)


def check_documents(claims, validators, origin, texts):
    """Checks the files of one set: `texts` has their contents (bytes) by relative path."""
    formats = {}
    named = {}
    for path, text in sorted(texts.items()):
        problem = ""
        try:
            document = parse(text.decode("utf-8"))
            formats[path] = document.get("format") if isinstance(document, dict) else None
            schema = SCHEMA_OF_FORMAT.get(formats[path])
            if schema is None:
                problem = f"its \"format\" is none of {', '.join(SCHEMA_OF_FORMAT)}"
            else:
                problem = why_not_accepted(validators[schema], document)
            if path == "documentation-set.json" and not problem:
                named = {
                    (name, f"veltra-documentation-{kind}")
                    for product in document["products"]
                    for files in product["files"].values()
                    for kind, name in files.items() if kind != "source"
                }
        except ValueError as error:
            problem = str(error)
        claims.check(f"{origin}: {path} is accepted", problem)
    claims.check(f"{origin}: there is a manifest that names files",
                 "" if named else "it is missing, unsound or names none")
    for name, kind in sorted(named):
        claims.check(f"{origin}: the manifest's {name} is there and a {kind}",
                     "" if formats.get(name) == kind
                     else f"what is there is {formats.get(name) or 'no such file'}")


def files_on_page(page):
    """The JSON blocks of the page, by the path in the line "File `path`:" above each."""
    blocks = re.findall(r"^File `([^`]+)`:\n\s*^```json\n(.*?)^```$", page, re.M | re.S)
    return {path: text.encode("utf-8") for path, text in blocks}


def check_schemas(claims, validators):
    for name, validator in validators.items():
        sound = SOUND[name]
        claims.check(f"{name}: the sound document is accepted", why_not_accepted(validator, sound))
        for path in objects(sound):
            unknown = changed(sound, (*path, "remark"), "")
            claims.check(f"{name}: an unknown member of {field_name(path)} is refused",
                         why_not_refused_at(validator, unknown, path))
        for path, _ in places(sound):
            null = changed(sound, path, None) if path else None
            claims.check(f"{name}: null as {field_name(path)} is refused",
                         why_not_refused_at(validator, null, path))
        required = set(REQUIRED[name])
        for path, _ in places(sound):
            if not path or not isinstance(path[-1], str) or (path[:-1] and path[-2] in MAPS):
                continue
            document = changed(sound, path, REMOVED)
            if path in required:
                claims.check(f"{name}: {field_name(path)} may not be left out",
                             why_not_refused_at(validator, document, path[:-1]))
            elif path != (*ENGLISH, "reference"):
                claims.check(f"{name}: {field_name(path)} may be left out",
                             why_not_accepted(validator, document))
    for name, path, value, where in REFUSED:
        document = changed(SOUND[name], path, value)
        what = "absence" if value is REMOVED else shown(value)
        claims.check(f"{name}: {what} as {field_name(path)} is refused",
                     why_not_refused_at(validators[name], document,
                                        path if where == "itself" else path[:-1]))
    for name, path, value in ACCEPTED:
        claims.check(f"{name}: {shown(value)} as {field_name(path)} is accepted",
                     why_not_accepted(validators[name], changed(SOUND[name], path, value)))


def check_names(claims, schemas):
    for name, definition, source in (
        ("lookup", "entityType", "RefEntityType.cpp"),
        ("lookup", "functionType", "FunctionType.cpp"),
        ("reference", "entityType", "RefEntityType.cpp"),
        ("reference", "functionType", "FunctionType.cpp"),
        ("reference", "deprecationStatus", "DeprecationStatus.cpp"),
    ):
        code = (PROPERTY_LIBRARY / source).read_text(encoding="utf-8")
        table = re.search(r"EnumNames<.*?> \w+\(\{(.*?)\}\)", code, re.S)
        in_library = re.findall(r'"([^"]*)"', table.group(1)) if table else []
        in_schema = schemas[name]["$defs"][definition]["anyOf"][0]["enum"]
        claims.check(f"{name}: the names of {definition} are those of {source}",
                     "" if in_library and in_schema == in_library
                     else f"{in_schema} in the schema, {in_library} in the library")


def main(arguments):
    if len(arguments) != 1 or not pathlib.Path(arguments[0]).is_dir():
        print("usage: check_schema.py SET, where SET is the folder of a documentation set",
              file=sys.stderr)
        return 2
    root = pathlib.Path(arguments[0])
    claims = Claims()
    schemas = {
        name: json.loads((SCHEMAS / f"{name}.schema.json").read_text(encoding="utf-8"))
        for name in SCHEMA_OF_FORMAT.values()
    }
    for schema in schemas.values():
        jsonschema.Draft202012Validator.check_schema(schema)
    validators = {n: jsonschema.Draft202012Validator(s) for n, s in schemas.items()}

    check_documents(claims, validators, root.name, {
        path.relative_to(root).as_posix(): path.read_bytes() for path in root.rglob("*.json")
    })
    check_documents(claims, validators, PAGE.name, files_on_page(PAGE.read_text(encoding="utf-8")))
    check_schemas(claims, validators)
    check_names(claims, schemas)
    print(f"{claims.failed} claims do not hold" if claims.failed else "all claims hold")
    return 1 if claims.failed else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
