# SPDX-License-Identifier: Apache-2.0
"""Uses all parts of the Python package that is installed below a folder, however it got there:

    installed_package.py MANIFESTS FOLDER
"""

import pickle
import sys
from importlib.metadata import version
from pathlib import Path

import veskpackage

manifests, folder = map(Path, sys.argv[1:])
package = Path(veskpackage.__file__).resolve().parent
assert package.is_relative_to(folder.resolve()), package
assert (package / "py.typed").exists() and (package / "_core.pyi").exists()
assert version("veskpackage") == veskpackage.__version__

greeting = veskpackage.load(manifests / "greeting.xml")
assert greeting.names["es_ES"] == "Saludo amistoso"
greeting.behaviors[0].names["fr_FR"] = "Dire bonjour"
assert veskpackage.loads(greeting.dumps()) == greeting
assert pickle.loads(pickle.dumps(greeting)) == greeting
assert veskpackage.Package.from_variant(greeting.to_variant()) == greeting

text = (manifests / "greeting.xml").read_bytes()
edited = veskpackage.edit(text, {"names.es_ES": "¡Hola!"})
assert edited == text.replace(b"Saludo amistoso", "¡Hola!".encode())

broken = text.replace(b"nature>", b"natur>")
assert [finding.rule for finding in veskpackage.check(broken)] == ["unknown-element"]
assert veskpackage.fix(broken).data == text
assert not any(checked.error for checked in veskpackage.check_many(manifests.iterdir()))
