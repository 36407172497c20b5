# SPDX-License-Identifier: Apache-2.0
"""The lists and mappings of records do what plain lists and dicts do, and C++ has all of it."""

import copy
import gc
import json
import operator
import pickle
from functools import cache

import pytest
import veskpackage
from hypothesis import strategies as st
from hypothesis.stateful import RuleBasedStateMachine, invariant, rule
from veskpackage import Behavior, Package, Permissions, TextList, TextLists, Texts, UniqueTexts

# What can be done to a list, at a place or slice, with an item or several.
WITH_ITEMS = ["held.append(item)", "held.insert(at, item)", "held.extend(items)", "held += items",
              "held[at] = item", "held[part] = items"]  # fmt: skip
LIST_CHANGES = WITH_ITEMS + [
    "held *= at", "del held[at]", "del held[part]", "result = held.pop(at)", "held.remove(item)",
    "result = held.index(item), held.count(item)", "held.sort(key=str, reverse=at < 0)",
    "result = held[at], held[part], held + items, held * 2, item in held, [*reversed(held)]",
    "held.reverse()", "held.extend(held)", "held.extend(iter(items))", "if at == 4: held.clear()",
]  # fmt: skip
# The same for a dict.
WITH_VALUES = ["held[key] = item", "held.update(more, **{key: item})",
               "held |= {**more, key: item}", "held.update([*more.items(), (key, item)])"]  # fmt: skip
DICT_CHANGES = WITH_VALUES + [
    "result = held.setdefault(key, item)", "del held[key]", "result = held.popitem()",
    "result = held.pop(key, None), held.get(key), key in held", "if key == '': held.clear()",
    "result = [*held], [*held.values()], [*held.items()], held | more, {**held}",
    # What is held of it stays in it.
    "if key in held: held[key] += item * 2", "if key in held: held[key] = held[key]",
    "held.update(held)", "held |= {**held}",
]  # fmt: skip
TEXTS = st.text(max_size=3)
KEYS = st.sampled_from(["en_US", "fr_FR", "de", "", "ж"])
PLACES = st.integers(-5, 5)
SLICES = st.builds(slice, *[st.none() | PLACES] * 2, st.none() | PLACES.filter(bool))


compiled = cache(lambda change: compile(change, change, "exec"))


def outcome(change, held, **names):
    names["held"] = held
    try:
        exec(compiled(change), names)
    except (IndexError, KeyError, ValueError) as error:
        return type(error)
    assert names["held"] is held
    return names.get("result")


class Containers(RuleBasedStateMachine):
    def __init__(self):
        super().__init__()
        self.package = Package(uuid="u")
        self.behavior = Behavior(path="always there")
        self.others = [Behavior(path=path, tags={"en": [path]}) for path in ("a", "b", "b", "c")]
        self.package.behaviors.append(self.behavior)
        # Of each container: its class, the record and field where it is, a model, and what goes in.
        lists = st.lists(TEXTS, max_size=3)
        self.kept = [
            (Texts, self.package, "names", {}, TEXTS),
            (Texts, self.behavior, "descriptions", {}, TEXTS),
            (TextLists, self.behavior, "tags", {}, lists),
            (TextLists, self.behavior, "conditions", {}, lists),
            (TextList, self.package, "executable_files", [], TEXTS),
            (UniqueTexts, self.package, "supported_languages", [], KEYS),
            (Permissions, self.behavior, "permissions", [], st.sampled_from(Permissions.supported)),
            (list, self.package, "behaviors", [self.behavior], st.sampled_from(self.others)),
        ]
        self.held = [getattr(record, field) for _, record, field, _, _ in self.kept]

    def draw(self, data, kind):
        """A container, its model, what goes in, and whether that is there once only."""
        choices = [
            (held, model, items, issubclass(container, UniqueTexts))
            for held, (container, _, _, model, items) in zip(self.held, self.kept)
            if isinstance(model, kind)
        ]
        if kind is list:
            choices += [
                (held[key], model[key], TEXTS, False)
                for held, (container, _, _, model, _) in zip(self.held, self.kept)
                if container is TextLists
                for key in model
            ]
        return data.draw(st.sampled_from(choices))

    @rule(data=st.data(), changes=st.lists(st.sampled_from(LIST_CHANGES)), at=PLACES, part=SLICES)
    def change_a_list(self, data, changes, at, part):
        held, model, items, is_unique = self.draw(data, list)
        names = {"at": at, "part": part, "item": data.draw(items)}
        names["items"] = data.draw(st.lists(items, max_size=4))
        for change in changes:
            assert outcome(change, held, **names) == outcome(change, model, **names)
            if is_unique:
                model[:] = dict.fromkeys(model)
            assert held == model

    @rule(data=st.data(), changes=st.lists(st.sampled_from(DICT_CHANGES)), key=KEYS)
    def change_a_dict(self, data, changes, key):
        held, model, items, _ = self.draw(data, dict)
        names = {"key": key, "item": data.draw(items)}
        names["more"] = data.draw(st.dictionaries(KEYS, items, max_size=2))
        for change in changes:
            # What is put in is copied, so that no list of the model's is in two places.
            inner = [*held.items()]
            expected = outcome(change, model, **copy.deepcopy(names))
            assert outcome(change, held, **names) == expected
            if change in DICT_CHANGES[-4:] and isinstance(held, TextLists):
                assert all(held[one] is value for one, value in inner)

    @rule(data=st.data(), at=st.integers(0, 7))
    def assign(self, data, at):
        _, record, field, model, _ = self.kept[at]
        setattr(record, field, data.draw(st.sampled_from([model, self.held[at]])))

    @rule(
        data=st.data(),
        at=PLACES,
        part=SLICES,
        key=KEYS,
        index=st.integers(0, 9),
        wrong=st.sampled_from([1, None, b"en", "\ud800", True, [1], ["\ud800"], {1: ""}]),
    )
    def put_in_what_is_wrong(self, data, at, part, key, index, wrong):
        held, *_ = self.draw(data, list)
        behind_a_right_one = [*held[:1], wrong]
        items = data.draw(st.sampled_from([behind_a_right_one, "en", 1, None]))
        with pytest.raises((TypeError, ValueError, IndexError)):
            names = {"held": held, "at": at, "part": part, "item": wrong, "items": items}
            exec(compiled(WITH_ITEMS[index % 6]), names)
        held, *_ = self.draw(data, dict)
        right = next(iter(held.values()), [] if isinstance(held, TextLists) else "")
        for one, value in [(key, wrong), (data.draw(st.sampled_from([1, None, "\ud800"])), right)]:
            with pytest.raises((TypeError, ValueError)):
                names = {"held": held, "key": one, "item": value, "more": {"de": right}}
                exec(compiled(WITH_VALUES[index % 4]), names)

    @rule(index=st.integers(0, 3), value=TEXTS)
    def change_a_behavior(self, index, value):
        self.others[index].names["en"] = self.others[index].nature = value

    @rule(again=st.sampled_from([
        copy.copy, copy.deepcopy, lambda one: pickle.loads(pickle.dumps(one)),
        lambda one: type(one).from_dict(one.to_dict()),
        lambda one: type(one).from_variant(one.to_variant())]))  # fmt: skip
    def go_through_cpp(self, again):
        for _, record, field, model, _ in self.kept:
            other = again(record)
            assert other == record and getattr(other, field) == model

    @invariant()
    def all_are_like_their_models(self):
        for held, (container, record, field, model, _) in zip(self.held, self.kept):
            assert getattr(record, field) is held and isinstance(held, container)
            assert held == model and model == held and repr(held) == repr(model)
        behaviors = self.kept[-1][3]
        assert all(map(operator.is_, self.package.behaviors, behaviors))
        assert all(type(texts) is TextList for texts in self.behavior.tags.values())


TestContainers = Containers.TestCase


def test_containers_are_pythons_own_for_others():
    samples = {
        Texts: {"en": "a"},
        TextLists: {"en": ["a", "b"]},
        TextList: ["b", "a", "b"],
        UniqueTexts: ["b", "a"],
        Permissions: ["canStandUp"],
    }
    wrong_ones = [1, "en", [1], ["\ud800"], {1: "en"}, {"\ud800": "en"}]
    for container, plain in samples.items():
        held = container(plain)
        assert json.loads(json.dumps(held)) == plain
        for other in (copy.copy(held), copy.deepcopy(held), pickle.loads(pickle.dumps(held))):
            assert other == held and type(other) is container and other is not held
        for wrong in wrong_ones:
            with pytest.raises((TypeError, ValueError)):
                container(wrong)
    with pytest.raises(ValueError, match="no permission: 'canFly'; there are canRunInSleep, "):
        Behavior().permissions.append("canFly")
    newer = Behavior.from_dict({"permissions": ["canFly"]})
    newer.permissions = [*newer.permissions, "canStandUp"]  # what is there stays
    assert Behavior(permissions=newer.permissions).permissions == newer.permissions
    assert newer.permissions == ["canFly", "canStandUp"]
    with pytest.raises(TypeError, match="Package.behaviors: a Behavior is wanted, not Dialog"):
        Package().behaviors = [veskpackage.Dialog()]
    with pytest.raises(TypeError, match="Package.names: a str is wanted, not int"):
        Package(names={"en": 1})


class Lifetimes(RuleBasedStateMachine):
    """What has been taken out of a package lives, whatever happens to the package."""

    INDEXES = st.integers(0)
    FIELDS = st.sampled_from("behaviors dialogs names tags topics permissions web".split())
    MANIFEST = Package(
        names={"en_US": "n", "fr": "m"},
        description_languages=["en"],
        dialogs=[veskpackage.Dialog()] * 2,
        behaviors=[Behavior(path="b", tags={"en": ["t"], "de": ["u"]})] * 3,
        web=veskpackage.WebContent(path="w"),
    ).dumps()

    def __init__(self):
        super().__init__()
        self.held = [veskpackage.loads(self.MANIFEST)]

    @rule(index=INDEXES, field=FIELDS)
    def take(self, index, field):
        source = self.held[index % len(self.held)]
        if isinstance(source, (list, dict)):
            self.held += [*source, iter(source), *getattr(source, "values", list)()]
        elif hasattr(source, field):
            self.held.append(getattr(source, field))

    @rule(index=INDEXES, field=FIELDS, way=st.sampled_from(["trim", "clear", "assign", "drop"]))
    def change(self, index, field, way):
        source = self.held[index % len(self.held)]
        if way == "trim" and isinstance(source, (Package, Behavior)):
            source.trim(*[["en"], []] if isinstance(source, Behavior) else [])
        elif way == "clear" and hasattr(source, "clear"):
            source.clear()
        elif way == "assign" and hasattr(source, field):
            setattr(source, field, getattr(veskpackage.loads(self.MANIFEST), field, {}))
        elif way == "drop" and len(self.held) > 1:
            del self.held[index % len(self.held)], source
            gc.collect(0)

    @invariant()
    def all_can_be_used(self):
        self.held = self.held[:40]
        for held in self.held:
            assert repr(held) and held == held and getattr(held, "dumps", str)() is not None

    def teardown(self):
        while self.held:
            del self.held[0]
            self.all_can_be_used()


TestLifetimes = Lifetimes.TestCase
