"""The classes of the reference library, for scripts.

Every class that is registered with the host's object system can be imported from its package:

    from veltra.internal.reference.api import ReferenceDataRetriever, ReferenceRequest

    retriever = ReferenceDataRetriever(ReferenceRequest=ReferenceRequest(EntityText="table"))
    for result in retriever.getReferenceData():
        print(result.RefItem.Purpose)

ask("read csv") finds what a person means who types loosely.

The documentation that is searched is chosen by the environment variable VELTRA_DOC_ROOT; without
it, it is what is installed with the library.

Texts are str, arrays of texts and of enumeration members and cell arrays are lists, null is None.
An object stands for an object of the host; two that compare equal are the same one. Any thread may
use an object, one at a time; a search lets other threads run.
"""

from . import _classes, _importer, _veltra
from ._ask import Answer, Hit, QuestionError, ask
from ._errors import Error, PropertyError

Object = _classes.Object
Enumeration = _classes.Enumeration

__all__ = [
    "Answer",
    "Enumeration",
    "Error",
    "Hit",
    "Object",
    "PropertyError",
    "QuestionError",
    "ask",
    "live_counts",
]


def live_counts() -> tuple[int, int]:
    """How many host values and how many host objects there are: for finding leaks."""
    arrays, objects = _veltra.live_counts()
    return arrays, objects


_veltra.install(_classes.object_of, _classes.member_of, Object, Enumeration, Error)
_importer.install()
