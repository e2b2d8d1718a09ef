"""Nothing that Python lets go of stays behind."""

import gc
import itertools
import subprocess
import sys
import weakref

import pytest

import veltra
from veltra.internal.reference.api import (
    AllTextDataRetriever,
    EntityPrecision,
    ReferenceDataRetriever,
    ReferenceRequest,
)
from veltra.internal.reference.api.comparator import (
    CompoundReferenceComparator,
    EntityMatchComparator,
    IndexOrderComparator,
    ProductMatchComparator,
)
from veltra.internal.reference.property import RefEntityType


def round_trip(i):
    """Makes, sets, reads, searches, fails and lets go."""
    match = EntityMatchComparator(EntityName=f"name{i}", RefEntityType=i % 30)
    chain = CompoundReferenceComparator(Comparators=[match, [match, match]])
    chain.Comparators = [chain.Comparators[0], CompoundReferenceComparator(Comparators=[match])]
    request = ReferenceRequest(
        EntityText="table",
        Types=[RefEntityType.Class, i],
        Products=["veltra", str(i)],
        EntityPrecision=EntityPrecision.Ignore_Package,
        Comparator=chain,
    )
    for name, value in (("EntityPrecision", [0, 1]), ("Comparator", request), ("Types", "a")):
        try:
            setattr(request, name, value)
        except veltra.Error:
            pass
    retriever = ReferenceDataRetriever(ReferenceRequest=request)
    for result in retriever.getReferenceData():
        repr(result.RefItem)
    return retriever.ReferenceRequest.Comparator.Comparators[1].Comparators[0].EntityName


def test_thousands_of_round_trips_leave_nothing(counts):
    round_trip(0)
    gc.collect()
    before = veltra.live_counts()
    for i in range(3000):
        assert round_trip(i) == f"name{i}"
    gc.collect()
    assert veltra.live_counts() == before


def test_objects_may_go_in_any_order(counts):
    for order in itertools.permutations(range(4)):
        comparator = ProductMatchComparator(ProductName="veltra")
        compound = CompoundReferenceComparator(Comparators=[comparator])
        request = ReferenceRequest(Comparator=compound)
        retriever = ReferenceDataRetriever(ReferenceRequest=request)
        kept = [comparator, compound, request, retriever]
        del comparator, compound, request, retriever
        for place in order:
            kept[place] = None
        assert kept == [None] * 4


def test_results_outlive_what_found_them(counts):
    request = ReferenceRequest(EntityText="table")
    results = ReferenceDataRetriever(ReferenceRequest=request).getReferenceData()
    entities = results[0].RefItem.RefEntities
    del results
    gc.collect()
    assert [entity.Name for entity in entities] == ["table"]


def test_the_counts_are_those_of_what_is_alive():
    arrays, objects = veltra.live_counts()
    kept = [IndexOrderComparator() for _ in range(5)]
    assert veltra.live_counts()[1] == objects + 5
    request = ReferenceRequest()
    assert request.Products == []
    assert veltra.live_counts()[0] == arrays + 1
    del kept, request
    assert veltra.live_counts() == (arrays, objects)


def test_weak_references_see_the_python_object_go():
    comparator = IndexOrderComparator()
    request = ReferenceRequest(Comparator=comparator)
    seen = weakref.ref(comparator)
    del comparator
    assert seen() is None
    assert isinstance(request.Comparator, IndexOrderComparator)


@pytest.mark.parametrize(
    "kept",
    [
        "kept = results",
        "kept = [retriever, results, request]",
        "import builtins; builtins.kept = (request, results)",
        "kept = results[0].RefItem; kept_too = kept.RefEntities",
        "class Cycle: pass\ncycle = Cycle(); cycle.kept = results; cycle.self = cycle",
        "import atexit; atexit.register(lambda: retriever.getReferenceData())",
        "import atexit; atexit.register(lambda: [setattr(request, 'Products', ['a']), repr(request)])",
        "class Last:\n    def __del__(self):\n        retriever.getReferenceData(); repr(request)\n"
        "last = Last()",
        "import sys; sys.modules['veltra']._classes.kept = results; sys.exit(0)",
    ],
)
def test_objects_may_outlive_the_interpreters_end(kept):
    code = (
        "from veltra.internal.reference.api import *\n"
        "request = ReferenceRequest(EntityText='table')\n"
        "retriever = AllTextDataRetriever(ReferenceRequest=request)\n"
        "results = retriever.getReferenceData()\n"
        "assert results\n" + kept
    )
    done = subprocess.run([sys.executable, "-c", code], capture_output=True, text=True)
    assert (done.returncode, done.stdout, done.stderr) == (0, "", "")


def test_a_search_by_all_texts_leaves_nothing(counts):
    retriever = AllTextDataRetriever(ReferenceRequest=ReferenceRequest())
    for _ in range(20):
        for result in retriever.getReferenceData():
            result.RefItem.Examples
