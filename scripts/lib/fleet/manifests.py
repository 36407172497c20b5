# SPDX-License-Identifier: Apache-2.0
"""Makes manifests of many shapes, always the same by their number: some in other encodings, some broken."""

from __future__ import annotations

import sys
from pathlib import Path
from random import Random
from xml.sax.saxutils import escape, quoteattr

WORDS = {
    "en_US": ["guide", "tour", "meeting & greeting", "hall <3>"],
    "fr_FR": ["musée", "visite guidée", "qu'y a-t-il", "café"],
    "de_DE": ["Büro", "Führung", "\u201eHallo\u201c", "Straße"],
    "ja_JP": ["博物館", "ガイド", "見学", "ツアー"],
    "ar_SA": ["دليل", "متحف", "جولة", "مرحبا"],
    "en": ["\U0001f916 robot", "tab\there", "line\u2028separator", "e\u0301 \u0085 \ufffd"],
    "": ['"quoted"', "back\\slash", "{json}: [1]", "]]> & more"],
}
BROKEN = [
    lambda text, random: text[: random.randrange(len(text))],
    lambda text, random: text.replace("</", "<", 1),
    lambda text, random: text.replace("<name", "<name bad=&nothing; ", 1),
    lambda text, random: text.replace(">", " uuid='again' uuid='again'>", 1),
    lambda text, random: text + "<second/>",
    lambda text, random: "",
    lambda text, random: "<a>" * 1000 + text,
    lambda text, random: "<package>&#0;&#1;\x00\x01</package>",
    lambda text, random: '<!DOCTYPE package [<!ENTITY a "aaaaaaaaaa">'
    + "".join(f'<!ENTITY {b} "{f"&{a};" * 10}">' for a, b in zip("abcdefg", "bcdefgh"))
    + "]><package><names><name>&h;</name></names></package>",
]
ENCODINGS = ["utf-8-sig", "utf-16", "utf-16-be", "iso-8859-1", "windows-1252", "ascii", "utf-7"]


def manifest(number: int) -> bytes:
    random = Random(number)
    languages = random.sample(list(WORDS), random.randrange(1, 5))

    def texts(element: str, child: str, key: str = "lang") -> str:
        children = (
            f"<{child} {key}={quoteattr(language)}>{escape(random.choice(WORDS[language]))}</{child}>"
            for language in languages
            for _ in range(random.choice([0, 1, 1, 2]))
        )
        return f"<{element}>{''.join(children)}</{element}>"

    def version() -> str:
        return random.choice(["", "2", "2.10", "2.9.1", "10.0-beta"])

    def behavior(number: int) -> str:
        parts = [
            texts("names", "name"),
            texts("descriptions", "description"),
            texts("tags", "tag"),
            texts("triggerSentences", "sentence"),
            texts("loadingResponses", "sentence"),
            texts("autonomous", "condition", "purpose"),
            "<userRequestable/>",
            "<unknown/>",
            "<nature>solitary</nature>",
            "<permissions><canStandUp/><cannot/></permissions>",
        ]
        chosen = random.sample(parts, random.randrange(len(parts)))
        return f'<behaviorContent path="b/{number}">{"".join(chosen)}</behaviorContent>'

    contents = [behavior(number) for number in range(random.choice([0, 1, 1, 2, 3, 12]))]
    contents += random.sample(
        [
            '<dialogContent topicName="t"><topic language="en_US" path="d/en"/></dialogContent>',
            f'<languageContent path="l"><engine name="e" version="1"/>{texts("names", "name")}</languageContent>',
            '<webContent path="web"/>',
            "<!-- a comment -->",
        ],
        random.randrange(4),
    )
    sections = [
        texts("names", "name"),
        texts("descriptions", "description"),
        texts("supportedLanguages", "language"),
        texts("descriptionLanguages", "language"),
        f"<contents>{''.join(contents)}</contents>",
        f'<requirements><mirelRequirement minVersion="{version()}" maxVersion="{version()}"/>'
        f'<robotRequirement model="m" minHeadVersion="{version()}"/></requirements>',
        '<services><service name="s" execStart="bin/s --fast" autorun="true"/><service/></services>',
        '<executableFiles><file path="bin/s"/><file path=""/></executableFiles>',
    ]
    random.shuffle(sections)
    text = (
        f'<package uuid="{number:08}" version="{version()}" author="Zoë">\n'
        + random.choice(["\n", "\r\n", "\n  "]).join(sections[random.randrange(4) :])
        + "\n</package>\n"
    )
    if random.random() < 0.03:
        text = random.choice(BROKEN)(text, random)
    encoding = random.choice(ENCODINGS) if random.random() < 0.1 else "utf-8"
    name = encoding.removesuffix("-sig").removesuffix("-be")
    head = f'<?xml version="1.0" encoding="{name}"?>\n' if text and encoding != "utf-8" else ""
    return (head + text).encode(encoding, "xmlcharrefreplace")


def make_store(folder: Path, count: int) -> list[Path]:
    """Writes manifests into folders of a thousand, and gives their paths."""
    paths = []
    for number in range(count):
        path = folder / f"{number // 1000:03}" / f"{number:06}.xml"
        if number % 1000 == 0:
            path.parent.mkdir(parents=True, exist_ok=True)
        path.write_bytes(manifest(number))
        paths.append(path)
    return paths


if __name__ == "__main__":
    make_store(Path(sys.argv[1]), int(sys.argv[2]))
