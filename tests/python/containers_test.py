# SPDX-License-Identifier: Apache-2.0
"""The lists and mappings of records do what plain lists and dicts do, and C++ has all of it."""

import copy
import gc
import json
import operator
import pickle

import pytest
import veskpackage
from hypothesis import strategies as st
from hypothesis.stateful import RuleBasedStateMachine, invariant, rule
from veskpackage import Behavior, Package, Permissions, TextList, TextLists, Texts, UniqueTexts

# What can be done to a list, at a place or slice, with an item or several.
LIST_CHANGES = [
    lambda held, at, part, item, items: held.append(item),
    lambda held, at, part, item, items: held.insert(at, item),
    lambda held, at, part, item, items: held.extend(items),
    lambda held, at, part, item, items: operator.iadd(held, items),
    lambda held, at, part, item, items: operator.setitem(held, at, item),
    lambda held, at, part, item, items: operator.setitem(held, part, items),
    # The changes from here on take no item.
    lambda held, at, part, item, items: operator.imul(held, at),
    lambda held, at, part, item, items: operator.delitem(held, at),
    lambda held, at, part, item, items: operator.delitem(held, part),
    lambda held, at, part, item, items: held.pop(at),
    lambda held, at, part, item, items: held.remove(item),
    lambda held, at, part, item, items: held.index(item),
    lambda held, at, part, item, items: (held[at], held[part], held + items, held * 2),
    lambda held, at, part, item, items: (len(held), held.count(item), item in held, bool(held)),
    lambda held, at, part, item, items: held.sort(key=str, reverse=at < 0),
    lambda held, at, part, item, items: held.reverse(),
    lambda held, at, part, item, items: held.extend(held),
    lambda held, at, part, item, items: held.extend(iter(items)),
    lambda held, at, part, item, items: held.clear() if at == 4 else None,
]
DICT_CHANGES = [
    lambda held, key, value, more: operator.setitem(held, key, value),
    lambda held, key, value, more: held.setdefault(key, value),
    lambda held, key, value, more: held.update(more, en_US=value),
    lambda held, key, value, more: held.update([*more.items(), (key, value)]),
    lambda held, key, value, more: operator.ior(held, {**more, key: value}),
    # The changes from here on take no value.
    lambda held, key, value, more: operator.delitem(held, key),
    lambda held, key, value, more: (held.pop(key, None), held.get(key), key in held),
    lambda held, key, value, more: held.popitem(),
    lambda held, key, value, more: ([*held], [*held.values()], [*held.items()], held | more),
    lambda held, key, value, more: held.clear() if key == "" else None,
]
TEXTS = st.text(max_size=3)
KEYS = st.sampled_from(["en_US", "fr_FR", "de", "", "ж"])
PLACES = st.integers(-5, 5)
SLICES = st.builds(slice, *[st.none() | PLACES] * 2, st.none() | PLACES.filter(bool))


def outcome(change, held, *arguments):
    try:
        result = change(held, *arguments)
    except (IndexError, KeyError, ValueError) as error:
        return type(error)
    return None if result is held else result


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
            (UniqueTexts, self.package, "supported_languages", [], TEXTS | KEYS),
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

    @rule(data=st.data(), change=st.sampled_from(LIST_CHANGES), at=PLACES, part=SLICES)
    def change_a_list(self, data, change, at, part):
        held, model, items, is_unique = self.draw(data, list)
        arguments = at, part, data.draw(items), data.draw(st.lists(items, max_size=4))
        assert outcome(change, held, *arguments) == outcome(change, model, *arguments)
        if is_unique:
            model[:] = dict.fromkeys(model)

    @rule(data=st.data(), change=st.sampled_from(DICT_CHANGES), key=KEYS)
    def change_a_dict(self, data, change, key):
        held, model, items, _ = self.draw(data, dict)
        arguments = key, data.draw(items), data.draw(st.dictionaries(KEYS, items, max_size=2))
        # What is put in is copied, so that no list of the model's is in two places.
        assert outcome(change, held, *arguments) == outcome(
            change, model, *copy.deepcopy(arguments)
        )

    @rule(data=st.data(), at=st.integers(0, 7))
    def assign(self, data, at):
        _, record, field, model, _ = self.kept[at]
        setattr(record, field, data.draw(st.sampled_from([model, self.held[at]])))

    @rule(
        data=st.data(),
        at=PLACES,
        part=SLICES,
        key=KEYS,
        wrong=st.sampled_from([1, None, b"en", "\ud800", True, [1], ["\ud800"], {1: ""}]),
    )
    def put_in_what_is_wrong(self, data, at, part, key, wrong):
        held, *_ = self.draw(data, list)
        change = data.draw(st.sampled_from(LIST_CHANGES[:6]))
        some = [*held[:1], wrong]  # the first is right
        with pytest.raises((TypeError, ValueError, IndexError)):
            change(held, at, part, wrong, data.draw(st.sampled_from([some, "en", 1, None])))
        held, *_ = self.draw(data, dict)
        change = data.draw(st.sampled_from(DICT_CHANGES[:5]))
        wrong_key = data.draw(st.sampled_from([1, None, "\ud800"]))
        if not (change is DICT_CHANGES[1] and key in held):
            with pytest.raises((TypeError, ValueError)):
                change(held, key, wrong, {})
        with pytest.raises((TypeError, ValueError)):
            held.update({"de": "right", wrong_key: "right"})
        with pytest.raises((TypeError, ValueError)):
            held[wrong_key] = next(iter(held.values()), "")

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
    samples = {Texts: {"en": "a"}, TextLists: {"en": ["a", "b"]}, TextList: ["b", "a", "b"],
               UniqueTexts: ["b", "a"], Permissions: ["canStandUp"]}  # fmt: skip
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
    with pytest.raises(TypeError, match="Package.behaviors: a Behavior is wanted, not Dialog"):
        Package().behaviors = [veskpackage.Dialog()]
    with pytest.raises(TypeError, match="Package.names: a str is wanted, not int"):
        Package(names={"en": 1})


class Lifetimes(RuleBasedStateMachine):
    """What has been taken out of a package lives, whatever happens to the package."""

    FIELDS = st.sampled_from(
        ["behaviors", "dialogs", "names", "tags", "topics", "permissions", "web"]
    )

    def __init__(self):
        super().__init__()
        self.held = [self.package()]

    def package(self):
        dialog = veskpackage.Dialog(topic_name="d", topics={"en": "t"})
        return veskpackage.loads(Package(
            names={"en_US": "n", "fr": "m"}, description_languages=["en"], dialogs=[dialog] * 2,
            behaviors=[Behavior(path="b", tags={"en": ["t"], "de": ["u"]})] * 3,
            web=veskpackage.WebContent(path="w"),
        ).dumps())  # fmt: skip

    @rule(index=st.integers(0), field=FIELDS)
    def take(self, index, field):
        source = self.held[index % len(self.held)]
        if isinstance(source, list):
            self.held += [*source, iter(source)]
        elif isinstance(source, dict):
            self.held += [*source.values(), source.items(), iter(source.values())]
        elif hasattr(source, field):
            self.held.append(getattr(source, field))

    @rule(index=st.integers(0), field=FIELDS, way=st.integers(0, 4))
    def change(self, index, field, way):
        source = self.held[index % len(self.held)]
        if way == 0 and hasattr(source, "trim"):
            source.trim(*[["en"], []][: 2 * isinstance(source, Behavior)])
        elif way == 1 and hasattr(source, "clear"):
            source.clear()
        elif way == 2 and isinstance(source, Package):
            source.behaviors, source.dialogs, source.web = source.behaviors[:1] * 2, [], None
        elif way == 3 and hasattr(source, field):
            setattr(source, field, getattr(self.package(), field, {}))
        elif way == 4 and len(self.held) > 1:
            del self.held[index % len(self.held)], source
            gc.collect(0)

    @invariant()
    def all_can_be_used(self):
        for held in self.held:
            assert repr(held) and held == held
            if isinstance(held, veskpackage.Package):
                assert held.dumps() and str(held)
        self.held = self.held[:40]

    def teardown(self):
        while self.held:
            del self.held[0]
            self.all_can_be_used()


TestLifetimes = Lifetimes.TestCase
