# SPDX-License-Identifier: Apache-2.0
"""help() has something to say about everything that is public."""

import inspect
import pydoc
import re

import veskpackage
from veskpackage import Behavior, Package


def test_everything_public_is_documented():
    assert sorted(veskpackage.__all__) == veskpackage.__all__
    text = pydoc.render_doc(veskpackage, renderer=pydoc.plaintext)
    for name in veskpackage.__all__:
        public = getattr(veskpackage, name)
        assert name in text
        if not isinstance(public, (type, type(veskpackage.load))):
            continue  # a constant or an alias of types, explained in a comment
        own = pydoc.render_doc(public, renderer=pydoc.plaintext)
        assert public.__doc__ and not public.__doc__.startswith(
            f"{name}("
        ), name  # as of dataclasses
        for field in vars(public).get("__annotations__", ()) if isinstance(public, type) else []:
            assert f"    {field}: " in public.__doc__, (name, field)
        for member in vars(public) if isinstance(public, type) else []:
            value = getattr(public, member)
            if not member.startswith("_") and (callable(value) or hasattr(value, "__get__")):
                assert member in own and inspect.getdoc(value), (name, member)
    others = {name for name in vars(veskpackage) if not name.startswith("_")} - {
        *veskpackage.__all__
    }
    assert all(inspect.ismodule(getattr(veskpackage, name)) for name in others), others


def test_a_package_is_shown_as_what_it_is():
    own = pydoc.render_doc(Package, renderer=pydoc.plaintext)
    for field in Package._all_fields:
        assert f"{field.name}" in own and field.__doc__ in own.replace("\n |      ", " ")
    assert not re.search(r"\|  _[a-z]", own) and "\n |      list[Behavior]: What" in own
    assert repr(Package.behaviors) == "<field behaviors: list[Behavior]>"
    package = Package(uuid="u'", version="1", behaviors=[Behavior(path="b")] * 2)
    assert repr(package) == """<Package uuid="u'" version='1' behaviors=2>"""
    assert repr(package.behaviors) == "[Behavior(path='b'), Behavior(path='b')]"
    report = str(package).splitlines()
    assert report[:2] == ["UUID: u'", "Version: 1"] and report.count("Path: b") == 2
    assert veskpackage.__version__.count(".") == 2
