# SPDX-License-Identifier: Apache-2.0
"""The parts of a package: behaviors, dialogs, language packs, services, requirements, web content."""

from __future__ import annotations

from collections.abc import Iterable, Mapping

from ._record import (
    ContainerField,
    FlagField,
    Record,
    TextField,
    VariantRecord,
    text_lists,
    texts,
)
from .containers import Permissions, TextList

__all__ = [
    "NATURE_INTERACTIVE",
    "NATURE_SOLITARY",
    "Behavior",
    "Dialog",
    "LanguagePack",
    "MirelRequirement",
    "RobotRequirement",
    "Service",
    "WebContent",
]

#: The natures of behaviors that are known so far; a behavior takes any text.
NATURE_INTERACTIVE = "interactive"
NATURE_SOLITARY = "solitary"


class Behavior(VariantRecord):
    """One behavior of a package: where it lies, its nature, what it is called in which language, what it
    reacts to, and what it may do."""

    __slots__ = ()

    path = TextField("Where it lies, relative to the package.")
    nature = TextField('"interactive", "solitary" or any other text.')
    user_requestable = FlagField("Whether a user can ask for it.")
    names = texts("What it is called, by language.")
    descriptions = texts("What it does, by language.")
    tags = text_lists("Words to find it by, in lists by language.")
    trigger_sentences = text_lists("What a user can say to start it, in lists by language.")
    loading_responses = text_lists("What is said while it is loaded, in lists by language.")
    conditions = text_lists("When it is launched, in lists by purpose.")
    permissions = ContainerField[Permissions, Iterable[str]](
        Permissions, 'What it may do, such as "canStandUp".'
    )
    categories = TextField("A text that is carried along; no manifest holds it.")

    def __init__(
        self,
        *,
        path: str = "",
        nature: str = "",
        user_requestable: bool = False,
        names: Mapping[str, str] = {},
        descriptions: Mapping[str, str] = {},
        tags: Mapping[str, Iterable[str]] = {},
        trigger_sentences: Mapping[str, Iterable[str]] = {},
        loading_responses: Mapping[str, Iterable[str]] = {},
        conditions: Mapping[str, Iterable[str]] = {},
        permissions: Iterable[str] = (),
        categories: str = "",
    ) -> None:
        super().__init__(locals())

    def trim(
        self, description_languages: Iterable[str], supported_languages: Iterable[str]
    ) -> None:
        """Drops the names and descriptions whose language begins with none of the first, and the tags,
        loading responses and trigger sentences whose language begins with none of the second: "en" keeps
        "en_US", and an empty list drops all."""
        described, supported = TextList(description_languages), TextList(supported_languages)
        self._trim(lambda core: core.trim_behavior(described, supported))


class Dialog(VariantRecord):
    """One dialog of a package: its topic, and for each language the path of the topic file."""

    __slots__ = ()

    topic_name = TextField("The name of the topic.")
    type_version = TextField("The version of the topic's type.")
    topics = texts("The paths of the topic files, relative to the package, by language.")

    def __init__(
        self, *, topic_name: str = "", type_version: str = "1.0", topics: Mapping[str, str] = {}
    ) -> None:
        super().__init__(locals())


class LanguagePack(VariantRecord):
    """One language pack of a package: where it lies, the language it is for, and the engine."""

    __slots__ = ()

    path = TextField("Where it lies, relative to the package.")
    locale = TextField("The language that it is for, as an ISO 639 code.")
    engine_name = TextField("The engine that it is made for.")
    engine_version = TextField("The version of that engine.")
    names = texts("What it is called, by language.")

    def __init__(
        self,
        *,
        path: str = "",
        locale: str = "",
        engine_name: str = "",
        engine_version: str = "",
        names: Mapping[str, str] = {},
    ) -> None:
        super().__init__(locals())


class Service(Record):
    """A service that a package provides."""

    __slots__ = ()

    exec_start = TextField("The command line that starts it.")
    name = TextField("What it is called.")
    auto_run = FlagField("Whether it is started by itself.")

    def __init__(self, *, exec_start: str = "", name: str = "", auto_run: bool = False) -> None:
        super().__init__(locals())


class RobotRequirement(Record):
    """The robot hardware that a package runs on. Versions are free texts."""

    __slots__ = ()

    model = TextField("The model of the robot.")
    min_head_version = TextField("The lowest version of the head.")
    max_head_version = TextField("The highest version of the head.")
    min_body_version = TextField("The lowest version of the body.")
    max_body_version = TextField("The highest version of the body.")

    def __init__(
        self,
        *,
        model: str = "",
        min_head_version: str = "",
        max_head_version: str = "",
        min_body_version: str = "",
        max_body_version: str = "",
    ) -> None:
        super().__init__(locals())


class MirelRequirement(Record):
    """The versions of the robot's system software, Mirel, that a package runs on, as free texts."""

    __slots__ = ()

    min_version = TextField("The lowest version.")
    max_version = TextField("The highest version.")

    def __init__(self, *, min_version: str = "", max_version: str = "") -> None:
        super().__init__(locals())


class WebContent(Record):
    """The web content of a package, such as pages for a screen."""

    __slots__ = ()

    path = TextField("Where it lies, relative to the package.")

    def __init__(self, *, path: str = "") -> None:
        super().__init__(locals())
