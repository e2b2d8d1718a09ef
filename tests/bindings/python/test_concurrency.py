"""Several Python threads at once."""

import os
import subprocess
import sys
import threading

import pytest

from veltra.internal.reference.api import (
    AllTextDataRetriever,
    ClassEntityDataRetriever,
    EntityPurposeDataRetriever,
    PageNameDataRetriever,
    ReferenceDataRetriever,
    ReferenceRequest,
)
from veltra.internal.reference.api.comparator import (
    CompoundReferenceComparator,
    EntityNameMatchComparator,
    PreferredOrderComparator,
)


def together(*work):
    """Runs each piece of work in a thread of its own, all at once; what they raise is raised."""
    raised = []
    start = threading.Barrier(len(work))

    def run(piece):
        start.wait()
        try:
            piece()
        except BaseException as error:
            raised.append(error)

    threads = [threading.Thread(target=run, args=(piece,)) for piece in work]
    for thread in threads:
        thread.start()
    for thread in threads:
        thread.join()
    if raised:
        raise raised[0]


def found_by(retriever):
    return [
        (result.HeaderInfo.ShortName, result.RefItem.Href)
        for result in retriever.getReferenceData()
    ]


def everything(retriever):
    chain = [EntityNameMatchComparator(EntityName="filter"), PreferredOrderComparator()]
    return retriever(
        ReferenceRequest=ReferenceRequest(
            EntityCaseSensitivity=1,
            EntityPrecision=1,
            Comparator=CompoundReferenceComparator(Comparators=chain),
        )
    )


def test_separate_retrievers_search_at_once(counts):
    kinds = [
        ReferenceDataRetriever,
        AllTextDataRetriever,
        ClassEntityDataRetriever,
        EntityPurposeDataRetriever,
        PageNameDataRetriever,
    ]
    expected = {kind: found_by(everything(kind)) for kind in kinds}
    assert expected[AllTextDataRetriever]

    def work(kind):
        def run():
            for _ in range(20):
                assert found_by(everything(kind)) == expected[kind]

        return run

    together(*(work(kind) for kind in kinds))


def test_one_retriever_searched_and_set_by_all_takes_them_in_turn(counts):
    shared = everything(AllTextDataRetriever)
    requests = [ReferenceRequest(EntityText=text) for text in ("table", "filter")]
    allowed = []
    for request in requests:
        shared.ReferenceRequest = request
        allowed.append(found_by(shared))
    assert allowed[0] != allowed[1]

    def search():
        for _ in range(100):
            assert found_by(shared) in allowed

    def change():
        for i in range(300):
            shared.ReferenceRequest = requests[i % 2]

    def read():
        for _ in range(300):
            assert shared.ReferenceRequest.EntityText in ("table", "filter")

    together(search, search, change, read)


def test_one_request_and_comparator_set_and_read_by_all(counts):
    request = ReferenceRequest()
    chains = [[PreferredOrderComparator()] * count for count in range(4)]
    compound = CompoundReferenceComparator(Comparators=chains[0])

    def change():
        for i in range(500):
            request.Products = ["a", "b"][: i % 3]
            request.EntityText = "x" * (i % 50)
            request.Comparator = compound
            compound.Comparators = chains[i % 4]

    def read():
        for _ in range(500):
            assert request.Products in ([], ["a"], ["a", "b"])
            assert set(request.EntityText) <= {"x"}
            assert compound.Comparators in chains
            repr(request)

    together(change, change, read, read)


def test_a_search_lets_other_threads_run(native):
    native.use_waiting_documentation()  # waits until it is told to go on
    waiter = threading.Thread(target=everything(AllTextDataRetriever).getReferenceData)
    waiter.start()
    assert native.let_go_on(), "nothing waited, or the search held the interpreter lock"
    waiter.join()


DAEMONS = """
import threading
from veltra.internal.reference.api import *
from veltra.internal.reference.api.comparator import *

started = threading.Semaphore(0)
shared = AllTextDataRetriever(ReferenceRequest=ReferenceRequest())

def search(retriever):
    started.release()
    while True:
        results = retriever.getReferenceData()
        [result.RefItem.RefEntities for result in results]
        retriever.ReferenceRequest = ReferenceRequest(
            Comparator=CompoundReferenceComparator(Comparators=[IndexOrderComparator()]))

for retriever in (shared, shared, AllTextDataRetriever(ReferenceRequest=ReferenceRequest())):
    threading.Thread(target=search, args=(retriever,), daemon=True).start()
for _ in range(3):
    started.acquire()
"""


def test_an_interpreter_may_end_while_daemons_search():
    for _ in range(8):
        done = subprocess.run(
            [sys.executable, "-c", DAEMONS], capture_output=True, text=True, timeout=120
        )
        assert (done.returncode, done.stdout, done.stderr) == (0, "", "")


JOINED_AT_EXIT = """
import atexit, threading
stop = threading.Event()

@atexit.register
def finish():
    stop.set()
    thread.join()

from veltra.internal.reference.api import *

def search():
    while not stop.is_set():
        AllTextDataRetriever().getReferenceData()

thread = threading.Thread(target=search, daemon=True)
thread.start()
"""

FORKED = """
import os, sys, threading
from veltra.internal.reference.api import *

def search():
    while True:
        AllTextDataRetriever().getReferenceData()

threading.Thread(target=search, daemon=True).start()
for _ in range(5):
    child = os.fork()
    if child == 0:
        sys.exit(0)
    assert os.waitpid(child, 0)[1] == 0
"""


# If the searching thread has locked the sanitizer's allocator when the process forks, it stays
# locked in the child.
is_sanitized = "LD_PRELOAD" in os.environ
PROGRAMS = [JOINED_AT_EXIT] if is_sanitized else [JOINED_AT_EXIT, FORKED]


@pytest.mark.parametrize("program", PROGRAMS)
def test_an_interpreter_ends_whatever_searches_beside_it(program):
    for _ in range(3):
        done = subprocess.run(
            [sys.executable, "-c", program], capture_output=True, text=True, timeout=120
        )
        assert (done.returncode, done.stdout, done.stderr) == (0, "", "")
