"""Every error that a script can make, by its identifier."""

import copy
import pickle
import traceback

import pytest

import veltra
from veltra.internal.reference.api import (
    AllTextDataRetriever,
    ClassEntityDataRetriever,
    EntityPrecision,
    EntityPurposeDataRetriever,
    PageNameDataRetriever,
    ReferenceData,
    ReferenceDataRetriever,
    ReferenceRequest,
)
from veltra.internal.reference.api.comparator import (
    CompoundReferenceComparator,
    EntityMatchComparator,
    EntityNameMatchComparator,
    EntityTypeMatchComparator,
    IndexOrderComparator,
    PageNameMatchComparator,
    ProductMatchComparator,
)
from veltra.internal.reference.property import FunctionType, RefEntityType, RefItem

pytestmark = pytest.mark.usefixtures("counts")

REQUIRE_CLASS = "VELTRA:class:RequireClass"
REQUIRE_ENUMERATION = "VELTRA:class:RequireEnumeration"
REQUIRE_NUMERIC = "VELTRA:class:RequireNumeric"
REQUIRE_SCALAR = "VELTRA:class:RequireScalar"
REQUIRE_STRING = "VELTRA:class:RequireString"
REQUIRE_STRINGS = "VELTRA:class:RequireStringArray"
EXPECTED_SCALAR = "VELTRA:referenceapi:ExpectedScalarComparator"
EXPECTED_CELLS = "VELTRA:referenceapi:ExpectedComparatorCellArray"
EXPECTED_REQUEST = "VELTRA:referenceapi:ExpectedRequest"
INVALID = "VELTRA:referenceapi:InvalidComparator"
FAILED = "VELTRA:class:OperationFailed"

RETRIEVERS = [
    ReferenceDataRetriever,
    AllTextDataRetriever,
    ClassEntityDataRetriever,
    EntityPurposeDataRetriever,
    PageNameDataRetriever,
]


def identifier_of(operation):
    with pytest.raises(veltra.Error) as caught:
        operation()
    return caught.value.identifier


def comparator():
    return IndexOrderComparator()


# How each kind of property refuses each kind of value.
TEXT = {
    "[]": ([], REQUIRE_STRING),
    "two": (["a", "b"], REQUIRE_STRING),
    "number": (1, REQUIRE_STRING),
    "double": (1.5, REQUIRE_STRING),
    "member": (RefEntityType.Class, REQUIRE_STRING),
    "object": (comparator, REQUIRE_STRING),
    "cell": ([["a"]], REQUIRE_STRING),
    "mixed": (["a", 1], REQUIRE_STRING),
    "null in a list": ([None], REQUIRE_STRING),
}
MEMBER = {
    "[]": ([], REQUIRE_SCALAR),
    "two": ([0, 1], REQUIRE_SCALAR),
    "two texts": (["a", "b"], REQUIRE_SCALAR),
    "text": ("Class", REQUIRE_NUMERIC),
    "double": (1.5, REQUIRE_NUMERIC),
    "negative": (-1, REQUIRE_NUMERIC),
    "too large": (2**32, REQUIRE_NUMERIC),
    "object": (comparator, REQUIRE_NUMERIC),
    "cell": ([[0]], REQUIRE_NUMERIC),
    "foreign": (FunctionType.Method, REQUIRE_CLASS),
    "two foreign": ([FunctionType.Method, FunctionType.Function], REQUIRE_CLASS),
}
TYPES = {
    "text": ("Class", REQUIRE_ENUMERATION),
    "texts": (["Class", "Method"], REQUIRE_ENUMERATION),
    "double": (1.5, REQUIRE_ENUMERATION),
    "negative": ([0, -1], REQUIRE_ENUMERATION),
    "object": (comparator, REQUIRE_ENUMERATION),
    "cell": ([[RefEntityType.Class]], REQUIRE_ENUMERATION),
    "foreign": (EntityPrecision.Exact_Match, REQUIRE_CLASS),
    "partly foreign": ([RefEntityType.Class, EntityPrecision.Exact_Match], REQUIRE_CLASS),
    "null in a list": ([RefEntityType.Class, None], REQUIRE_ENUMERATION),
}
TEXTS = {
    "number": (1, REQUIRE_STRINGS),
    "numbers": ([1, 2], REQUIRE_STRINGS),
    "double": (1.5, REQUIRE_STRINGS),
    "member": (RefEntityType.Class, REQUIRE_STRINGS),
    "object": (comparator, REQUIRE_STRINGS),
    "cell": ([["a"]], REQUIRE_STRINGS),
    "mixed": (["a", 1], REQUIRE_STRINGS),
    "null in a list": (["a", None], REQUIRE_STRINGS),
}
COMPARATOR = {
    "[]": ([], EXPECTED_SCALAR),
    "two": (lambda: [comparator(), comparator()], EXPECTED_SCALAR),
    "two kinds": (lambda: [comparator(), CompoundReferenceComparator()], EXPECTED_SCALAR),
    "number": (1, INVALID),
    "text": ("index", INVALID),
    "member": (RefEntityType.Class, INVALID),
    "cell": (lambda: [[comparator()]], INVALID),
    "foreign": (ReferenceRequest, INVALID),
}
COMPARATORS = {
    "object": (comparator, EXPECTED_CELLS),
    "text": ("index", EXPECTED_CELLS),
    "number": (1, EXPECTED_CELLS),
    "member": (RefEntityType.Class, EXPECTED_CELLS),
    "numbers": ([1, 2], INVALID),
    "texts": (["a", "b"], INVALID),
    "null": ([None], INVALID),
    "empty": ([[]], INVALID),
    "foreign": (lambda: [comparator(), ReferenceRequest()], INVALID),
    "cell in cell": (lambda: [[comparator(), [comparator()]]], INVALID),
}
REQUEST = {
    "[]": ([], EXPECTED_REQUEST),
    "text": ("fit", REQUIRE_CLASS),
    "number": (1, REQUIRE_CLASS),
    "foreign": (comparator, REQUIRE_CLASS),
    "cell": (lambda: [[ReferenceRequest()]], REQUIRE_CLASS),
    "mixed": (lambda: [ReferenceRequest(), comparator()], REQUIRE_CLASS),
}

PROPERTIES = [
    (ReferenceRequest, "EntityText", "fit", TEXT),
    (EntityMatchComparator, "EntityName", "fit", TEXT),
    (EntityNameMatchComparator, "EntityName", "fit", TEXT),
    (PageNameMatchComparator, "PageName", "fit", TEXT),
    (ProductMatchComparator, "ProductName", "fit", TEXT),
    (ReferenceRequest, "EntityCaseSensitivity", 1, MEMBER),
    (ReferenceRequest, "EntityPrecision", 1, MEMBER),
    (EntityMatchComparator, "RefEntityType", 1, MEMBER),
    (EntityMatchComparator, "EntityCaseSensitivity", 1, MEMBER),
    (EntityNameMatchComparator, "EntityCaseSensitivity", 1, MEMBER),
    (EntityTypeMatchComparator, "RefEntityType", 1, MEMBER),
    (PageNameMatchComparator, "EntityCaseSensitivity", 1, MEMBER),
    (ReferenceRequest, "Types", [1, 3], TYPES),
    (ReferenceRequest, "Products", ["a", "b"], TEXTS),
    (ReferenceRequest, "Comparator", comparator, COMPARATOR),
    (CompoundReferenceComparator, "Comparators", lambda: [comparator()], COMPARATORS),
    *((retriever, "ReferenceRequest", ReferenceRequest, REQUEST) for retriever in RETRIEVERS),
]


def test_every_property_is_in_the_table():
    from conftest import all_classes

    from veltra import _veltra

    settable = {
        (one, name)
        for one in all_classes()
        for name, _, _, is_settable in _veltra.describe_class(
            f"{one.__module__}.{one.__qualname__}"
        )["properties"]
        if is_settable
    }
    assert settable == {(made_of, name) for made_of, name, _, _ in PROPERTIES}


@pytest.mark.parametrize(
    ("made_of", "name", "good", "bad", "identifier"),
    [
        pytest.param(made_of, name, good, bad, identifier, id=f"{made_of.__name__}.{name}-{case}")
        for made_of, name, good, cases in PROPERTIES
        for case, (bad, identifier) in cases.items()
    ],
)
def test_a_refused_value_changes_nothing(made_of, name, good, bad, identifier):
    value = made_of()
    untouched = getattr(value, name)
    wrong = bad() if callable(bad) and not isinstance(bad, type) else bad
    wrong = wrong() if isinstance(wrong, type) else wrong
    assert identifier_of(lambda: setattr(value, name, wrong)) == identifier
    assert getattr(value, name) == untouched

    setattr(value, name, good() if callable(good) else good)
    before = getattr(value, name)
    assert identifier_of(lambda: setattr(value, name, wrong)) == identifier
    after = getattr(value, name)
    assert after == before
    if isinstance(before, veltra.Object):
        assert after is before


def test_an_error_says_what_was_wrong_and_what_would_be_right():
    with pytest.raises(veltra.Error) as caught:
        ReferenceRequest(Comparator=ReferenceRequest())
    assert caught.value.identifier == INVALID
    assert caught.value.arguments == ("veltra.internal.reference.api.ReferenceRequest",)
    assert str(caught.value) == (
        "A value of the class veltra.internal.reference.api.ReferenceRequest is no comparator; "
        "objects of the classes of the package veltra.internal.reference.api.comparator are."
    )


def test_an_error_can_be_pickled_and_copied():
    with pytest.raises(veltra.Error) as caught:
        ReferenceRequest().EntityPrecision = [0, 1]
    for other in (pickle.loads(pickle.dumps(caught.value)), copy.copy(caught.value)):
        assert type(other) is veltra.Error
        assert other.identifier == REQUIRE_SCALAR
        assert str(other) == str(caught.value)


def test_a_traceback_shows_nothing_of_the_extension():
    for wrong in (
        lambda: setattr(ReferenceRequest(), "EntityPrecision", "x"),
        lambda: ReferenceData(),
        lambda: ReferenceRequest("fit"),
        lambda: ReferenceRequest(Txt="fit"),
        lambda: ReferenceRequest().Comparator(),
        lambda: ReferenceDataRetriever().getReferenceData(1),
        lambda: RefItem.Href.fget(1),
    ):
        with pytest.raises(Exception) as caught:
            wrong()
        text = "".join(traceback.format_exception(caught.value))
        for noise in ("pybind", "C++", "std::", "0x", "HostObject", "incompatible function"):
            assert noise not in text, text


def test_an_unknown_property_names_those_there_are():
    request = ReferenceRequest()
    for operation in (
        lambda: request.Text,
        lambda: setattr(request, "Text", "a"),
        lambda: ReferenceRequest(Text="a"),
    ):
        with pytest.raises(veltra.PropertyError) as caught:
            operation()
        assert isinstance(caught.value, AttributeError)
        assert caught.value.identifier == "VELTRA:class:NoSuchProperty"
        assert "EntityText" in str(caught.value)
    assert not hasattr(request, "Text")
    assert getattr(request, "Text", 7) == 7


def test_a_property_cannot_be_deleted():
    with pytest.raises(AttributeError):
        del ReferenceRequest().EntityText


def test_results_cannot_be_made_or_changed():
    assert identifier_of(ReferenceData) == "VELTRA:class:NoConstructor"
    assert identifier_of(RefItem) == "VELTRA:class:NoConstructor"
    request = ReferenceRequest(EntityText="table")
    result = ReferenceDataRetriever(ReferenceRequest=request).getReferenceData()[0]
    with pytest.raises(veltra.PropertyError) as caught:
        result.RefItem.Purpose = "mine"
    assert caught.value.identifier == "VELTRA:class:ReadOnlyProperty"
    assert caught.value.arguments == ("veltra.internal.reference.property.RefItem", "Purpose")


def test_properties_are_given_by_name():
    with pytest.raises(TypeError, match=r"ReferenceRequest takes its properties by name"):
        ReferenceRequest("fit")


def test_objects_are_neither_copied_nor_pickled():
    for operation in (copy.copy, copy.deepcopy, pickle.dumps):
        with pytest.raises(TypeError, match="can be neither copied nor pickled"):
            operation(ReferenceRequest())


def test_members_are_pickled():
    for member in (EntityPrecision.Ignore_Package, EntityPrecision(7), RefEntityType.Class):
        other = pickle.loads(pickle.dumps(member))
        assert (other, type(other)) == (member, type(member))


def test_a_property_or_method_of_another_class_is_not_there():
    for operation, identifier in (
        (lambda: ReferenceRequest.EntityText.fget(IndexOrderComparator()), "NoSuchProperty"),
        (lambda: ReferenceRequest.EntityText.fset(IndexOrderComparator(), "a"), "NoSuchProperty"),
        (lambda: ReferenceDataRetriever.getReferenceData(ReferenceRequest()), "NoSuchMethod"),
    ):
        assert identifier_of(operation) == f"VELTRA:class:{identifier}"


def test_what_only_looks_like_an_object_or_member_is_refused():
    class Pretender:
        _handle = property(lambda self: IndexOrderComparator()._handle)

    class Number(int):
        _host_class = 5

    request = ReferenceRequest()
    assert identifier_of(lambda: setattr(request, "Comparator", Pretender())) == (
        "VELTRA:class:UnsupportedValue"
    )
    request.EntityPrecision = Number(1)
    assert request.EntityPrecision is EntityPrecision.Ignore_Package
    with pytest.raises(TypeError):
        type(request._handle)()
    with pytest.raises(TypeError):
        type(request._handle).__new__(type(request._handle))


def test_what_is_not_known_by_its_places_is_no_list():
    import array
    import collections
    from unittest import mock

    request = ReferenceRequest(Types=[1], Products=["a"])
    for value in (
        collections.UserDict(a=1),
        {"a"},
        (text for text in "ab"),
        memoryview(b"ab"),
        array.array("i", [1, 2]),
        mock.MagicMock(),
        range,
    ):
        for name in ("Types", "Products", "Comparator"):
            assert identifier_of(lambda: setattr(request, name, value)) == (
                "VELTRA:class:UnsupportedValue"
            )
    assert (request.Types, request.Products) == ([RefEntityType.Class], ["a"])
    request.Types = range(2)
    request.Products = collections.UserList(["b"])
    assert (request.Types, request.Products) == ([0, 1], ["b"])


def test_a_name_that_cannot_be_written_is_no_property_either():
    assert not hasattr(ReferenceRequest(), "\ud800")
    with pytest.raises(veltra.PropertyError, match=r"\\ud800"):
        ReferenceRequest(**{"\ud800": 1})
    import veltra.internal.reference.api as module

    assert not hasattr(module, "\ud800")


def test_an_object_is_of_one_class_of_the_host():
    with pytest.raises(TypeError, match="several of the host's classes"):

        class Both(ReferenceRequest, ProductMatchComparator):
            pass

    with pytest.raises(TypeError, match="use one of the host's classes"):
        veltra.Object()


def test_a_derived_class_keeps_its_own_errors():
    class Search(ReferenceRequest):
        __slots__ = ("note",)

        @property
        def words(self):
            return self.EntityText.missing

    search = Search(EntityText="a b")
    search.note = "mine"
    assert search.note == "mine"
    with pytest.raises(AttributeError, match="'str' object has no attribute 'missing'"):
        search.words
    with pytest.raises(veltra.PropertyError):
        search.other = 1

    class Loose(ReferenceRequest):
        pass

    with pytest.raises(veltra.PropertyError):
        Loose(EntityTxt="fit")


@pytest.mark.parametrize("retriever", RETRIEVERS)
def test_a_failing_search_is_an_error_too(native, retriever):
    native.use_failing_documentation("logic")
    searcher = retriever(ReferenceRequest=ReferenceRequest(EntityText="fit"))
    with pytest.raises(veltra.Error) as caught:
        searcher.getReferenceData()
    assert caught.value.identifier == FAILED
    assert str(caught.value) == "The lookup files are \\xff broken."


def test_want_of_memory_is_pythons_own_error(native):
    native.use_failing_documentation("memory")
    with pytest.raises(MemoryError):
        ReferenceDataRetriever(ReferenceRequest=ReferenceRequest(EntityText="a")).getReferenceData()
