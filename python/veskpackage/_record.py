# SPDX-License-Identifier: Apache-2.0
"""What all records have in common: fields, comparing, copying, and their form as plain values.

A record stands on one of the C++ library's. Its texts and flags are always there. So is a list or mapping
until Python first reads it; from then on it is a container of Python's, and is written into a copy of the
record whenever C++ needs the whole. So there is nothing in Python that could dangle.
"""

from __future__ import annotations

import json
from collections.abc import Callable, Iterable, Mapping
from copy import deepcopy
from typing import Any, ClassVar, Generic, Self, TypeVar, overload

from . import _core
from .containers import (
    CheckedDict,
    CheckedList,
    TextList,
    TextLists,
    Texts,
    UniqueTexts,
    checked_text,
)

Held = TypeVar("Held")
Given = TypeVar("Given")
Container = TypeVar("Container", bound="CheckedList[Any] | CheckedDict[Any, Any]")


class Field(Generic[Held, Given]):
    """A field of a record, declared in its class: what it holds, and what may be given for it."""

    def __init__(self, doc: str) -> None:
        self.__doc__ = doc

    def _bind(self, name: str, members: Mapping[str, str]) -> None:
        """Makes it the one of the C++ record's members that has this name, in JSON's way, and its type."""
        first, *others = name.split("_")
        self.name = name
        self.json_name = first + "".join(word.capitalize() for word in others)
        self.index = list(members).index(self.json_name)
        self.type = members[self.json_name]
        self.__doc__ = f"{self.type}: {self.__doc__}"

    def __repr__(self) -> str:
        return f"<field {self.name}: {self.type}>"

    @overload
    def __get__(self, record: None, owner: Any = None) -> Self:
        ...

    @overload
    def __get__(self, record: Record, owner: Any = None) -> Held:
        ...

    def __get__(self, record: Record | None, owner: Any = None) -> Any:
        return self if record is None else self._get(record)

    def __set__(self, record: Record, value: Given) -> None:
        try:
            self._set(record, value)
        except TypeError as error:
            raise TypeError(f"{type(record).__name__}.{self.name}: {error}") from None

    def __delete__(self, record: Record) -> None:
        raise AttributeError(f"{type(record).__name__}.{self.name} cannot be deleted")

    def _get(self, record: Record) -> Any:
        return record._held.get(self.index)

    def _set(self, record: Record, value: Any) -> None:
        record._held.set(self.index, value)

    def _for_core(self, part: Any) -> Any:
        """A part of Python's as the C++ record takes it."""
        return part


TextField = Field[str, str]
FlagField = Field[bool, bool]


class PartField(Field[Held, Given]):
    """A field that is Python's once it has been read."""

    def _made(self, core: _core.Record) -> Any:
        """Python's part, of what the C++ record has."""
        raise NotImplementedError

    def _get(self, record: Record) -> Any:
        parts = record._parts
        if self.name in parts:
            return parts[self.name]
        # Another thread may do the same, and be first. What C++ has stays there, out of date.
        return parts.setdefault(self.name, self._made(record._held))


class ContainerField(PartField[Container, Given]):
    """A field whose container stays the same object: what is assigned becomes its content."""

    def __init__(
        self, container: type[Container], doc: str, inner: type[TextList] | None = None
    ) -> None:
        super().__init__(doc)
        self.container: Any = container
        self.inner = inner  # the class of the lists in it
        self.default: Any = {} if issubclass(container, dict) else ()

    def _made(self, core: _core.Record) -> Any:
        return core.get(self.index, self.container, self.inner)

    def _set(self, record: Record, value: Any) -> None:
        self._get(record)._become(value)


def texts(doc: str) -> ContainerField[Texts, Mapping[str, str]]:
    return ContainerField(Texts, doc)


def text_lists(doc: str) -> ContainerField[TextLists, Mapping[str, Iterable[str]]]:
    return ContainerField(TextLists, doc, TextList)


def text_list(doc: str) -> ContainerField[TextList, Iterable[str]]:
    return ContainerField(TextList, doc)


def unique_texts(doc: str) -> ContainerField[UniqueTexts, Iterable[str]]:
    return ContainerField(UniqueTexts, doc)


class Record:
    """A part of a package. All text is Unicode; lists and mappings can be changed in place.

    Two records are equal when all of their fields are. A copy, also by the module copy, shares nothing
    with its source. What is put into a list of records is that very object: changing it changes the
    package. Threads may read one record at once; one that changes it has to be alone with it.
    """

    __slots__ = ("_held", "_parts", "__weakref__")
    __hash__ = None  # type: ignore[assignment]
    _held: _core.Record
    _parts: dict[str, Any]
    _all_fields: ClassVar[list[Field[Any, Any]]] = []
    _type_name: ClassVar[str]

    def __init_subclass__(cls) -> None:
        super().__init_subclass__()
        fields = {name: field for name, field in vars(cls).items() if isinstance(field, Field)}
        if fields and not cls._all_fields:
            cls._type_name = cls.__name__
            members = dict(_core.record_types()[cls._type_name])
            for name, field in fields.items():
                field._bind(name, members)
            cls._all_fields = sorted(fields.values(), key=lambda field: field.index)

    def __init__(self, given: Mapping[str, Any]) -> None:
        """Made of the fields that are given."""
        # These are the names that the constructor of a class of records has, its arguments among them.
        self._held = _core.Record(self._type_name)
        self._parts = {}
        for field in self._all_fields:
            value = given[field.name]
            if not (isinstance(field, ContainerField) and value == field.default):
                field.__set__(self, value)

    @classmethod
    def _of(cls, core: _core.Record) -> Self:
        record = cls.__new__(cls)
        record._held = core
        record._parts = {}
        return record

    def _whole(self) -> _core.Record:
        """A copy of the C++ record with all that is Python's."""
        whole = self._held.copy()
        for field in self._all_fields:
            if field.name in self._parts:
                whole.set(field.index, field._for_core(self._parts[field.name]))
        return whole

    def _trim(self, trim: Callable[[_core.Record], None]) -> None:
        """Trims the C++ record, and the mappings that are Python's like those in it."""
        self._held = self._whole()
        trim(self._held)
        for field in self._all_fields:
            part = self._parts.get(field.name)
            if isinstance(part, CheckedDict):
                for key in part.keys() - self._held.get(field.index).keys():
                    del part[key]

    def __eq__(self, other: object) -> bool:
        if not isinstance(other, Record) or self._type_name != other._type_name:
            return NotImplemented
        return bool(self._whole() == other._whole())

    def copy(self) -> Self:
        """A record with the same fields, which shares nothing with this one."""
        return deepcopy(self)

    def __copy__(self) -> Self:
        return self.copy()

    def __deepcopy__(self, memo: dict[int, Any]) -> Self:
        other = self._of(self._held.copy())
        other._parts = deepcopy(dict(self._parts), memo)
        return other

    def __replace__(self, **changes: Any) -> Self:
        """A copy with other values of some fields, for Python's `copy.replace`."""
        other = self.copy()
        for name, value in changes.items():
            setattr(other, name, value)
        return other

    def __reduce__(self) -> tuple[Any, ...]:
        return self.from_dict, (self.to_dict(),)

    def to_dict(self) -> dict[str, Any]:
        """The fields as plain values, as the command-line tool shows them in JSON: every field, under its
        name there, such as "typeVersion" for `type_version`."""
        fields: dict[str, Any] = json.loads(self._whole().to_json())
        return fields

    @classmethod
    def from_dict(cls, fields: Mapping[str, Any]) -> Self:
        """A record from what `to_dict` gives; fields that are not there are as in a new record. Parts may
        be records, too. Like the variant form, it may hold permissions that no robot knows, and languages
        several times.

        Raises FieldError for a field that is unknown or of another kind, and TypeError for what is no
        plain value.
        """
        if not isinstance(fields, Mapping):
            raise TypeError(f"a dict is wanted, not {type(fields).__name__}")
        return cls._from_json(fields, cls.__name__)

    @classmethod
    def _from_json(cls, fields: Mapping[str, Any], name: str) -> Self:
        return cls._of(_core.Record.from_json(cls._type_name, json_of(fields), name))

    def __repr__(self) -> str:
        empty = self._of(_core.Record(self._type_name))
        values = [(field.name, getattr(self, field.name)) for field in self._all_fields]
        shown = (f"{name}={value!r}" for name, value in values if value != getattr(empty, name))
        return f"{type(self).__name__}({', '.join(shown)})"


def json_of(value: object) -> str:
    """A value in JSON. Unlike json.dumps, it takes mappings and records of all classes, and refuses what the
    JSON would not say: keys that are no str, lone surrogates and NaN."""
    return json.dumps(_plain(value), allow_nan=False)


def _plain(value: object) -> object:
    if isinstance(value, str):
        return checked_text(value)
    if isinstance(value, (list, tuple)):
        return [_plain(item) for item in value]
    if isinstance(value, Mapping):
        return {checked_text(key): _plain(item) for key, item in value.items()}
    return value.to_dict() if isinstance(value, Record) else value


class VariantRecord(Record):
    """A record that has a report, and a variant form for modules that do not know its class."""

    __slots__ = ()

    def __str__(self) -> str:
        """The report: labelled lines for people."""
        return self._whole().report()

    def to_variant(self) -> list[Any]:
        """The variant form: a list of pairs [name, value], of lists, str, bool and None. A package without
        a uuid has none: the list is empty."""
        return self._whole().to_variant()

    @classmethod
    def from_variant(cls, variant: Any) -> Self:
        """A record from its variant form; what is missing or of another kind is read as empty."""
        return cls._of(_core.Record.from_variant(cls._type_name, variant))


class RecordList(CheckedList[Held]):
    """A list of records of one type. They stay the same objects."""

    __slots__ = ()
    _record_type: ClassVar[type[Record]]

    def _checked(self, item: Any) -> Held:
        if not isinstance(item, self._record_type):
            raise TypeError(f"a {self._record_type.__name__} is wanted, not {type(item).__name__}")
        return item  # type: ignore[return-value]


class RecordsField(ContainerField[RecordList[Held], Iterable[Held]]):
    """A list of records, in a class of lists."""

    def _made(self, core: _core.Record) -> Any:
        record_type = self.container._record_type
        return self.container._trusted(record_type._of(held) for held in core.get(self.index))

    def _for_core(self, part: Any) -> Any:
        return [record._whole() for record in part]
