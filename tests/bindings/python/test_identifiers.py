"""Every identifier of the message catalogue is that of an error which something raises."""

import pytest

import veltra
from veltra import _veltra
from veltra.internal.reference.api import (
    EntityPrecision,
    ReferenceData,
    ReferenceDataRetriever,
    ReferenceRequest,
)
from veltra.internal.reference.api.comparator import CompoundReferenceComparator
from veltra.internal.reference.property import RefItem


def fail_in_a_search(native):
    native.use_failing_documentation("logic")
    ReferenceDataRetriever().getReferenceData()


def give_an_argument_to_a_class_that_takes_none(native):
    native.register_late()
    from veltra.internal.test.late import Late

    Late().giveArgument()


def setting(property_name, value):
    return lambda native: setattr(ReferenceRequest(), property_name, value)


RAISES = {
    "VELTRA:class:NoConstructor": lambda native: ReferenceData(),
    "VELTRA:class:NoSuchMethod": lambda native: ReferenceRequest()._handle.call("search"),
    "VELTRA:class:NoSuchProperty": lambda native: ReferenceRequest().Text,
    "VELTRA:class:OperationFailed": fail_in_a_search,
    "VELTRA:class:ReadOnlyProperty": lambda native: RefItem.Href.fset(None, "a.html"),
    "VELTRA:class:RequireClass": setting("EntityCaseSensitivity", EntityPrecision.Exact_Match),
    "VELTRA:class:RequireEnumeration": setting("Types", "Class"),
    "VELTRA:class:RequireNumeric": setting("EntityPrecision", "Exact_Match"),
    "VELTRA:class:RequireScalar": setting("EntityPrecision", [0, 1]),
    "VELTRA:class:RequireString": setting("EntityText", 1),
    "VELTRA:class:RequireStringArray": setting("Products", [1]),
    "VELTRA:class:UndefinedClass": lambda native: _veltra.construct("veltra.internal.Nothing"),
    "VELTRA:class:UnsupportedValue": setting("Products", {"a"}),
    "VELTRA:class:WrongArgumentCount": give_an_argument_to_a_class_that_takes_none,
    "VELTRA:referenceapi:ExpectedComparatorCellArray": lambda native: (
        CompoundReferenceComparator(Comparators=1)
    ),
    "VELTRA:referenceapi:ExpectedRequest": lambda native: ReferenceDataRetriever(
        ReferenceRequest=[]
    ),
    "VELTRA:referenceapi:ExpectedScalarComparator": setting("Comparator", []),
    "VELTRA:referenceapi:InvalidComparator": setting("Comparator", 1),
}


def test_every_identifier_is_here(native):
    assert set(native.message_identifiers()) == set(RAISES)


@pytest.mark.parametrize("identifier", sorted(RAISES))
def test_is_raised_with_a_whole_message(native, identifier):
    with pytest.raises(veltra.Error) as caught:
        RAISES[identifier](native)
    assert caught.value.identifier == identifier
    message = str(caught.value)
    assert message and identifier not in message and "{" not in message
