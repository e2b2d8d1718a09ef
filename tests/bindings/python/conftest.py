"""What the tests of the package share."""

import os
import sys

import pytest

sys.path.insert(0, os.environ["VELTRA_TEST_MODULES"])
os.environ.pop("VELTRA_DOC_ROOT", None)  # the documentation that ships with the library

import veltra  # noqa: E402


@pytest.fixture
def counts():
    """Fails a test after which there are more host values or objects than before."""
    import gc

    gc.collect()
    before = veltra.live_counts()
    yield
    gc.collect()
    assert veltra.live_counts() == before, "(arrays, objects)"


@pytest.fixture
def native():
    """The native side of the comparison; the documentation is the shipped one again afterwards."""
    import veltra_native

    yield veltra_native
    veltra_native.use_default_documentation()


def all_classes():
    """Every class that the library registers, made by its package."""
    import importlib

    from veltra import _veltra

    for package in sorted(_veltra.package_names()):
        if package.startswith("veltra.internal.reference"):
            module = importlib.import_module(package)
            yield from (getattr(module, name) for name in _veltra.class_names(package))
