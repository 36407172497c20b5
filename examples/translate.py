#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Adds to a manifest the names that it lacks in a language:

  translate.py MANIFEST LANGUAGE TRANSLATIONS

TRANSLATIONS is a file in JSON with an object: English texts, and what they are in LANGUAGE. Nothing
else of the manifest changes, and the file is replaced as a whole or stays as it was.

Exit codes: 0 done, 1 there are texts without a translation, which are printed, 2 wrong usage, 3 a
file that cannot be read or is not as it should be.
"""

import io
import json
import sys
from collections.abc import Iterator, Mapping
from pathlib import Path

import veskpackage

SOURCE = "en_US"
FieldPath = tuple[str | int, ...]


def names_by_field(package: veskpackage.Package) -> Iterator[tuple[FieldPath, Mapping[str, str]]]:
    """All names of a package, each with the path of its field."""
    yield ("names",), package.names
    for i, behavior in enumerate(package.behaviors):
        yield ("behaviors", i, "names"), behavior.names
    for i, pack in enumerate(package.languages):
        yield ("languages", i, "names"), pack.names


def missing_names(package: veskpackage.Package, language: str) -> dict[FieldPath, str]:
    """The English text for each field that is empty in a language, such as ("names", "fr_FR")."""
    return {
        (*field, language): names[SOURCE]
        for field, names in names_by_field(package)
        if names.get(SOURCE) and not names.get(language)
    }


def read_translations(path: Path) -> dict[str, str]:
    try:
        translations = json.loads(path.read_bytes())
    except ValueError as error:
        raise ValueError(f"{path}: {error}") from None
    if not isinstance(translations, dict) or not all(
        isinstance(text, str) for text in translations.values()
    ):
        raise ValueError(f"{path}: no object of texts")
    return translations


def main(arguments: list[str]) -> int:
    if len(arguments) != 3:
        print("usage: translate.py MANIFEST LANGUAGE TRANSLATIONS", file=sys.stderr)
        return 2
    if isinstance(sys.stdout, io.TextIOWrapper):
        sys.stdout.reconfigure(errors="backslashreplace")  # names of files are not always text
    manifest, language = Path(arguments[0]), arguments[1]
    try:
        translations = read_translations(Path(arguments[2]))
    except (ValueError, OSError) as error:
        print(error, file=sys.stderr)
        return 3
    try:
        data = manifest.read_bytes()
        missing = missing_names(veskpackage.loads(data), language)
        changes = {
            field: translations[text] for field, text in missing.items() if text in translations
        }
        if changes:
            veskpackage.replace_file(manifest, veskpackage.edit(data, changes))
    except (veskpackage.ManifestError, ValueError, OSError) as error:
        print(f"{manifest}: {error}", file=sys.stderr)
        return 3
    untranslated = [text for text in missing.values() if text not in translations]
    for text in untranslated:
        print(f"{manifest}: no translation of {text!r}")
    return 1 if untranslated else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
