# SPDX-License-Identifier: Apache-2.0
"""Never run: what mypy must take, with the right types, and what it must refuse."""

from collections.abc import Generator
from pathlib import Path
from typing import Any, assert_type

import veskpackage
from veskpackage import (
    Behavior,
    Dialog,
    Package,
    TextList,
    TextLists,
    Texts,
    UniqueTexts,
    WebContent,
)

package = Package(uuid="u", names={"en": "n"}, behaviors=[Behavior(path="p", tags={"en": ["t"]})])
assert_type(package, Package)
assert_type(package.uuid, str)
assert_type(package.names, Texts)
assert_type(package.names["en"], str)
assert_type(package.supported_languages, UniqueTexts)
assert_type(package.behaviors[0], Behavior)
assert_type(package.behaviors[0].user_requestable, bool)
assert_type(package.behaviors[0].tags, TextLists)
assert_type(package.behaviors[0].tags["en"], TextList)
assert_type(package.web, WebContent | None)
assert_type(package.copy(), Package)
assert_type(package.dialogs[0].copy(), Dialog)
assert_type(package.to_dict(), dict[str, Any])
assert_type(Package.from_dict({}), Package)
assert_type(Behavior.from_variant([]), Behavior)
assert_type(veskpackage.load(Path("p")), Package)
assert_type(veskpackage.load_many(["p", Path("p")]), Generator[veskpackage.Loaded, None, None])
assert_type(next(veskpackage.load_many(["p"])).result(), Package)
assert_type(veskpackage.check(b"")[0].begin.line, int)
assert_type(veskpackage.check(bytearray()), list[veskpackage.Finding])
assert_type(veskpackage.fix(memoryview(b"")).count, int)
assert_type(veskpackage.__version__, str)
assert_type(veskpackage.edit("text", {"version": "2"}), str)
assert_type(veskpackage.edit(b"text", {"version": "2"}), bytes)
assert_type(veskpackage.edit(bytearray(), {"behaviors[0]": Behavior()}), bytes)
changes: dict[tuple[str | int, ...], str] = {("behaviors", 0, "names", "en"): "n"}
veskpackage.edit("text", changes)
veskpackage.edit("text", {"version": "2", ("names", "en"): None, "supportedLanguages": ["en"]})
assert_type(veskpackage.fix("path").data, bytes)
assert_type(Package.uuid.name, str)

# What is given may be plainer than what is held.
package.names = {"en": "n"}
package.executable_files = ("a", "b")
package.behaviors = [Behavior()]
package.behaviors += [Behavior()]
package.behaviors[0].tags = {"en": ["t"]}
package.web = WebContent(path="w")
package.web = None

# An ignore that is not needed is an error.
package.uuid = 1  # type: ignore[assignment]
package.nams = {}  # type: ignore[attr-defined]
package.names = {"en": 1}  # type: ignore[dict-item]
package.behaviors = [Dialog()]  # type: ignore[list-item]
package.behaviors.append(Dialog())  # type: ignore[arg-type]
package.executable_files.append(1)  # type: ignore[arg-type]
Package("u")  # type: ignore[misc]
Package(uuid=None)  # type: ignore[arg-type]
package.copy().web.path  # type: ignore[union-attr]
veskpackage.check(b"", severities={"root-name": "bad"})  # type: ignore[dict-item]
veskpackage.edit("text", {"version": 2})  # type: ignore[dict-item]
veskpackage.edit("text", {1: "2"})  # type: ignore[dict-item]
veskpackage.load(5)  # type: ignore[arg-type]
