#!/usr/bin/env python3
"""Holds together what the readers, validate(), the writer and the JSON Schemas say of the format:

    check_agreement.py JUDGE [SEED [COUNT]]

JUDGE is the program judgeDocuments. From the sound documents of check_schema.py others are made, by
each change of one place and by COUNT random mixtures of changes; and sets are made by the writer
from random products. Claims:
- a reader reports a fault of a document exactly when its schema refuses it;
- validate() reports a fault within a file exactly when the file's reader does;
- what the writer writes is read back as it was, and the schemas accept it.

Exit status: 0 when all claims hold, 1 when one does not, 2 when the call is wrong.
"""

import copy
import json
import pathlib
import random
import subprocess
import sys
import tempfile

import jsonschema

import check_schema
from check_schema import SCHEMA_OF_FORMAT, SCHEMAS, SOUND, parse, places, shown

# The files of each set that is judged, by their formats; the sound manifest names two of them.
FILES = {
    "documentation-set": "documentation-set.json",
    "lookup": "en_US/l.json",
    "reference": "en_US/r.json",
    "aliases": "en_US/l.aliases.json",
}

# What stands in for a value: of each type, at the edge of each range, of each kind of bad name.
VALUES = [
    None, True, False, 0, -1, 1, 1.0, 1.5, -0.0, 2, 4294967295, 4294967295.0, 4294967296, 1e300,
    18446744073709551616, -9223372036854775809, "", " ", "x", "1", "function", "Function",
    "deprecated", "en_US", "/", "/x", "x/", "x//y", "x/y", "x\\y", ".", "..", "...", "../x",
    "x/../y", "x/.", "./x", "x\n", "\n", "x\u0000y", "x\u007fy", "x\u0085y", "日本", "😀",
    "documentation-set.json", "documentation-set.json.new", ".documentation-set.lock",
    [], {}, [""], [[]], [{}], ["x", "x"], {"": []}, {"x": []}, {"x": [{}]}, {"name": ""},
]
KEYS = ["", "remark", "x/y", "..", "x\\y", "x\n", "ja_JP", "de_DE", "documentation-set.json"]

# What a schema cannot say, and a reader therefore reports alone.
BEYOND_SCHEMAS = ("not among the set's \"locales\"", "occurs twice; each product has its own")

REMOVED = object()


def put(document, path, value):
    """`document` with its value at `path` replaced, added or (REMOVED) taken out."""
    if not path:
        return document if value is REMOVED else value
    owner = document
    for step in path[:-1]:
        owner = owner[step]
    if value is REMOVED:
        del owner[path[-1]]
    else:
        owner[path[-1]] = value
    return document


def renamed(document, path, key):
    """`document` with the last member of `path` under another name, in its place."""
    owner = document
    for step in path[:-1]:
        owner = owner[step]
    members = [(key if name == path[-1] else name, value) for name, value in owner.items()]
    owner.clear()
    owner.update(members)
    return document


def single_changes(sound):
    """Every document that one change of one place makes."""
    yield copy.deepcopy(sound)
    for path, value in list(places(sound)):
        for other in VALUES:
            yield put(copy.deepcopy(sound), path, copy.deepcopy(other))
        if path:
            yield put(copy.deepcopy(sound), path, REMOVED)
        if path and isinstance(path[-1], str):
            for key in KEYS:
                yield renamed(copy.deepcopy(sound), path, key)
        if isinstance(value, list):
            yield put(copy.deepcopy(sound), path, copy.deepcopy(value) * 2)
        if isinstance(value, dict):
            for key in KEYS:
                yield put(copy.deepcopy(sound), (*path, key), "")


def mixture(sound, chance):
    """A document that a few changes make, some of which keep it sound."""
    document = copy.deepcopy(sound)
    for _ in range(chance.randint(1, 3)):
        path, value = chance.choice(list(places(document)))
        kind = chance.randrange(5)
        if kind == 0 and path:
            put(document, path, REMOVED)
        elif kind == 1 and path and isinstance(path[-1], str):
            renamed(document, path, chance.choice(KEYS))
        elif kind == 2 and isinstance(value, (str, int, float)):
            same = [other for other in VALUES if type(other) is type(value)]
            document = put(document, path, chance.choice(same or VALUES))
        elif kind == 3 and isinstance(value, list):
            document = put(document, path, copy.deepcopy(value) * chance.randint(0, 2))
        else:
            _, other = chance.choice(list(places(document)))
            document = put(document, path, copy.deepcopy(other))
    return document


def is_beyond_schemas(fault):
    return any(text in fault for text in BEYOND_SCHEMAS)


def write_set(root, changed_file, text):
    (root / "en_US").mkdir(parents=True)
    for name, file in FILES.items():
        sound = json.dumps(SOUND[name])
        (root / file).write_text(text if file == changed_file else sound, encoding="utf-8")


def disagreements(judge, folder, schema, validator, documents):
    """What is said differently of the documents, one text each; and how many were refused."""
    file = FILES[schema]
    roots = [folder / f"{schema}-{number}" for number in range(len(documents))]
    for root, document in zip(roots, documents):
        write_set(root, file, json.dumps(document))
    asked = "".join(f"{root} {file}\n" for root in roots)
    answer = subprocess.run([judge, "read"], input=asked.encode(), stdout=subprocess.PIPE,
                            check=True).stdout.decode("utf-8", "replace")
    lines = answer.split("\n")[:-1]
    if len(lines) != len(documents):
        raise RuntimeError(f"{len(lines)} answers for {len(documents)} documents")
    found = []
    refused = 0
    for document, line in zip(documents, lines):
        faults, validated, first = line.split(" ", 2)
        by_schema = not validator.is_valid(document)
        by_reader = faults != "0"
        refused += by_reader
        if by_reader != by_schema and not is_beyond_schemas(first):
            why = check_schema.why_not_accepted(validator, document) or "accepts it"
            found.append(f"the reader says {first!r}, the schema {why}: {shown(document)}")
        # A manifest that names itself as a product's file is read once more, as that.
        names_itself = f'": "{FILES["documentation-set"]}"' in shown(document)
        if by_reader != (validated != "0") and not names_itself:
            found.append(f"the reader has {faults} faults, validate() {validated}: "
                         f"{shown(document)}")
    return found, refused


def check_written(claims, judge, folder, validators, seed):
    root = folder / f"made-{seed}"
    made = subprocess.run([judge, "make", str(seed), str(root)], stderr=subprocess.PIPE, check=False)
    problem = made.stderr.decode().strip() if made.returncode else ""
    if not problem:
        for path in sorted(root.rglob("*.json")):
            document = parse(path.read_text(encoding="utf-8"))
            schema = SCHEMA_OF_FORMAT[document["format"]]
            problem = problem or check_schema.why_not_accepted(validators[schema], document)
    claims.check(f"seed {seed}: what is written is read back, and the schemas accept it", problem)


def main(arguments):
    if not 1 <= len(arguments) <= 3:
        print("usage: check_agreement.py JUDGE [SEED [COUNT]]", file=sys.stderr)
        return 2
    judge = arguments[0]
    seed = int(arguments[1]) if len(arguments) > 1 else random.randrange(1 << 31)
    count = int(arguments[2]) if len(arguments) > 2 else 500
    print(f"seed {seed}")
    chance = random.Random(seed)
    claims = check_schema.Claims()
    validators = {
        name: jsonschema.Draft202012Validator(
            json.loads((SCHEMAS / f"{name}.schema.json").read_text(encoding="utf-8")))
        for name in SCHEMA_OF_FORMAT.values()
    }
    # Tens of thousands of small files: in memory where the system has a folder for that.
    memory = pathlib.Path("/dev/shm")
    with tempfile.TemporaryDirectory(dir=memory if memory.is_dir() else None) as folder:
        for name, sound in SOUND.items():
            documents = list(single_changes(sound))
            documents += [mixture(sound, chance) for _ in range(count)]
            found, refused = disagreements(judge, pathlib.Path(folder), name, validators[name],
                                           documents)
            claims.check(f"{name}: reader, schema and validate() agree on {len(documents)} "
                         f"documents, of which {refused} are refused", "\n  ".join(found[:20]))
            claims.check(f"{name}: some documents are refused and some are not",
                         "" if 0 < refused < len(documents) else f"{refused} are refused")
        for number in range(10):
            check_written(claims, judge, pathlib.Path(folder), validators, seed + number)
    print(f"{claims.failed} claims do not hold" if claims.failed else "all claims hold")
    return 1 if claims.failed else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
