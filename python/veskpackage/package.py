# SPDX-License-Identifier: Apache-2.0
"""Packages: read from manifests, edited, and written."""

from __future__ import annotations

from collections.abc import Iterable, Mapping
from typing import Any, Self

from . import _core
from ._files import Path, replace_file
from ._record import (
    PartField,
    Record,
    RecordList,
    RecordsField,
    TextField,
    VariantRecord,
    text_list,
    texts,
    unique_texts,
)
from .records import (
    Behavior,
    Dialog,
    LanguagePack,
    MirelRequirement,
    RobotRequirement,
    Service,
    WebContent,
)

__all__ = [
    "Behaviors",
    "Dialogs",
    "LanguagePacks",
    "MirelRequirements",
    "Package",
    "RobotRequirements",
    "Services",
]


class Behaviors(RecordList[Behavior]):
    __slots__ = ()
    _record_type = Behavior


class Dialogs(RecordList[Dialog]):
    __slots__ = ()
    _record_type = Dialog


class LanguagePacks(RecordList[LanguagePack]):
    __slots__ = ()
    _record_type = LanguagePack


class Services(RecordList[Service]):
    __slots__ = ()
    _record_type = Service


class RobotRequirements(RecordList[RobotRequirement]):
    __slots__ = ()
    _record_type = RobotRequirement


class MirelRequirements(RecordList[MirelRequirement]):
    __slots__ = ()
    _record_type = MirelRequirement


class _WebField(PartField[WebContent | None, WebContent | None]):
    def _made(self, core: _core.Record) -> WebContent | None:
        held = core.get(self.index)
        return None if held is None else WebContent._of(held)

    def _set(self, record: Record, value: Any) -> None:
        if value is not None and not isinstance(value, WebContent):
            raise TypeError(f"a WebContent or None is wanted, not {type(value).__name__}")
        record._parts[self.name] = value

    def _for_core(self, part: WebContent | None) -> Any:
        return None if part is None else part._whole()


class Package(VariantRecord):
    """The manifest of one application package: its identity, its texts in several languages, what it needs
    and provides, and what it contains.

    >>> package = Package(uuid="guide", names={"en_US": "Museum guide"})
    >>> package.behaviors.append(Behavior(path="guide/hello"))
    >>> package.names["fr_FR"] = "Guide du musée"
    >>> package.save("manifest.xml")

    `print(package)` shows a report.
    """

    __slots__ = ()

    uuid = TextField("The package's identifier.")
    version = TextField("Its version, a free text.")
    type_version = TextField("The version of the manifest's format.")
    names = texts("What it is called, by language.")
    descriptions = texts("What it is for, by language.")
    author = TextField("Who made it.")
    organization = TextField("For whom it was made.")
    channel = TextField("The channel through which it is distributed.")
    date = TextField("When it was made, a free text.")
    supported_languages = unique_texts("The languages of its content, each once.")
    description_languages = unique_texts("The languages of its texts, each once.")
    behaviors = RecordsField(Behaviors, "What it can do.")
    dialogs = RecordsField(Dialogs, "What it can talk about.")
    languages = RecordsField(LanguagePacks, "The language packs that it brings.")
    services = RecordsField(Services, "The services that it provides.")
    executable_files = text_list("Paths of executable files, relative to the package.")
    robot_requirements = RecordsField(RobotRequirements, "The robots that it runs on.")
    mirel_requirements = RecordsField(
        MirelRequirements, "The versions of the robot's system software that it runs on."
    )
    web = _WebField("Its web content; None when there is none.")
    installer = TextField("What installed it: a text carried along; no manifest holds it.")
    path = TextField("Where it lies on disk: a text carried along; no manifest holds it.")

    def __init__(
        self,
        *,
        uuid: str = "",
        version: str = "",
        type_version: str = "",
        names: Mapping[str, str] = {},
        descriptions: Mapping[str, str] = {},
        author: str = "",
        organization: str = "",
        channel: str = "",
        date: str = "",
        supported_languages: Iterable[str] = (),
        description_languages: Iterable[str] = (),
        behaviors: Iterable[Behavior] = (),
        dialogs: Iterable[Dialog] = (),
        languages: Iterable[LanguagePack] = (),
        services: Iterable[Service] = (),
        executable_files: Iterable[str] = (),
        robot_requirements: Iterable[RobotRequirement] = (),
        mirel_requirements: Iterable[MirelRequirement] = (),
        web: WebContent | None = None,
        installer: str = "",
        path: str = "",
    ) -> None:
        super().__init__(locals())

    def dumps(self) -> str:
        """The manifest, as `save` writes it. Equal packages give equal texts.

        Empty names, descriptions, texts of behaviors and topics are left out, and so is what XML cannot
        carry: control characters and what follows a NUL character.
        """
        return _core.write(self._whole()).decode()

    def save(self, path: Path) -> None:
        """Writes the manifest to a file, in UTF-8. Whatever goes wrong, the file has all of the new
        manifest or all of what it had before; an OSError says what went wrong. What stays of a file that
        is there, and what becomes of links, `veskpackage.replace_file` says, which does the writing.

        It is written afresh: comments and what the format does not know are not in it. To change a
        manifest that people wrote, there is `veskpackage.edit`.
        """
        replace_file(path, _core.write(self._whole()))

    def trim(self) -> None:
        """Strips the package down to the languages that it is described in: drops the names and
        descriptions whose language begins with none of `description_languages`, and trims every behavior
        by these and `supported_languages`."""
        behaviors = self._parts.get("behaviors", ())
        self._trim(lambda core: core.trim_package())
        for behavior in behaviors:
            behavior.trim(self.description_languages, self.supported_languages)

    @classmethod
    def _from_json(cls, fields: Mapping[str, Any], name: str) -> Self:
        fields = dict(fields)
        web = fields.pop("web", None)
        package = super()._from_json(fields, "")
        package.web = None if web is None else WebContent._from_json(web, "web")
        return package

    def __repr__(self) -> str:
        lists = [field.name for field in self._all_fields if isinstance(field, RecordsField)]
        counts = [f" {name}={len(getattr(self, name))}" for name in lists if getattr(self, name)]
        return f"<Package uuid={self.uuid!r} version={self.version!r}{''.join(counts)}>"
