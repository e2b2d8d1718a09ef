"""The registry's classes as Python modules."""

import importlib
import inspect
import pydoc
import re
import subprocess
import sys

import pytest
from conftest import all_classes

import veltra
from veltra import _veltra

API = "veltra.internal.reference.api"
COMPARATORS = set(_veltra.class_names(f"{API}.comparator"))


def test_every_class_is_importable_from_its_package():
    from veltra.internal.reference.api import ReferenceRequest
    from veltra.internal.reference.api.comparator import IndexOrderComparator
    from veltra.internal.reference.property import RefEntityType, RefItem

    assert ReferenceRequest.__module__ == API
    assert IndexOrderComparator.__name__ == "IndexOrderComparator"
    assert issubclass(RefItem, veltra.Object)
    assert issubclass(RefEntityType, veltra.Enumeration)


def test_a_star_import_brings_all_of_a_package():
    namespace = {}
    exec(f"from {API}.comparator import *", namespace)
    assert "IndexOrderComparator" in COMPARATORS
    assert COMPARATORS <= set(namespace)


def test_a_package_lists_its_classes_and_packages():
    module = importlib.import_module(API)
    assert {"ReferenceRequest", "AllTextDataRetriever", "comparator"} <= set(dir(module))
    assert set(importlib.import_module(f"{API}.comparator").__all__) == COMPARATORS


def test_a_class_is_one_object_however_it_is_reached():
    module = importlib.import_module(API)
    first = module.ReferenceRequest
    assert importlib.reload(module).ReferenceRequest is first
    assert type(first()) is first


def test_what_is_not_registered_cannot_be_imported():
    with pytest.raises(ImportError, match="NoSuchClass"):
        exec(f"from {API} import NoSuchClass")
    with pytest.raises(ModuleNotFoundError):
        importlib.import_module("veltra.internal.nothing")
    with pytest.raises(ModuleNotFoundError):
        importlib.import_module("veltra.internal.reference.api.ReferenceRequest")
    with pytest.raises(ModuleNotFoundError):
        importlib.import_module("veltra.nothing")


def test_a_class_that_is_registered_later_is_there(native):
    with pytest.raises(ModuleNotFoundError):
        importlib.import_module("veltra.internal.test.late")
    native.register_late()
    from veltra.internal.test.late import Late

    late = Late(Text="here")
    assert late.Text == "here"
    assert late.shout() == "here!"


def test_everything_is_documented():
    for one in all_classes():
        assert inspect.getdoc(one), one
        for name, member in vars(one).items():
            if isinstance(member, property):
                assert inspect.getdoc(member), f"{one.__name__}.{name}"
    from veltra.internal.reference.api import ReferenceDataRetriever

    assert "Searches" in inspect.getdoc(ReferenceDataRetriever.getReferenceData)


def test_help_says_how_an_object_is_made():
    from veltra.internal.reference.api.comparator import EntityMatchComparator

    text = pydoc.plain(pydoc.render_doc(EntityMatchComparator))
    assert "EntityMatchComparator(*, EntityName=..., RefEntityType=..., " in text
    assert "The whole qualified name to match." in text


def test_the_package_can_be_imported_without_being_asked_for_anything():
    code = "import veltra; print(veltra.live_counts())"
    done = subprocess.run([sys.executable, "-c", code], capture_output=True, text=True)
    assert (done.returncode, done.stdout, done.stderr) == (0, "(0, 0)\n", "")


def test_nothing_that_is_registered_is_missing_in_the_stubs():
    from pathlib import Path

    root = Path(veltra.__file__).parent
    for package in _veltra.package_names():
        if not package.startswith("veltra.internal.reference"):
            continue
        text = root.joinpath(*package.split(".")[1:], "__init__.pyi").read_text()
        for name in _veltra.class_names(package):
            known = _veltra.describe_class(f"{package}.{name}")
            block = text.split(f"\nclass {name}(")[1].split("\nclass ")[0]
            for entry in known["properties"] + known["methods"] + known["members"]:
                assert re.search(rf"^    (def )?{entry[0]}(: | = |\()", block, re.MULTILINE), entry
