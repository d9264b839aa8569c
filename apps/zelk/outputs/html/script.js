// SPDX-License-Identifier: Apache-2.0
"use strict";
(() => {
  const poor = 60;  // percent
  const doubtful = 80;
  const element = (id) => document.getElementById(id);

  // ---- pages: what lies over a picture is made when the page comes near the window ----

  // Start and length in the text, four edges in pixels, a confidence.
  function pieces(numbers) {
    const list = [];
    for (let at = 0; at < numbers.length; at += 7) {
      const [start, length, left, top, right, bottom, confidence] = numbers.slice(at, at + 7);
      list.push({ start, length, left, top, right, bottom, confidence });
    }
    return list;
  }

  const pages = Array.from(document.querySelectorAll(".page"), (section) => ({
    section,
    number: section.dataset.page,
    width: Number(section.style.getPropertyValue("--width")),
    height: Number(section.style.getPropertyValue("--height")),
    panel: section.querySelector(".text"),
    text: null,
    hits: [],
    svg: null,
  }));
  const pageOf = new Map(pages.map((page) => [page.section, page]));

  function textOf(page) {
    page.text ??= page.panel.textContent;
    return page.text;
  }

  function load(page) {
    if (page.words) return;
    const boxes = JSON.parse(page.section.querySelector("script").textContent);
    page.words = pieces(boxes.words);
    page.characters = pieces(boxes.characters);
  }

  const outline = (list) => list.map(({ left, top, right, bottom }) =>
    `M${left} ${top}H${right}V${bottom}H${left}Z`).join("");
  const grade = ({ confidence }) =>
    confidence < 0 || confidence >= doubtful ? "" : confidence < poor ? "poor" : "doubtful";
  const layers =
    ["doubtful", "poor", "words", "characters", "hits", "current", "word", "character"];

  function draw(page, layer, list) {
    page.svg.querySelector(`.${layer}`).setAttribute("d", outline(list));
  }

  function show(page) {
    if (page.svg) return;
    load(page);
    const svg = document.createElementNS("http://www.w3.org/2000/svg", "svg");
    svg.setAttribute("viewBox", `0 0 ${page.width} ${page.height}`);
    svg.setAttribute("preserveAspectRatio", "none");
    svg.setAttribute("tabindex", "0");
    svg.setAttribute("role", "group");
    svg.setAttribute("aria-label", `${page.words.length} words on page ${page.number}; ` +
      "left and right arrow keys go through them");
    for (const layer of layers) {
      const path = document.createElementNS("http://www.w3.org/2000/svg", "path");
      path.setAttribute("class", layer);
      svg.append(path);
    }
    page.svg = svg;
    page.section.querySelector(".picture").append(svg);
    for (const name of ["doubtful", "poor"]) {
      draw(page, name, page.words.filter((word) => grade(word) === name));
    }
    draw(page, "words", page.words);
    draw(page, "characters", page.characters);
    listen(page);
    mark(page);
  }

  function hide(page) {
    if (page.svg === null || page.svg === document.activeElement) return;
    page.svg.remove();
    page.svg = null;
  }

  const observer = new IntersectionObserver((entries) => {
    for (const { target, isIntersecting } of entries) {
      (isIntersecting ? show : hide)(pageOf.get(target));
    }
  }, { rootMargin: "100% 0px" });

  // ---- what is under the pointer, or chosen by key ----

  const tip = element("tip");
  let chosen = -1;

  function smallestAt(list, x, y) {
    let found = null;
    let smallest = Infinity;
    for (const piece of list) {
      const inside = x >= piece.left && x < piece.right && y >= piece.top && y < piece.bottom;
      const area = (piece.right - piece.left) * (piece.bottom - piece.top);
      if (inside && area < smallest) [found, smallest] = [piece, area];
    }
    return found;
  }

  const words = (page, piece) => textOf(page).substr(piece.start, piece.length);
  const certainty = ({ confidence }) =>
    confidence < 0 ? "confidence unknown" : `confidence ${confidence} %`;
  const place = ({ left, top, right, bottom }) => `box ${left}, ${top} – ${right}, ${bottom}`;

  function describe(page, piece) {
    const block = document.createElement("div");
    const name = document.createElement("b");
    name.textContent = words(page, piece);
    const facts = document.createElement("span");
    facts.textContent = `${certainty(piece)}, ${place(piece)}`;
    block.append(name, document.createElement("br"), facts);
    return block;
  }

  function point(page, word, character, x, y) {
    draw(page, "word", word ? [word] : []);
    draw(page, "character", character ? [character] : []);
    tip.hidden = !word && !character;
    if (tip.hidden) return;
    tip.replaceChildren(...[word, character].filter(Boolean).map((piece) => describe(page, piece)));
    const { width, height } = tip.getBoundingClientRect();
    tip.style.left = `${Math.max(8, Math.min(x + 16, innerWidth - width - 8))}px`;
    tip.style.top = `${y + 20 + height > innerHeight ? y - height - 12 : y + 20}px`;
  }

  function choose(page, step) {
    chosen = Math.max(0, Math.min(page.words.length - 1, chosen + step));
    const word = page.words[chosen];
    if (!word) return;
    const { left, top, width, height } = page.svg.getBoundingClientRect();
    const y = top + word.bottom * height / page.height;
    if (y < 120 || y > innerHeight - 120) scrollBy(0, y - innerHeight / 2);
    const lower = page.svg.getBoundingClientRect().top + word.bottom * height / page.height;
    point(page, word, null, left + word.left * width / page.width, lower);
    element("spoken").textContent = `${words(page, word)}, ${certainty(word)}, ${place(word)}`;
  }

  function listen(page) {
    const leave = () => point(page, null, null);
    page.svg.addEventListener("pointermove", (event) => {
      const { left, top, width, height } = page.svg.getBoundingClientRect();
      const x = (event.clientX - left) * page.width / width;
      const y = (event.clientY - top) * page.height / height;
      point(page, smallestAt(page.words, x, y), smallestAt(page.characters, x, y),
        event.clientX, event.clientY);
    });
    page.svg.addEventListener("pointerleave", leave);
    page.svg.addEventListener("focus", () => { chosen = -1; });
    page.svg.addEventListener("blur", leave);
    page.svg.addEventListener("keydown", (event) => {
      if (event.key === "Escape") leave();
      if (event.key !== "ArrowRight" && event.key !== "ArrowLeft") return;
      event.preventDefault();
      choose(page, event.key === "ArrowRight" ? 1 : -1);
    });
  }

  // ---- search ----

  const query = element("query");
  let hits = [];
  let current = -1;

  // Blanks match any blanks, and a word is found although a hyphen or, in Chinese, a line's end
  // divides it.
  function expression(text) {
    const blank = /\s/;
    const han = /\p{Script=Han}/u;
    let source = "";
    let before = "";
    for (const letter of text.trim()) {
      if (blank.test(letter)) {
        if (!blank.test(before)) source += "\\s+";
      } else {
        if (before && !blank.test(before)) {
          source += han.test(before) && han.test(letter) ? "\\s*" : "(?:-\\n)?";
        }
        source += letter.replace(/[\^$\\.*+?()[\]{}|\/]/, "\\$&");
      }
      before = letter;
    }
    return source && new RegExp(source, "giu");
  }

  // The text with its doubtful words and its hits marked.
  function markText(page) {
    const text = textOf(page);
    const grades = new Uint8Array(text.length);
    const numbers = new Int32Array(text.length);  // of hits, from 1
    for (const word of page.words) {
      grades.fill(["", "doubtful", "poor"].indexOf(grade(word)), word.start,
        word.start + word.length);
    }
    for (const hit of page.hits) numbers.fill(hit.number + 1, hit.start, hit.start + hit.length);
    const parts = [];
    for (let at = 0, end = 0; at < text.length; at = end) {
      while (end < text.length && grades[end] === grades[at] && numbers[end] === numbers[at]) ++end;
      let part = document.createTextNode(text.slice(at, end));
      const wrap = (name, kind) => {
        const outer = document.createElement(name);
        outer.className = kind;
        outer.append(part);
        part = outer;
      };
      if (grades[at]) wrap("span", ["", "doubtful", "poor"][grades[at]]);
      if (numbers[at]) wrap("mark", numbers[at] - 1 === current ? "current" : "");
      parts.push(part);
    }
    page.panel.replaceChildren(...parts);
  }

  const overlaps = (piece, hit) =>
    piece.start < hit.start + hit.length && hit.start < piece.start + piece.length;

  const union = (list) => ({
    left: Math.min(...list.map((piece) => piece.left)),
    top: Math.min(...list.map((piece) => piece.top)),
    right: Math.max(...list.map((piece) => piece.right)),
    bottom: Math.max(...list.map((piece) => piece.bottom)),
  });

  // One box for each word, round the characters that were found where the word has any.
  function boxesOf(page, hit) {
    const characters = page.characters.filter((piece) => overlaps(piece, hit));
    return page.words.filter((word) => overlaps(word, hit)).map((word) => {
      const found = characters.filter((piece) => overlaps(piece, word));
      return found.length ? union(found) : word;
    });
  }

  function mark(page) {
    if (!page.svg) return;
    const others = page.hits.filter((hit) => hit.number !== current);
    draw(page, "hits", others.flatMap((hit) => boxesOf(page, hit)));
    draw(page, "current", page.hits.filter((hit) => hit.number === current)
      .flatMap((hit) => boxesOf(page, hit)));
    markText(page);
  }

  function tell() {
    const count = new Set(hits.map((hit) => hit.page)).size;
    const where = `on ${count} page${count === 1 ? "" : "s"}`;
    const outcome = hits.length ? `${current + 1} of ${hits.length} ${where}` : "no hits";
    element("status").textContent = query.value.trim() ? outcome : "";
    element("previous").disabled = element("next").disabled = hits.length === 0;
  }

  function bringIntoSight(page) {
    page.section.scrollIntoView({ block: "nearest" });
    const marked = page.panel.querySelector(".current");
    const box = page.svg.querySelector(".current");
    const target = box.getAttribute("d") ? box : marked;
    if (!target) return;
    const { top, height } = target.getBoundingClientRect();
    scrollBy(0, top + height / 2 - innerHeight / 2);
    if (marked) page.panel.scrollTop = marked.offsetTop - page.panel.clientHeight / 2;
  }

  function go(to) {
    if (hits.length === 0) return;
    const left = hits[current]?.page;
    current = (to + hits.length) % hits.length;
    const { page } = hits[current];
    show(page);
    for (const changed of new Set([left, page])) if (changed) mark(changed);
    tell();
    bringIntoSight(page);
  }

  function search() {
    const wanted = expression(query.value);
    hits = [];
    current = -1;
    for (const page of pages) {
      const before = page.hits.length;
      page.hits = wanted === "" ? [] : Array.from(textOf(page).matchAll(wanted), (match) =>
        ({ page, start: match.index, length: match[0].length }));
      for (const hit of page.hits) hit.number = hits.push(hit) - 1;
      if (before || page.hits.length) mark(page);
    }
    tell();
    go(0);
  }

  // The address holds the query, so that a link leads to its hits.
  function searchFromAddress() {
    if (!location.hash.startsWith("#q=")) return;
    try {
      query.value = decodeURIComponent(location.hash.slice(3));
    } catch {
      query.value = location.hash.slice(3);
    }
    search();
  }

  let waiting = 0;
  query.addEventListener("input", () => {
    clearTimeout(waiting);
    waiting = setTimeout(() => {
      history.replaceState(null, "", `#q=${encodeURIComponent(query.value)}`);
      search();
    }, 150);
  });
  query.addEventListener("keydown", (event) => {
    if (event.key !== "Enter") return;
    event.preventDefault();
    go(current + (event.shiftKey ? -1 : 1));
  });
  element("search").addEventListener("submit", (event) => {
    event.preventDefault();
    go(current + 1);
  });
  element("previous").addEventListener("click", () => go(current - 1));
  element("boxes").addEventListener("click", (event) => {
    const outlined = document.body.classList.toggle("outlined");
    event.currentTarget.setAttribute("aria-pressed", String(outlined));
  });
  document.addEventListener("keydown", (event) => {
    if (event.key === "/" && event.target !== query) {
      event.preventDefault();
      query.focus();
    }
  });
  addEventListener("hashchange", searchFromAddress);

  if (pages.length) show(pages[0]);
  for (const { section } of pages) observer.observe(section);
  searchFromAddress();
})();
