// SPDX-License-Identifier: Apache-2.0
// Search, order and filters of the table of packages. Without this the table is whole, in the order
// of names.
"use strict";

const STEP = 200; // rows that are shown at once: a browser takes seconds to lay out thousands

// While the page is being read, the style hides the others.
document.documentElement.className = "being-read";
document.addEventListener("DOMContentLoaded", enhance);

function enhance() {
  const table = document.getElementById("table");
  const form = document.getElementById("filters");
  const hits = document.getElementById("hits");
  const more = document.getElementById("more");
  const input = (name) => document.getElementById(name) ?? { value: "" };
  // Letters that are no others with accents to Unicode, but are typed so.
  const bases = { ß: "ss", ø: "o", đ: "d", ð: "d", ł: "l", ħ: "h", ı: "i", æ: "ae", œ: "oe", ς: "σ" };
  const plain = (text) => text.normalize("NFKD").replace(/\p{M}/gu, "").toLowerCase()
    .replace(/[ßøđðłħıæœς]/g, (letter) => bases[letter]);
  const collator = new Intl.Collator("en", { numeric: true });

  const body = table.tBodies[0];
  const packages = Array.from(body.rows, (row) => ({
    row,
    text: plain(`${row.cells[0].textContent} ${row.dataset.q}`),
    languages: row.dataset.l.split(" "),
    channel: row.dataset.c,
    models: row.dataset.r.split(" "),
    ranges: row.dataset.m.split(" ").filter(Boolean),
    marks: row.dataset.f.split(" "),
    severities: Number(row.dataset.s),
  }));
  let found = packages;
  let shown = STEP;

  const runsOn = (ranges, version) =>
    ranges.some((range) => {
      const [from, to] = range.split(":");
      return (!from || Number(from) <= version) && (!to || version <= Number(to));
    });

  function filter() {
    const words = plain(input("search").value).split(/\s+/).filter(Boolean);
    const [language, channel, severity, model, mirel, mark] = [
      "language", "channel", "severity", "model", "mirel", "mark",
    ].map((name) => input(name).value);
    found = packages.filter((some) =>
      words.every((word) => some.text.includes(word)) &&
      (!language || some.languages.includes(language)) &&
      (!channel || some.channel === channel) &&
      (!severity || (severity === "0" ? !some.severities : some.severities & Number(severity))) &&
      (!model || some.models.includes(model)) &&
      (!mirel || runsOn(some.ranges, Number(mirel))) &&
      (!mark || some.marks.includes(mark)));
    shown = STEP;
    show();
  }

  function show() {
    body.replaceChildren(...found.slice(0, shown).map((some) => some.row));
    const rest = Math.max(0, found.length - shown);
    const number = (count) => count.toLocaleString("en");
    hits.textContent = `${number(found.length)} of ${number(packages.length)} packages` +
      (rest ? `, the first ${number(shown)} shown` : "");
    more.hidden = !rest;
  }

  function sortBy(header, column) {
    const isAscending = header.getAttribute("aria-sort") !== "ascending";
    for (const other of table.tHead.rows[0].cells) {
      other.removeAttribute("aria-sort");
    }
    header.setAttribute("aria-sort", isAscending ? "ascending" : "descending");
    const key = (cell) => cell.dataset.v ?? (cell.querySelector("a") ?? cell).textContent.trim();
    const keys = new Map(packages.map((some) => [some, key(some.row.cells[column])]));
    const direction = isAscending ? 1 : -1;
    packages.sort((one, other) => {
      const [a, b] = [keys.get(one), keys.get(other)];
      return !a || !b ? Number(!a) - Number(!b) : direction * collator.compare(a, b); // empty ones last
    });
    filter();
  }

  Array.from(table.tHead.rows[0].cells, (header, column) => {
    const button = document.createElement("button");
    button.type = "button";
    button.append(...header.childNodes);
    header.append(button);
    button.addEventListener("click", () => sortBy(header, column));
  });
  form.addEventListener("input", filter);
  form.addEventListener("submit", (event) => event.preventDefault());
  form.addEventListener("reset", () => setTimeout(filter));
  more.addEventListener("click", () => {
    const next = shown;
    shown += STEP;
    show();
    body.rows[next].querySelector("a").focus();
  });
  // A browser that comes back to the page fills the form in again; on paper all stands that was found.
  addEventListener("pageshow", filter);
  addEventListener("beforeprint", () => body.replaceChildren(...found.map((some) => some.row)));
  addEventListener("afterprint", show);
  form.hidden = hits.hidden = false;
  filter();
  document.documentElement.className = "";
}
