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
SCRIPT = "\u202e</p><script>pwned = 1; alert()</script><img src=http://a.invalid/x onerror=pwned=1>\"' "
COUNT = 260  # more than are shown at once


@pytest.fixture(scope="session")
def site(tmp_path_factory: pytest.TempPathFactory) -> Path:
    store, folder = tmp_path_factory.mktemp("store"), tmp_path_factory.mktemp("site")
    stores.make(store, COUNT)
    texts = (f"{SCRIPT} hostile{number}" for number in itertools.count())
    hostile = veskpackage.Package.from_dict(stores.filled(texts))
    hostile.uuid = "hostile" + SCRIPT
    (store / "hostile.xml").write_text(hostile.dumps().replace("</services>", "</services><x/>"))
    pages.write([store, EXAMPLES], folder)
    pages.write([EXAMPLES / "museum-guide.xml"], folder / "single")
    return folder


@pytest.fixture(scope="session")
def browser() -> Iterator[Browser]:
    quiet = ["background-networking", "component-update", "sync", "gpu"]
    with sync_playwright() as playwright:
        browser = playwright.chromium.launch(
            executable_path="/usr/bin/chromium",
            args=["--no-sandbox", "--no-first-run", *(f"--disable-{what}" for what in quiet)],
        )
        yield browser
        browser.close()


@pytest.fixture
def opened(browser: Browser, site: Path) -> Iterator[Page]:
    """A page in which nothing may go wrong: no request but for files, no message, no script of others."""
    context = browser.new_context(viewport={"width": 1280, "height": 800})
    page = context.new_page()
    wrong: list[str] = []
    page.on("request", lambda request: request.url.startswith("file:") or wrong.append(request.url))
    page.on("console", lambda message: wrong.append(message.text))
    page.on("pageerror", lambda error: wrong.append(str(error)))
    page.on("dialog", lambda dialog: (wrong.append("dialog"), dialog.dismiss()))
    page.add_init_script("addEventListener('securitypolicyviolation', (e) => console.log(e.blockedURI))")
    yield page
    assert page.evaluate("typeof pwned") == "undefined" and not wrong
    context.close()


def named(site: Path, start: str) -> str:
    return next((site / "packages").glob(f"{start}*")).relative_to(site).as_posix()


@pytest.mark.parametrize("start", ["index", "single", "b58e2d14", "hostile", "package", "made-19-"])
@pytest.mark.parametrize("width, scheme", [(1280, "light"), (1280, "dark"), (360, "light"), (360, "dark")])
def test_everybody_can_read_a_page(opened: Page, site: Path, start: str, width: int, scheme: str) -> None:
    names = {"index": "index.html", "single": "single/index.html"}
    opened.set_viewport_size({"width": width, "height": 700})
    opened.emulate_media(color_scheme="dark" if scheme == "dark" else "light")
    opened.goto(f"{site.as_uri()}/{names.get(start) or named(site, start)}")
    for closed in opened.locator("summary").all():
        closed.click()
    opened.evaluate(AXE)
    found = opened.evaluate("axe.run().then((run) => run.violations.map((one) => [one.id, one.nodes[0].html]))")
    assert found == []
    assert opened.evaluate("document.documentElement.scrollWidth") <= width
    opened.set_viewport_size({"width": 720, "height": 1000})
    opened.emulate_media(media="print")
    # No paper has room for a column for each of some forty languages.
    assert start == "hostile" or opened.evaluate("document.documentElement.scrollWidth") <= 720
    assert opened.locator("h1").count() == 1 and opened.evaluate("getComputedStyle(document.body).margin") == "0px"


def rows(page: Page) -> list[str]:
    return page.locator("#table tbody th a").all_inner_texts()


def test_a_store_can_be_searched_sorted_and_filtered(opened: Page, site: Path) -> None:
    opened.goto(f"{site.as_uri()}/index.html")
    every, hits = COUNT + 6, opened.get_by_role("status")
    assert hits.inner_text() == f"{every} of {every} packages, the first 200 shown"
    opened.get_by_role("button", name="Show more").click()
    assert len(rows(opened)) == every and opened.evaluate("document.activeElement.tagName") == "A"

    search = opened.get_by_role("searchbox")
    for words, expected in {
        "MUSEE": ["Museum Guide"], "museum tides": ["Museum Guide"], "b58e2d14": ["Office Assistant"],
        "museum nobody": [],
    }.items():
        search.fill(words)
        assert rows(opened) == expected and hits.inner_text() == f"{len(expected)} of {every} packages"
    opened.get_by_role("button", name="Clear").click()
    expect(hits).to_contain_text("200 shown")

    made = [stores.package(number) for number in range(COUNT) if number % 100 != 99]
    counts = {
        ("Language", "ja_JP"): sum("ja_JP" in one.supported_languages for one in made) + 1,
        ("Channel", "beta"): sum(one.channel == "beta" for one in made) + 1,
        ("Robot", "small"): sum(one.robot_requirements[0].model == "small" for one in made),
        ("Findings", "errors"): 2,
        ("Marked", "cannot be read"): 2,
        ("Marked", "uuid not unique"): sum(one.uuid == "made-0" for one in made),
        ("Marked", "starts services by itself"): sum(one.services[0].auto_run for one in made) + 2,
        # 2.10 and 2.11 are behind it. All examples run on it, and what names no version that is one.
        ("Runs on Mirel", "2.9"): sum(int(one.mirel_requirements[0].min_version[2:]) <= 9 for one in made) + 6,
    }
    for (label, choice), expected in counts.items():
        opened.get_by_label(label, exact=True).select_option(label=choice)
        assert hits.inner_text().startswith(f"{expected} of "), (label, choice, hits.inner_text())
        opened.get_by_role("button", name="Clear").click()
        expect(hits).to_contain_text("200 shown")

    opened.get_by_label("Channel").select_option(label="stable")
    for name, column in {"Version": 1, "Behaviors": 4, "Findings": 10}.items():
        cells = opened.locator(f"#table tbody tr td:nth-child({column + 1})")
        for order, sign in (("ascending", 1), ("descending", -1)):
            header = opened.get_by_role("columnheader", name=name)
            header.get_by_role("button").focus()
            opened.keyboard.press("Enter")
            assert header.get_attribute("aria-sort") == order
            assert opened.locator("[aria-sort]").count() == 1
            values = [text for text in cells.all_inner_texts() if text]
            if name != "Findings":
                keys = [tuple(map(int, text.split("."))) for text in values]
                assert len(keys) > 60 and keys == sorted(keys, reverse=sign < 0)
    opened.get_by_role("link", name="Museum Guide", exact=True).click()
    opened.get_by_role("link", name="All packages").click()
    assert opened.get_by_label("Channel").locator("option:checked").inner_text() in ("any", "stable")


def test_a_keyboard_is_enough(opened: Page, site: Path) -> None:
    opened.goto(f"{site.as_uri()}/{named(site, 'b58e2d14')}")
    opened.keyboard.press("Tab")
    assert opened.evaluate("document.activeElement.className") == "skip"
    outline = "getComputedStyle(document.activeElement).outlineStyle"
    assert opened.evaluate(f"document.activeElement.getBoundingClientRect().left >= 0 && {outline} !== 'none'")
    opened.keyboard.press("Enter")
    assert opened.url.endswith("#main")
    focused = set()
    for _ in range(60):
        opened.keyboard.press("Tab")
        focused.add(opened.evaluate("document.activeElement.outerHTML"))
        assert opened.evaluate(f"document.activeElement === document.body || {outline} !== 'none'")
    every = opened.locator("a[href]:not(.skip), summary, [tabindex='0']").evaluate_all("all => all.map(e => e.outerHTML)")
    assert set(every) - focused <= set(opened.locator("header a").evaluate_all("all => all.map(e => e.outerHTML)"))


def test_an_index_needs_no_script(browser: Browser, site: Path) -> None:
    context = browser.new_context(java_script_enabled=False)
    page = context.new_page()
    page.goto(f"{site.as_uri()}/index.html")
    assert page.locator("#table tbody tr").count() == COUNT + 6
    assert not page.locator("#filters").is_visible() and not page.locator("#more").is_visible()
    context.close()
