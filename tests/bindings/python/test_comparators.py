"""Comparators set from Python order as the same ones do natively."""

import random

import pytest

from veltra import _veltra
from veltra.internal.reference import api
from veltra.internal.reference.api import comparator as comparators

RETRIEVERS = [
    "ReferenceDataRetriever",
    "AllTextDataRetriever",
    "ClassEntityDataRetriever",
    "EntityPurposeDataRetriever",
    "PageNameDataRetriever",
]
PACKAGE = comparators.__name__
ALL = sorted(_veltra.class_names(PACKAGE))
# Everything by a text that all have; names and pages by parts that generated ones are made of.
TEXTS = ["", "a", "A", "fit", "Fit", "b", "\ud800"]


def units(text):
    """A text as the native side takes it."""
    data = text.encode("utf-16-le", "surrogatepass")
    return [data[i] | data[i + 1] << 8 for i in range(0, len(data), 2)]


def text_of(some_units):
    data = b"".join(unit.to_bytes(2, "little") for unit in some_units)
    return data.decode("utf-16-le", "surrogatepass")


def described(name, chance, known, depth=0):
    """A comparator at random: its class's name and its properties. `known` are found results."""
    product, href, entity_names = chance.choice(known) if known else ("alpha", "x/a.html", ["a"])
    entity_name = chance.choice([*entity_names, "a.b"])
    fold = chance.choice([0, 0, 1, 1, 2])
    kind = chance.choice([0, 1, 3, 4, 27])
    match name:
        case "EntityMatchComparator":
            fields = {
                "EntityName": entity_name,
                "RefEntityType": kind,
                "EntityCaseSensitivity": fold,
            }
        case "EntityNameMatchComparator":
            fields = {"EntityName": entity_name, "EntityCaseSensitivity": fold}
        case "EntityTypeMatchComparator":
            fields = {"RefEntityType": kind}
        case "PageNameMatchComparator":
            page = href.rpartition("/")[2].removesuffix(".html")
            fields = {
                "PageName": chance.choice([page, page.upper()]),
                "EntityCaseSensitivity": fold,
            }
        case "ProductMatchComparator":
            fields = {"ProductName": product}
        case "CompoundReferenceComparator":
            # A compound in a compound in a compound, and no deeper.
            choices = ALL if depth < 2 else [one for one in ALL if one != name]
            inner = [chance.choice(choices) for _ in range(chance.randrange(4))]
            if depth < 2:
                inner.insert(chance.randrange(len(inner) + 1), name)
            fields = {"Comparators": [described(one, chance, known, depth + 1) for one in inner]}
        case _:
            fields = {}
    known = {entry[0] for entry in _veltra.describe_class(f"{PACKAGE}.{name}")["properties"]}
    assert set(fields) == known, f"{name} has properties that are not set here"
    return name, fields


def for_python(described_one):
    name, fields = described_one
    if "Comparators" in fields:
        fields = {"Comparators": [for_python(one) for one in fields["Comparators"]]}
    return getattr(comparators, name)(**fields)


def for_native(described_one):
    name, fields = described_one
    plain = {
        key: [for_native(one) for one in value]
        if key == "Comparators"
        else units(value)
        if isinstance(value, str)
        else value
        for key, value in fields.items()
    }
    return name, plain


def loosely(text):
    """A request of all products and types in which neither case nor package counts."""
    return {
        "EntityText": units(text),
        "Types": [],
        "Products": [],
        "EntityCaseSensitivity": 1,
        "EntityPrecision": 1,
    }


def search_natively(native, retriever, request, comparator):
    found = native.search(retriever, request, for_native(comparator))
    return [(text_of(p), text_of(h), [text_of(n) for n in names]) for p, h, names in found]


def search_from_python(retriever, request, comparator):
    asked = api.ReferenceRequest(
        EntityText=text_of(request["EntityText"]),
        Types=request["Types"],
        Products=[text_of(product) for product in request["Products"]],
        EntityCaseSensitivity=request["EntityCaseSensitivity"],
        EntityPrecision=request["EntityPrecision"],
        Comparator=for_python(comparator),
    )
    results = getattr(api, retriever)(ReferenceRequest=asked).getReferenceData()
    return [
        (
            result.HeaderInfo.ShortName,
            result.RefItem.Href,
            [entity.Name for entity in result.RefItem.RefEntities],
        )
        for result in results
    ]


@pytest.mark.parametrize("name", ALL)
def test_every_comparator_that_can_be_imported_can_be_set(counts, name):
    comparator = getattr(comparators, name)()
    assert api.ReferenceRequest(Comparator=comparator).Comparator is comparator
    compound = comparators.CompoundReferenceComparator(Comparators=[comparator])
    assert compound.Comparators == [comparator]


@pytest.mark.parametrize("name", ALL)
def test_orders_as_natively(native, counts, name):
    chance = random.Random(name)
    compared = 0
    reordered = 0
    for seed in range(6):
        native.use_documentation(seed + 1)
        for retriever in RETRIEVERS:
            for text in TEXTS:
                request = loosely(text)
                plain = search_natively(native, retriever, request, ("IndexOrderComparator", {}))
                comparator = described(name, chance, plain)
                expected = search_natively(native, retriever, request, comparator)
                assert search_from_python(retriever, request, comparator) == expected, (
                    f"seed {seed + 1}, {retriever}, {text!r}, {comparator}"
                )
                compared += len(expected) > 1
                reordered += expected != plain
    assert compared > 30
    assert reordered > 5 or name == "IndexOrderComparator"


@pytest.mark.parametrize("name", ALL)
def test_orders_the_shipped_documentation_as_natively(native, counts, name):
    """Alone, and inside a compound inside a compound."""
    native.use_default_documentation()
    chance = random.Random(name)
    for retriever in RETRIEVERS:
        for text in ("", "table", "a", "ref/table-class.html"):
            request = loosely(text)
            plain = search_natively(native, retriever, request, ("IndexOrderComparator", {}))
            alone = described(name, chance, plain)
            inner = ("CompoundReferenceComparator", {"Comparators": [alone]})
            nested = (
                "CompoundReferenceComparator",
                {"Comparators": [("DeprecatedOrderComparator", {}), inner]},
            )
            for comparator in (alone, nested):
                expected = search_natively(native, retriever, request, comparator)
                found = search_from_python(retriever, request, comparator)
                assert found == expected, f"{retriever}, {text!r}, {comparator}"


def test_requests_ask_as_natively(native, counts):
    chance = random.Random(1)
    found = 0
    for seed in range(300):
        if seed % 50 == 0:
            native.use_documentation(seed + 1)
        request = native.random_request(seed)
        retriever = chance.choice(RETRIEVERS)
        comparator = described(chance.choice(ALL), chance, [])
        expected = search_natively(native, retriever, request, comparator)
        assert search_from_python(retriever, request, comparator) == expected, (
            f"seed {seed}, {retriever}, {request}"
        )
        found += bool(expected)
    assert found > 30


def test_a_comparator_is_taken_as_it_is_when_it_is_set(native, counts):
    native.use_documentation(1)
    everything = {"EntityText": "a", "EntityCaseSensitivity": 1, "EntityPrecision": 1}

    def folders(request):
        results = api.AllTextDataRetriever(ReferenceRequest=request).getReferenceData()
        return [result.HeaderInfo.HelpFolder for result in results]

    def first_folder(request):
        return folders(request)[0]

    one, other = sorted(set(folders(api.ReferenceRequest(**everything))))[:2]
    comparator = comparators.ProductMatchComparator(ProductName=one)
    compound = comparators.CompoundReferenceComparator(Comparators=[comparator])
    request = api.ReferenceRequest(**everything, Comparator=compound)
    assert first_folder(request) == one
    comparator.ProductName = other
    assert first_folder(request) == one
    compound.Comparators = [comparator]
    assert first_folder(request) == one
    request.Comparator = compound
    assert first_folder(request) == other
