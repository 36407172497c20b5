# SPDX-License-Identifier: Apache-2.0
"""Every field of every record, by the description of the records that the C++ library has."""

import copy
import pickle
import re
from itertools import count
from types import MappingProxyType

import pytest
import veskpackage
from veskpackage import Behavior, Dialog, Package, Permissions, _core, loads

RECORD_TYPES = _core.record_types()


def snake(member):
    return re.sub("[A-Z]", lambda capital: "_" + capital[0].lower(), member)


def sample(kind, member="", numbers=count()):
    """A value of a kind with all that it can hold; no two texts are equal."""
    if kind == "str":
        return f"text {next(numbers)}"
    if kind == "bool":
        return True
    if member == "permissions":
        return list(Permissions.supported)
    if item := re.fullmatch(r"list\[(.*)\]", kind):
        return [sample(item[1]) for _ in range(3)]
    if value := re.fullmatch(r"dict\[str, (.*)\]", kind):
        return {key: sample(value[1]) for key in ("de", "en_US", "fr")}
    record = kind.removesuffix(" | None")
    fields = {snake(name): sample(kind, name) for name, kind in RECORD_TYPES[record]}
    return getattr(veskpackage, record)(**fields)


def plain(value):
    """What to_dict() gives for a value."""
    if isinstance(value, list):
        return [plain(item) for item in value]
    return value.to_dict() if hasattr(value, "to_dict") else value


@pytest.mark.parametrize("record", RECORD_TYPES)
def test_every_member_is_a_field(record):
    made, empty = sample(record), getattr(veskpackage, record)()
    for member, kind in RECORD_TYPES[record]:
        given = sample(kind, member)
        name = snake(member)
        assert getattr(made, name) != getattr(empty, name), name
        setattr(made, name, given)
        assert getattr(made, name) == given
        assert made.to_dict()[member] == plain(given)
        for wrong in (1, None, b"bytes", object(), "\ud800", {"en": 1, 2: "fr"}, [1], [None]):
            if (kind, wrong) != ("WebContent | None", None):
                with pytest.raises((TypeError, ValueError)):
                    setattr(made, name, wrong)
                with pytest.raises((TypeError, ValueError)):
                    getattr(veskpackage, record)(**{name: wrong})
        assert getattr(made, name) == given
        with pytest.raises(AttributeError):
            setattr(made, name + "s", given)
    assert [*made.to_dict()] == [member for member, _ in RECORD_TYPES[record]]
    assert repr(empty) == f"{record}()" or record == "Package"


@pytest.mark.parametrize("record", RECORD_TYPES)
def test_copies_are_equal_and_share_nothing(record):
    made = sample(record)
    before = made.to_dict()
    for again in (
        copy.copy,
        copy.deepcopy,
        type(made).copy,
        lambda one: pickle.loads(pickle.dumps(one, 2)),
        lambda one: pickle.loads(pickle.dumps(one)),
        lambda one: type(one).from_dict(one.to_dict()),
        lambda one: type(one).from_dict(
            MappingProxyType(
                {field.json_name: getattr(one, field.name) for field in one._all_fields}
            )
        ),
        lambda one: type(one)(
            **{field.name: getattr(one, field.name) for field in one._all_fields}
        ),
        lambda one: eval(repr(one), vars(veskpackage)) if record != "Package" else copy.copy(one),
    ):
        for name in map(snake, dict(RECORD_TYPES[record])):
            other = again(made)
            assert type(other) is type(made) and other == made and other.to_dict() == before
            mine, others = getattr(made, name), getattr(other, name)
            assert mine is not others or isinstance(mine, (str, bool, veskpackage.WebContent))
            if hasattr(others, "clear"):
                others.clear()
            else:
                setattr(other, name, getattr(type(made)(), name))
            assert other != made and made.to_dict() == before


def test_copies_keep_classes_and_what_is_shared():
    class Mine(Behavior):
        __slots__ = ()

    package = Package(behaviors=[Mine(path="b")] * 2)
    other, behavior, behaviors = copy.deepcopy((package, package.behaviors[0], package.behaviors))
    assert other.behaviors is behaviors and behaviors[0] is behaviors[1] is behavior
    assert type(behavior) is type(package.copy().behaviors[0]) is Mine
    replaced = package.__replace__(uuid="u", behaviors=[])
    assert replaced == Package(uuid="u") and package == other


def test_a_manifest_holds_every_field_that_has_a_place_in_it(tool, tmp_path):
    whole = sample("Package")
    held = whole.copy()
    listed = veskpackage.fields()
    assert len(listed) == sum(map(len, RECORD_TYPES.values()))
    for field in listed:
        *parents, member = map(snake, re.sub(r"\.[A-Z]+|\[\*\]", "", field.path).split("."))
        changed = whole.copy()
        for package in [changed] if field.place else [changed, held]:
            records = [package]
            for parent in parents:
                below = [getattr(record, parent) for record in records]
                records = sum(below, []) if isinstance(below[0], list) else below
            for record in records:
                setattr(
                    record,
                    member,
                    getattr(type(record)(), member) or type(getattr(record, member))(),
                )
        assert changed != whole, field
        assert (loads(changed.dumps()) == loads(whole.dumps())) == (not field.place), field
    assert held != whole and loads(whole.dumps()) == held == loads(held.dumps().encode())

    whole.save(tmp_path / "manifest.xml")
    assert tool("show", "--format", "json", tmp_path / "manifest.xml") == held.to_dict()
    assert tool("show", tmp_path / "manifest.xml").decode() == str(held)


def test_what_is_odd_in_a_variant_is_read_as_empty():
    odd = (("topicName", 5), ["typeVersion", "2"], ("topics", {"en": "t"}))
    assert Dialog.from_variant(odd) == Dialog(type_version="2")
    assert Dialog.from_variant(5) == Dialog.from_variant(None) == Dialog.from_variant(())
