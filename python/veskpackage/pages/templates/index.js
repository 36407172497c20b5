// SPDX-License-Identifier: Apache-2.0
// Search, order and filters of the table of packages, which stand in the address of the page: so they are
// there again when somebody comes back, and can be sent. Without this the table is whole, in the order of
// names.
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
  const fields = Array.from(form.querySelectorAll("input, select"));
  const headers = Array.from(table.tHead.rows[0].cells);
  const columns = headers.map((header) => header.textContent);
  const input = (name) => document.getElementById(name) ?? { value: "" };
  // Letters that are no others with accents to Unicode, but are typed so.
  const bases = { ß: "ss", ø: "o", đ: "d", ð: "d", ł: "l", ħ: "h", ı: "i", æ: "ae", œ: "oe", ς: "σ" };
  const plain = (text) => text.normalize("NFKD").replace(/\p{M}/gu, "").toLowerCase()
    .replace(/[ßøđðłħıæœς]/g, (letter) => bases[letter]);
  const collator = new Intl.Collator("en", { numeric: true });

  const body = table.tBodies[0];
  const packages = Array.from(body.rows, (row, place) => ({
    row,
    place,
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
  let column = 0;
  let direction = 1;

  // Ranges are in ranks of the versions that packages name; a version between two of them has half a rank.
  const numbers = (version) => version.split(".").map(Number);
  const scale = Array.from(document.querySelectorAll("#versions option"), (option) => numbers(option.value));
  function compare(one, other) {
    const differences = Array.from({ length: Math.max(one.length, other.length) },
      (_, index) => (one[index] ?? 0) - (other[index] ?? 0));
    return differences.find(Boolean) ?? 0;
  }
  function rank(version) {
    const asked = numbers(version);
    const before = scale.filter((known) => compare(known, asked) < 0).length;
    return scale.some((known) => !compare(known, asked)) ? before : before - 0.5;
  }
  const runsOn = (ranges, version) =>
    ranges.some((range) => {
      const [from, to] = range.split(":");
      return (!from || Number(from) <= version) && (!to || version <= Number(to));
    });

  function filter() {
    const words = plain(input("search").value).split(/\s+/).filter(Boolean);
    const [language, channel, severity, model, mark] = [
      "language", "channel", "severity", "model", "mark",
    ].map((name) => input(name).value);
    const mirel = input("mirel").validity?.valid && input("mirel").value.trim();
    const version = mirel ? rank(mirel) : null;
    found = packages.filter((some) =>
      words.every((word) => some.text.includes(word)) &&
      (!language || some.languages.includes(language)) &&
      (!channel || some.channel === channel) &&
      (!severity || (severity === "0" ? !some.severities : some.severities & Number(severity))) &&
      (!model || some.models.includes(model) || some.models.includes("any")) &&
      (version === null || runsOn(some.ranges, version)) &&
      (!mark || some.marks.includes(mark)));
    shown = STEP;
    show();
  }

  function show() {
    body.replaceChildren(...found.slice(0, shown).map((some) => some.row));
    const rest = Math.max(0, found.length - shown);
    const number = (count) => count.toLocaleString("en");
    hits.textContent = `${number(found.length)} of ${number(packages.length)} packages` +
      (rest ? `, the first ${number(shown)} shown` : "") +
      (form.checkValidity() ? "" : "; a version of Mirel is numbers and dots");
    more.hidden = !rest;
  }

  function remember() {
    const asked = new URLSearchParams();
    for (const field of fields) {
      // By its words, since numbers of choices change with the store.
      const words = field.value && field.selectedOptions ? field.selectedOptions[0].textContent : field.value;
      if (words) {
        asked.set(field.id, words);
      }
    }
    if (column || direction < 0) {
      asked.set("order", (direction < 0 ? "-" : "") + columns[column]);
    }
    history.replaceState(null, "", `#${asked}`);
  }

  // What an address says is a stranger's: it is compared, and set as the value of a field.
  function recall() {
    const asked = new URLSearchParams(location.hash.slice(1));
    for (const field of fields) {
      const words = asked.get(field.id) ?? "";
      const choice = Array.from(field.options ?? []).find((option) => option.value && option.textContent === words);
      field.value = field.options ? choice?.value ?? "" : words;
    }
    const order = asked.get("order") ?? "";
    direction = order.startsWith("-") ? -1 : 1;
    column = Math.max(0, columns.indexOf(order.replace(/^-/, "")));
    sort();
    filter();
  }

  function sort() {
    for (const header of headers) {
      header.removeAttribute("aria-sort");
    }
    headers[column].setAttribute("aria-sort", direction > 0 ? "ascending" : "descending");
    const key = (cell) => cell.dataset.v ?? (cell.querySelector("a") ?? cell).textContent.trim();
    const keys = new Map(packages.map((some) => [some, key(some.row.cells[column])]));
    packages.sort((one, other) => {
      const [a, b] = [keys.get(one), keys.get(other)];
      const difference = !a || !b ? Number(!a) - Number(!b) : direction * collator.compare(a, b); // empty ones last
      return difference || one.place - other.place;
    });
  }

  headers.forEach((header, index) => {
    const button = document.createElement("button");
    button.type = "button";
    button.append(...header.childNodes);
    header.append(button);
    button.addEventListener("click", () => {
      direction = index === column ? -direction : 1;
      column = index;
      sort();
      filter();
      remember();
    });
  });
  const ask = () => { filter(); remember(); };
  form.addEventListener("input", ask);
  form.addEventListener("submit", (event) => event.preventDefault());
  form.addEventListener("reset", () => setTimeout(ask));
  more.addEventListener("click", () => {
    const next = shown;
    shown += STEP;
    show();
    body.rows[next].querySelector("a").focus();
  });
  addEventListener("hashchange", () => (/^$|=/.test(location.hash) ? recall() : remember())); // or "#main"
  // Behind what a browser fills in by itself. A page that was kept as it was stays so.
  addEventListener("pageshow", (event) => {
    if (!event.persisted) {
      recall();
      document.documentElement.className = "";
    }
  });
  // On paper all stands that was found.
  addEventListener("beforeprint", () => body.replaceChildren(...found.map((some) => some.row)));
  addEventListener("afterprint", show);
  form.hidden = hits.hidden = false;
}
