# SPDX-License-Identifier: Apache-2.0
"""Texts of strangers as they are shown, with nothing in them that nobody sees."""

from __future__ import annotations

import re
import unicodedata
from itertools import filterfalse

# As the command-line tool shows characters: controls, those that turn the direction of writing,
# private and unassigned ones, and separators of lines.
_UNSEEN = frozenset(["Cc", "Cf", "Cs", "Co", "Cn", "Zl", "Zp"])
_BLANKS_AT_ENDS = re.compile(r"^\s+|\s+$")
# Letters and marks that have no shape.
_SHAPELESS = "\u034f\u115f\u1160\u17b4\u17b5\u2800\u3164\uffa0\U0001d159"
# These only change how something else is shown: joiners, and selectors of variants.
_JOINERS = "\u200c\u200d"
_SELECTORS = "\u180b-\u180d\u180f\ufe00-\ufe0f\U000e0100-\U000e01ef"
_HIDDEN = re.compile(f"[{_SHAPELESS}{_SELECTORS}]")
# Letters that are no others with accents to Unicode, as the index's script has them.
_BASES = str.maketrans(
    {"ø": "o", "đ": "d", "ð": "d", "ł": "l", "ħ": "h", "ı": "i", "æ": "ae", "œ": "oe"}
)
_NO_LETTERS = re.compile(r"(\d+)|[\W_]")

# The languages of two letters that ISO 639 has.
_KNOWN = frozenset(
    "aa ab ae af ak am an ar as av ay az ba be bg bh bi bm bn bo br bs ca ce ch co cr cs cu cv "
    "cy da de dv dz ee el en eo es et eu fa ff fi fj fo fr fy ga gd gl gn gu gv ha he hi ho hr "
    "ht hu hy hz ia id ie ig ii ik io is it iu ja jv ka kg ki kj kk kl km kn ko kr ks ku kv kw "
    "ky la lb lg li ln lo lt lu lv mg mh mi mk ml mn mr ms mt my na nb nd ne ng nl nn no nr nv "
    "ny oc oj om or os pa pi pl ps pt qu rm rn ro ru rw sa sc sd se sg sh si sk sl sm sn so sq "
    "sr ss st su sv sw ta te tg th ti tk tl tn to tr ts tt tw ty ug uk ur uz ve vi vo wa wo xh "
    "yi yo za zh zu".split()
)
_TAG = re.compile(
    "([A-Za-z]{2,3})(-[A-Za-z]{4})?(-(?:[A-Za-z]{2}|[0-9]{3}))?"
    "((?:-(?:[A-Za-z0-9]{5,8}|[0-9][A-Za-z0-9]{3}))*)"
)


def _is_unseen(text: str, index: int) -> bool:
    character = text[index]
    if _HIDDEN.match(character):
        is_selector = character not in _SHAPELESS
        return not (is_selector and index and _is_shaped(text[index - 1]))
    if character in "\n\t" or unicodedata.category(character) not in _UNSEEN:
        return False
    # Joiners shape the letters of some scripts, and pictures; among others they only hide.
    around = text[index - 1 : index] + text[index + 1 : index + 2]
    return not (character in _JOINERS and len(around) == 2 and all(map(_is_joined, around)))


def _is_joined(character: str) -> bool:
    """Whether it is no Latin letter, and can be seen, or is a selector behind a picture."""
    return ord(character) > 0x2FF and unicodedata.category(character) not in _UNSEEN


def _is_shaped(character: str) -> bool:
    """Whether a selector may change it: also the sign of a key, of copyright or of a trade mark."""
    is_sign = character in "#*0123456789\u00a9\u00ae"
    return (is_sign or _is_joined(character)) and not _HIDDEN.match(character)


def pieces(text: str) -> list[tuple[str, bool]]:
    """The text in pieces, and which of them are single characters that are not seen."""
    found: list[tuple[str, bool]] = []
    begin = 0
    for index in range(len(text)):
        if _is_unseen(text, index):
            found += [(text[begin:index], False), (text[index], True)]
            begin = index + 1
    return [*found, (text[begin:], False)]


def code_of(character: str) -> str:
    return f"U+{ord(character):04X}"


def is_visible(text: str) -> bool:
    return text.isprintable() and not _HIDDEN.search(text)


def plain(text: str) -> str:
    """The text, and as their codes what in it is not seen."""
    if is_visible(text):
        return text
    return "".join(
        f"<{code_of(piece)}>" if is_unseen else piece for piece, is_unseen in pieces(text)
    )


def cut(text: str, most: int) -> str:
    """The text, or its beginning where it is long."""
    return text if len(text) <= most else text[: most - 1] + "…"


def language_name(code: str) -> str:
    return with_visible_ends(code) or "no language"


def with_visible_ends(text: str) -> str:
    """A language, channel or the like with the blanks at its ends made visible, since they make it another
    one."""
    return _BLANKS_AT_ENDS.sub(lambda match: "".join(map(_shown_blank, match[0])), text)


def _shown_blank(blank: str) -> str:
    return "␣" if blank == " " else f"<{code_of(blank)}>"


def language_tag(code: str) -> str:
    """The tag of BCP 47 for a language as manifests have it, such as "en-US" for "en_US"; empty,
    which stands for an unknown language, where there is none."""
    match = _TAG.fullmatch(code.replace("_", "-"))
    if not match:
        return ""
    language, script, region, variants = match.groups("")
    known = (
        language.lower() in _KNOWN if len(language) == 2 else not language.lower().startswith("q")
    )
    return language.lower() + script.title() + region.upper() + variants.lower() if known else ""


def sort_key(text: str) -> tuple[str, str, str]:
    """For nearly the order of the index's script: digits count as numbers, in front of letters and behind
    all else, and accents and case only where nothing else differs."""
    letters = "".join(filterfalse(unicodedata.combining, unicodedata.normalize("NFKD", text)))
    parts = _NO_LETTERS.sub(_ranked, letters.casefold().translate(_BASES))
    return parts, text.casefold(), text.swapcase()


def _ranked(match: re.Match[str]) -> str:
    if not match[1]:
        return "\0" + match[0]
    digits = str(int(match[1]))
    return "\1" + chr(len(digits)) + digits


def slug(text: str) -> str:
    """A part of a file's name that is harmless everywhere; empty where nothing of the text is."""
    return re.sub("[^a-z0-9]+", "-", text[:200].lower()).strip("-")[:40].strip("-")
