# SPDX-License-Identifier: Apache-2.0
"""Manifests of robot application packages: read, edit, check and write them.

>>> import veskpackage
>>> package = veskpackage.load("manifest.xml")
>>> package.names["fr_FR"] = "Guide du musée"
>>> package.save("manifest.xml")

Beside this, `check` finds what the readers pass over, `fix` mends it, and `edit` changes fields of a text in
place, keeping all else; `replace_file` writes what they give. `load_many` and `check_many` work on several
processors.
"""

from . import _core
from ._files import replace_file
from .checking import (
    Checked,
    Edit,
    Finding,
    Fixed,
    Mend,
    Position,
    Rule,
    Severity,
    check,
    check_many,
    fix,
    rules,
)
from .containers import Permissions, TextList, TextLists, Texts, UniqueTexts
from .editing import FieldDescription, edit, fields
from .errors import EditError, FieldError, ManifestError
from .loading import Loaded, load, load_many, loads
from .logs import forward_log, stop_forwarding_log
from .package import Package
from .records import (
    NATURE_INTERACTIVE,
    NATURE_SOLITARY,
    Behavior,
    Dialog,
    LanguagePack,
    MirelRequirement,
    RobotRequirement,
    Service,
    WebContent,
)

__version__ = _core.version

__all__ = [
    "Behavior",
    "Checked",
    "Dialog",
    "Edit",
    "EditError",
    "FieldDescription",
    "FieldError",
    "Finding",
    "Fixed",
    "LanguagePack",
    "Loaded",
    "ManifestError",
    "Mend",
    "MirelRequirement",
    "NATURE_INTERACTIVE",
    "NATURE_SOLITARY",
    "Package",
    "Permissions",
    "Position",
    "RobotRequirement",
    "Rule",
    "Service",
    "Severity",
    "TextList",
    "TextLists",
    "Texts",
    "UniqueTexts",
    "WebContent",
    "check",
    "check_many",
    "edit",
    "fields",
    "fix",
    "forward_log",
    "load",
    "load_many",
    "loads",
    "replace_file",
    "rules",
    "stop_forwarding_log",
]
