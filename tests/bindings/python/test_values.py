"""Values on their way through properties and back."""

import importlib

import pytest

import veltra
from veltra import _veltra
from veltra.internal.reference.api import (
    EntityCaseSensitivity,
    EntityPrecision,
    ReferenceDataRetriever,
    ReferenceRequest,
)
from veltra.internal.reference.api.comparator import (
    CompoundReferenceComparator,
    DeprecatedOrderComparator,
    EntityMatchComparator,
    EntityNameMatchComparator,
    EntityTypeMatchComparator,
    IndexOrderComparator,
    PageNameMatchComparator,
    ProductMatchComparator,
)
from veltra.internal.reference.property import RefEntityType

pytestmark = pytest.mark.usefixtures("counts")

TEXTS = ["", "fit", "pkg.Class.method", "\u0130\u00e4\u6f22", "\U0001f600", "\ud800", "a\0b", "x" * 5000]
CASES = [EntityCaseSensitivity.Insensitive, EntityCaseSensitivity.Sensitive]


@pytest.mark.parametrize("text", TEXTS)
@pytest.mark.parametrize(
    ("made_of", "name"),
    [
        (ReferenceRequest, "EntityText"),
        (EntityMatchComparator, "EntityName"),
        (EntityNameMatchComparator, "EntityName"),
        (PageNameMatchComparator, "PageName"),
        (ProductMatchComparator, "ProductName"),
    ],
)
def test_texts_pass_both_ways_as_they_are(made_of, name, text):
    value = made_of()
    assert getattr(value, name) == ""
    setattr(value, name, text)
    assert getattr(value, name) == text
    setattr(value, name, None)
    assert getattr(value, name) == text
    assert getattr(made_of(**{name: text}), name) == text


@pytest.mark.parametrize(
    ("made_of", "name", "first", "members"),
    [
        (ReferenceRequest, "EntityCaseSensitivity", EntityCaseSensitivity.Sensitive, CASES),
        (EntityMatchComparator, "EntityCaseSensitivity", EntityCaseSensitivity.Sensitive, CASES),
        (EntityNameMatchComparator, "EntityCaseSensitivity", EntityCaseSensitivity.Sensitive, CASES),
        (PageNameMatchComparator, "EntityCaseSensitivity", EntityCaseSensitivity.Sensitive, CASES),
        (ReferenceRequest, "EntityPrecision", EntityPrecision.Exact_Match, list(EntityPrecision)),
        (EntityMatchComparator, "RefEntityType", RefEntityType.Unknown, list(RefEntityType)),
        (EntityTypeMatchComparator, "RefEntityType", RefEntityType.Unknown, list(RefEntityType)),
    ],
)
def test_members_pass_both_ways(made_of, name, first, members):
    value = made_of()
    assert getattr(value, name) is first
    for member in members:
        setattr(value, name, member)
        assert getattr(value, name) is member
        setattr(value, name, None)
        assert getattr(value, name) is member
        assert getattr(made_of(**{name: int(member)}), name) is member
        assert getattr(made_of(**{name: [member]}), name) is member


@pytest.mark.parametrize("number", [2, 99, 2**31, 2**32 - 1])
def test_a_number_without_a_name_is_a_member_too(number):
    request = ReferenceRequest(EntityPrecision=number)
    assert request.EntityPrecision == number
    assert isinstance(request.EntityPrecision, EntityPrecision)
    assert repr(request.EntityPrecision) == f"<EntityPrecision.{number}: {number}>"
    assert EntityPrecision(number) == number
    request.Types = [number, RefEntityType.Class]
    assert request.Types == [RefEntityType(number), RefEntityType.Class]


def test_numbers_that_no_member_can_have_are_refused():
    for number in (-1, 2**32):
        with pytest.raises(ValueError, match=str(number)):
            EntityPrecision(number)


def test_types_are_null_until_they_are_set():
    request = ReferenceRequest()
    assert request.Types is None
    request.Types = [RefEntityType.Method, RefEntityType.Class]
    assert request.Types == [RefEntityType.Method, RefEntityType.Class]
    assert all(isinstance(one, RefEntityType) for one in request.Types)
    request.Types = RefEntityType.Function
    assert request.Types == [RefEntityType.Function]
    request.Types = (1, 3)
    assert request.Types == [RefEntityType.Class, RefEntityType.Method]


@pytest.mark.parametrize("nothing", [None, [], ()])
def test_types_are_cleared_by_null_and_by_nothing(nothing):
    request = ReferenceRequest(Types=[RefEntityType.Class])
    request.Types = nothing
    assert request.Types == []


def test_products_are_a_list_of_texts():
    request = ReferenceRequest()
    assert request.Products == []
    request.Products = ["veltra", "brisk"]
    assert request.Products == ["veltra", "brisk"]
    request.Products = None
    assert request.Products == ["veltra", "brisk"]
    request.Products = ("\ud800", "")
    assert request.Products == ["\ud800", ""]
    request.Products = "veltra"
    assert request.Products == ["veltra"]
    request.Products = []
    assert request.Products == []


def test_a_list_that_was_read_is_the_readers_own():
    request = ReferenceRequest(Products=["veltra"])
    request.Products.append("brisk")
    assert request.Products == ["veltra"]


def test_a_comparator_is_the_very_object_that_was_set():
    request = ReferenceRequest()
    default = request.Comparator
    assert isinstance(default, IndexOrderComparator)
    assert request.Comparator is default
    comparator = ProductMatchComparator(ProductName="brisk")
    request.Comparator = comparator
    assert request.Comparator is comparator
    request.Comparator = None
    assert request.Comparator is comparator
    request.Comparator = [default]
    assert request.Comparator is default


def test_an_object_that_python_let_go_of_comes_back_with_its_properties():
    request = ReferenceRequest(Comparator=ProductMatchComparator(ProductName="brisk"))
    assert request.Comparator.ProductName == "brisk"
    assert request.Comparator == request.Comparator


def test_equality_is_that_of_the_host_object():
    first, second = IndexOrderComparator(), IndexOrderComparator()
    assert first == first
    assert first != second
    assert len({first, second, first}) == 2
    assert first != "text"


def test_a_compound_shows_the_list_that_was_set():
    compound = CompoundReferenceComparator()
    assert compound.Comparators is None
    chain = [DeprecatedOrderComparator(), ProductMatchComparator(ProductName="a")]
    compound.Comparators = chain
    assert compound.Comparators == chain
    compound.Comparators = None
    assert compound.Comparators == chain
    inner = CompoundReferenceComparator(Comparators=chain)
    compound.Comparators = (inner, chain[0])
    assert compound.Comparators[0] is inner
    assert compound.Comparators[0].Comparators == chain
    compound.Comparators = []
    assert compound.Comparators == []


def test_a_cell_may_hold_several_comparators_of_a_kind():
    pair = [ProductMatchComparator(ProductName="a"), ProductMatchComparator(ProductName="b")]
    compound = CompoundReferenceComparator(Comparators=[pair])
    assert compound.Comparators == [pair]


def test_a_retriever_shows_a_request_of_its_own():
    request = ReferenceRequest(EntityText="fit", Products=["veltra"], EntityPrecision=1)
    retriever = ReferenceDataRetriever(ReferenceRequest=request)
    shown = retriever.ReferenceRequest
    assert shown is not request
    assert shown != request
    assert retriever.ReferenceRequest is shown
    assert (shown.EntityText, shown.Products) == ("fit", ["veltra"])
    assert shown.EntityPrecision is EntityPrecision.Ignore_Package
    shown.EntityText = "other"
    request.EntityText = "third"
    retriever.ReferenceRequest = None
    assert retriever.ReferenceRequest is shown
    retriever.ReferenceRequest = request
    assert retriever.ReferenceRequest.EntityText == "third"


def test_objects_say_what_they_are():
    request = ReferenceRequest(EntityText="fit", EntityPrecision=1)
    assert repr(request) == (
        "ReferenceRequest(EntityText='fit', Types=None, Products=[], "
        "EntityCaseSensitivity=<EntityCaseSensitivity.Sensitive: 0>, "
        "EntityPrecision=<EntityPrecision.Ignore_Package: 1>, Comparator=IndexOrderComparator())"
    )
    assert repr(ProductMatchComparator(ProductName="x")) == "ProductMatchComparator(ProductName='x')"


def test_a_script_may_derive_classes_with_attributes_of_their_own():
    class Search(ReferenceRequest):
        def __init__(self, text):
            super().__init__(EntityText=text)
            self.note = "mine"

    search = Search("fit")
    assert (search.EntityText, search.note) == ("fit", "mine")
    retriever = ReferenceDataRetriever(ReferenceRequest=search)
    assert retriever.ReferenceRequest.EntityText == "fit"


def test_an_object_that_has_elements_is_an_object():
    class Chain(CompoundReferenceComparator):
        def __len__(self):
            return len(self.Comparators)

        def __getitem__(self, place):
            return self.Comparators[place]

    chain = Chain(Comparators=[ProductMatchComparator(ProductName="a")])
    assert ReferenceRequest(Comparator=chain).Comparator is chain


def test_making_an_object_twice_sets_its_properties_again():
    comparator = ProductMatchComparator(ProductName="a")
    request = ReferenceRequest(Comparator=comparator)
    comparator.__init__(ProductName="b")
    assert request.Comparator is comparator
    assert request.Comparator.ProductName == "b"
    bare = ReferenceRequest.__new__(ReferenceRequest)
    assert (bare.EntityText, bare == ReferenceRequest()) == ("", False)


def test_a_derived_class_may_set_properties_before_its_base_is_made():
    class Search(ReferenceRequest):
        def __init__(self, text):
            self.EntityText = text
            super().__init__(Products=["veltra"])

    assert (Search("fit").EntityText, Search("fit").Products) == ("fit", ["veltra"])


def test_a_compound_in_itself_says_what_it_is():
    compound = CompoundReferenceComparator()
    compound.Comparators = [compound, IndexOrderComparator()]
    assert repr(compound).startswith("CompoundReferenceComparator(Comparators=[Compound")
    compound.Comparators = []
    for _ in range(500):
        compound = CompoundReferenceComparator(Comparators=[compound])
    assert repr(ReferenceRequest(Comparator=compound)).count("(") < 10


class TestShapesThatTheLibraryDoesNotUse:
    """Seen through a class that takes everything."""

    @pytest.fixture
    def Late(self, native):
        if _veltra.describe_class("veltra.internal.test.late.Late") is None:
            native.register_late()
        return importlib.import_module("veltra.internal.test.late").Late

    def test_arrays_of_objects(self, Late):
        late = Late()
        pair = [IndexOrderComparator(), IndexOrderComparator()]
        late.Objects = pair
        assert late.Objects == pair
        late.Objects = pair[0]
        assert late.Objects == [pair[0]]
        late.Objects = []
        assert late.Objects == []
        late.Objects = None
        assert late.Objects is None

    @pytest.mark.parametrize(
        "value",
        [
            [],
            ["a", "b", ["c", "d"], []],
            [1, 2**32 - 1, 2.5, -1.0, None],
            [[1, 2], [0.5, 1.5], [None, 1]],
            [RefEntityType.Class, [RefEntityType.Class, RefEntityType.Method]],
            [[RefEntityType.Class, EntityPrecision.Exact_Match]],
            [[["a"], ["b", ["c", 1]]]],
        ],
    )
    def test_cells_of_anything(self, Late, value):
        late = Late()
        late.Cells = value

        def seen(one):
            # A list of one is one value: arrays know their count, not whether they are lists.
            if isinstance(one, list):
                items = [seen(item) for item in one]
                return items[0] if len(items) == 1 and not isinstance(items[0], list) else items
            return one

        assert late.Cells == [seen(item) for item in value]

    @pytest.mark.parametrize("value", ["a", 1, 2.5, RefEntityType.Class, None])
    def test_one_of_anything(self, Late, value):
        late = Late()
        late.One = value
        assert late.One == value
        assert type(late.One) is type(value)

    def test_a_number_too_large_for_a_whole_one_becomes_a_double(self, Late):
        late = Late()
        late.One = 2**40
        assert late.One == float(2**40)
        late.One = 10**400
        assert late.One == float("inf")

    @pytest.mark.parametrize("value", [{}, {"a": 1}, b"a", bytearray(b"a"), object(), True, 1j, {1}])
    def test_what_has_no_host_form_is_refused(self, Late, value):
        late = Late()
        late.One = "before"
        for given in (value, [value], ["a", [value]]):
            with pytest.raises(veltra.Error) as caught:
                late.One = given
            assert caught.value.identifier == "VELTRA:class:UnsupportedValue"
            assert caught.value.arguments == (type(value).__name__,)
        assert late.One == "before"

    def test_a_list_without_end_is_refused(self, Late):
        late = Late()
        endless = ["a"]
        endless.append(endless)
        with pytest.raises(RecursionError):
            late.Cells = endless
