"""Searches over the documentation that ships with the library."""

import json
import os
import subprocess
import sys
from pathlib import Path

import pytest

import veltra
from veltra.internal.reference.api import (
    AllTextDataRetriever,
    ClassEntityDataRetriever,
    EntityCaseSensitivity,
    EntityPrecision,
    EntityPurposeDataRetriever,
    PageNameDataRetriever,
    ReferenceDataRetriever,
    ReferenceRequest,
)
from veltra.internal.reference.property import DeprecationStatus, RefEntityType, RefItem

pytestmark = pytest.mark.usefixtures("counts")


def search(retriever, **properties):
    return retriever(ReferenceRequest=ReferenceRequest(**properties)).getReferenceData()


def names(results):
    """Each result as "product:name"."""
    return [
        f"{result.HeaderInfo.ShortName}:{result.RefItem.RefEntities[0].Name}" for result in results
    ]


def test_a_new_retriever_searches_by_a_new_request():
    for retriever in (
        ReferenceDataRetriever,
        ClassEntityDataRetriever,
        EntityPurposeDataRetriever,
        PageNameDataRetriever,
    ):
        assert retriever().getReferenceData() == []
    found = AllTextDataRetriever().getReferenceData()  # an empty text is part of any
    assert len(found) == len(search(AllTextDataRetriever)) > 100


def test_by_name():
    assert names(search(ReferenceDataRetriever, EntityText="Table")) == ["veltra:Table"]
    both = search(
        ReferenceDataRetriever,
        EntityText="TABLE",
        EntityCaseSensitivity=EntityCaseSensitivity.Insensitive,
        Products=["veltra"],
    )
    assert sorted(names(both)) == ["veltra:Table", "veltra:table"]
    assert search(ReferenceDataRetriever, EntityText="Table", Products=["brisk"]) == []
    assert search(ReferenceDataRetriever, EntityText="Table", Types=[RefEntityType.Function]) == []


def test_by_name_without_its_package():
    assert search(ReferenceDataRetriever, EntityText="sortBy") == []
    results = search(
        ReferenceDataRetriever,
        EntityText="sortBy",
        EntityPrecision=EntityPrecision.Ignore_Package,
    )
    assert names(results) == ["veltra:Table.sortBy"]


def test_classes_with_their_properties():
    results = search(ClassEntityDataRetriever, EntityText="Table", Products=["veltra"])
    assert names(results)[0] == "veltra:Table"
    kinds = {result.RefItem.RefEntities[0].RefEntityType for result in results}
    assert {RefEntityType.Class, RefEntityType.Property} <= kinds


def test_by_purpose():
    results = search(EntityPurposeDataRetriever, EntityText="columns")
    assert results
    for result in results:
        entity = result.RefItem.RefEntities[0]
        assert "columns" in (result.RefItem.Purpose + entity.Name).lower()


def test_by_page():
    results = search(PageNameDataRetriever, EntityText="ref/table-class.html")
    assert "veltra:Table" in names(results)
    assert {result.RefItem.Href for result in results} == {"ref/table-class.html"}


def test_by_any_text():
    word = "named columns"
    results = search(AllTextDataRetriever, EntityText=word)
    assert results
    assert all(word in item_text(result.RefItem) for result in results)


def item_text(item):
    """All that an item says, as one text."""

    def texts(value):
        if isinstance(value, str):
            yield value
        elif isinstance(value, list):
            for one in value:
                yield from texts(one)
        elif isinstance(value, veltra.Object):
            for name, member in vars(type(value)).items():
                if isinstance(member, property):
                    yield from texts(getattr(value, name))

    return "\n".join(texts(item))


def test_everything_that_a_result_says_can_be_read():
    root = Path(os.environ["VELTRA_BINARY_DIR"]) / "share/veltra/documentation-set/en_US"
    stored = json.loads((root / "veltra.reference.json").read_text(encoding="utf-8"))
    text = json.dumps(stored, ensure_ascii=False)
    results = search(AllTextDataRetriever, EntityText="", Products=["veltra"])
    assert len(results) > 20
    for result in results:
        assert result.HeaderInfo.DisplayName == "VELTRA"
        item = result.RefItem
        assert isinstance(item, RefItem)
        assert isinstance(item.DeprecationStatus, DeprecationStatus)
        for line in item_text(item).splitlines():
            assert json.dumps(line, ensure_ascii=False)[1:-1] in text, line
    for wanted in ("SyntaxGroups", "Inputs", "Outputs", "Examples", "SeeAlsoInfo"):
        assert any(getattr(result.RefItem, wanted) for result in results), wanted


def test_the_documentation_is_that_of_the_environment(tmp_path):
    code = (
        "import veltra\n"
        "from veltra.internal.reference.api import *\n"
        "try:\n"
        "    r = ReferenceDataRetriever(ReferenceRequest=ReferenceRequest(EntityText='a'))\n"
        "    r.getReferenceData()\n"
        "except veltra.Error as error:\n"
        "    print(error.identifier, error)\n"
    )
    environment = {**os.environ, "VELTRA_DOC_ROOT": str(tmp_path)}
    done = subprocess.run(
        [sys.executable, "-c", code], env=environment, capture_output=True, text=True
    )
    assert (done.returncode, done.stderr) == (0, "")
    assert done.stdout.startswith("VELTRA:class:OperationFailed ")
    assert str(tmp_path) in done.stdout
