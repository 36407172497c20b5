# SPDX-License-Identifier: Apache-2.0
"""The pages of veskpackage.pages in a real browser: run by scripts/test-pages."""

from __future__ import annotations

import itertools
import os
from collections.abc import Iterator
from pathlib import Path

import pytest
import stores
from playwright.sync_api import Browser, Page, expect, sync_playwright

import veskpackage
from veskpackage import pages

AXE = Path(os.environ["AXE"]).read_text("utf-8")
EXAMPLES = Path(__file__).parents[3] / "examples" / "manifests"
HOSTILE = "\u202e</p><script>pwned=1;alert()</script><img src=http://a.invalid/ onerror=pwned=1>\"'"
COUNT = 260  # more than are shown at once
EVERY = COUNT + 6


@pytest.fixture(scope="session")
def site(tmp_path_factory: pytest.TempPathFactory) -> Path:
    store, folder = tmp_path_factory.mktemp("store"), tmp_path_factory.mktemp("site")
    stores.make(store, COUNT)
    texts = (f"{HOSTILE} {number}" for number in itertools.count())
    hostile = veskpackage.Package.from_dict(stores.filled(texts))
    hostile.uuid = "hostile" + HOSTILE
    (store / "hostile.xml").write_text(hostile.dumps().replace("</services>", "</services><x/>"))
    pages.write([store, EXAMPLES], folder)
    pages.write([EXAMPLES / "museum-guide.xml"], folder / "single")
    return folder


@pytest.fixture(scope="session")
def browser() -> Iterator[Browser]:
    quiet = ["background-networking", "component-update", "sync", "gpu"]
    arguments = ["--no-sandbox", "--no-first-run", *(f"--disable-{what}" for what in quiet)]
    with sync_playwright() as playwright:
        browser = playwright.chromium.launch(executable_path="/usr/bin/chromium", args=arguments)
        yield browser
        browser.close()


@pytest.fixture
def opened(browser: Browser) -> Iterator[Page]:
    """A page where nothing may go wrong: no request but for files, no message, no other script."""
    context = browser.new_context(viewport={"width": 1280, "height": 800})
    page = context.new_page()
    wrong: list[str] = []
    page.on("request", lambda one: one.url.startswith("file:") or wrong.append(one.url))
    page.on("console", lambda message: wrong.append(message.text))  # also what the policy forbids
    page.on("pageerror", lambda error: wrong.append(str(error)))
    page.on("dialog", lambda dialog: (wrong.append(dialog.message), dialog.dismiss()))
    yield page
    assert page.evaluate("typeof pwned") == "undefined" and not wrong
    context.close()


def address(site: Path, start: str) -> str:
    """Of a page by how its name begins."""
    single = {"index": "index.html", "single": "single/index.html"}
    return next(site.glob(single.get(start, f"packages/{start}*"))).as_uri()


@pytest.mark.parametrize("start", ["index", "single", "b58e2d14", "hostile", "package", "made-19-"])
@pytest.mark.parametrize("scheme", ["light", "dark"])
@pytest.mark.parametrize("width", [1280, 360])
def test_everybody_can_read_a_page(
    opened: Page, site: Path, start: str, width: int, scheme: str
) -> None:
    opened.set_viewport_size({"width": width, "height": 700})
    opened.emulate_media(color_scheme="dark" if scheme == "dark" else "light")
    opened.goto(address(site, start))
    for closed in opened.locator("summary").all():
        closed.click()
    opened.evaluate(AXE)
    found = opened.evaluate("axe.run().then(run => run.violations.map(one => one.nodes[0].html))")
    assert found == []
    assert opened.evaluate("document.documentElement.scrollWidth") <= width
    seen = "[...document.querySelectorAll(`td, details p`)].every(one => one.checkVisibility())"
    assert opened.evaluate(seen)
    opened.evaluate("document.querySelectorAll(`details`).forEach(one => one.open = false)")
    opened.set_viewport_size({"width": 720, "height": 1000})
    opened.emulate_media(media="print")
    assert opened.evaluate("getComputedStyle(document.body).color") == "rgb(27, 35, 48)"
    assert opened.evaluate(seen)  # also what was closed
    # No paper has room for a column for each of some forty languages.
    assert start == "hostile" or opened.evaluate("document.documentElement.scrollWidth") <= 720


def rows(page: Page) -> list[str]:
    return page.locator("#table tbody th a").all_inner_texts()


def test_a_store_can_be_searched(opened: Page, site: Path) -> None:
    opened.goto(address(site, "index"))
    hits = opened.get_by_role("status")
    assert hits.inner_text() == f"{EVERY} of {EVERY} packages, the first 200 shown"
    opened.get_by_role("button", name="Show more").click()
    assert len(rows(opened)) == EVERY
    assert opened.evaluate("document.activeElement.innerText") == rows(opened)[200]
    for words, name in {"MUSEE": "Museum Guide", "tides guide": "Museum Guide",
                        "b58e2d14": "Office Assistant", "museum nobody": ""}.items():  # fmt: skip
        opened.get_by_role("searchbox").fill(words)
        assert rows(opened) == [name][: bool(name)]
        assert hits.inner_text() == f"{bool(name):d} of {EVERY} packages"
    opened.get_by_role("button", name="Clear").click()
    expect(hits).to_contain_text("200 shown")


def test_a_store_can_be_filtered(opened: Page, site: Path) -> None:
    opened.goto(address(site, "index"))
    made = [stores.package(number) for number in range(COUNT) if number % 100 != 99]
    from_version = [int(one.mirel_requirements[0].min_version.removeprefix("2.")) for one in made]
    counts = {
        ("Language", "ja_JP"): sum("ja_JP" in one.supported_languages for one in made) + 1,
        ("Channel", "beta"): sum(one.channel == "beta" for one in made) + 1,
        # Three examples run on any.
        ("Runs on robot", "small"): sum(one.robot_requirements[0].model == "small" for one in made)
        + 3,
        ("Findings", "errors"): 2,
        ("Marked", "cannot be read"): 2,
        ("Marked", "uuid not unique"): sum(one.uuid == "made-0" for one in made),
        ("Marked", "starts services by itself"): sum(one.services[0].auto_run for one in made) + 2,
        # All examples run on it, and so does what names no version that is a number.
        ("Runs on Mirel", "2.9"): sum(minor <= 9 for minor in from_version) + 6,
        ("Runs on Mirel", "3.8.1"): len(made) + 5,  # which none names
        ("Runs on Mirel", "3.10"): sum(not one.mirel_requirements[0].max_version for one in made)
        + 3,
        ("Runs on Mirel", "3,9"): EVERY,
    }
    for (label, choice), expected in counts.items():
        field = opened.get_by_label(label, exact=True)
        if field.evaluate("field => field.list"):
            field.fill(choice)
        else:
            field.select_option(label=choice)
        expect(opened.get_by_role("status")).to_contain_text(f"{expected} of {EVERY} packages")
        opened.get_by_role("button", name="Clear").click()
        expect(opened.get_by_role("status")).to_contain_text("200 shown")


def test_a_store_can_be_sorted(opened: Page, site: Path) -> None:
    opened.goto(address(site, "index"))
    opened.get_by_label("Channel").select_option(label="stable")
    for name, column in {"Version": 2, "Behaviors": 5, "Texts": 9}.items():
        header = opened.locator("#table").get_by_role("columnheader", name=name, exact=True)
        for order in ("ascending", "descending"):
            header.get_by_role("button").focus()
            opened.keyboard.press("Enter")
            assert header.get_attribute("aria-sort") == order
            assert opened.locator("[aria-sort]").count() == 1
            cells = opened.locator(f"#table tbody td:nth-child({column})").all_inner_texts()
            texts = list(filter(None, cells))
            keys = [[int(part) for part in text.rstrip(" %").split(".")] for text in texts]
            assert len(keys) > 60 and keys == sorted(keys, reverse=order == "descending")
            assert cells[: len(texts)] == texts  # what has no value stands last
    findings = opened.get_by_role("columnheader", name="Findings").get_by_role("button")
    findings.click()
    findings.click()
    assert "warning" in opened.locator("#table tbody tr").first.inner_text()


def test_what_was_asked_for_stands_in_the_address(opened: Page, site: Path) -> None:
    opened.goto(address(site, "index"))
    opened.get_by_role("searchbox").fill("gu")
    opened.get_by_label("Channel").select_option(label="stable")
    opened.get_by_label("Runs on Mirel").fill("2.9")
    for _ in range(2):
        opened.get_by_role("button", name="Version").click()
    asked, link = rows(opened), opened.url
    assert 5 < len(asked) < 30 and asked != sorted(asked)
    opened.get_by_role("link", name="Skip").press("Enter")
    opened.get_by_role("link", name=asked[3], exact=True).click()
    opened.get_by_role("link", name="All packages").click()
    assert len(rows(opened)) == 200
    opened.go_back()
    opened.go_back()
    assert rows(opened) == asked
    for place in ("about:blank", link):  # as a new page
        opened.goto(place)
    assert rows(opened) == asked
    assert opened.get_by_role("searchbox").input_value() == "gu"
    for hostile in ("#order=-constructor&search=%&channel=<b>&language=__proto__", "#order=-&mark"):
        opened.goto(address(site, "index") + hostile)
        opened.get_by_role("button", name="Clear").click()
        expect(opened.get_by_role("status")).to_contain_text("200 shown")


def test_a_keyboard_is_enough(opened: Page, site: Path) -> None:
    opened.goto(address(site, "b58e2d14"))
    opened.keyboard.press("Tab")
    assert opened.evaluate("document.activeElement.getBoundingClientRect().left") >= 0
    opened.keyboard.press("Enter")
    assert opened.url.endswith("#main")
    reachable = "main a[href], main summary, main [tabindex='0']"
    for _ in range(opened.locator(reachable).count()):
        opened.keyboard.press("Tab")
        assert opened.evaluate(f"document.activeElement.matches(`{reachable}`)")
        assert opened.evaluate("getComputedStyle(document.activeElement).outlineStyle") == "solid"
    assert opened.locator(reachable).last.evaluate("last => last.matches(':focus')")


def test_an_index_needs_no_script(browser: Browser, site: Path) -> None:
    context = browser.new_context(java_script_enabled=False)
    page = context.new_page()
    page.goto(address(site, "index"))
    assert page.locator("#table tbody tr:visible").count() == EVERY
    assert not page.locator("#filters").is_visible() and not page.locator("#more").is_visible()
    context.close()
