"use strict";
// Draws the page from the runs that it carries. Every text of a run goes in as a text node, never
// as markup.
(() => {
  const runs = JSON.parse(document.getElementById("runs").textContent);
  const letters = ["A", "B"];
  const hasTwo = runs.length > 1;

  // ---- elements ----

  function fill(element, attributes, children) {
    for (const [name, value] of Object.entries(attributes)) element.setAttribute(name, value);
    for (const child of children) if (child !== null) element.append(child);
    return element;
  }
  const make = (name, attributes = {}, ...children) =>
    fill(document.createElement(name), attributes, children);
  const draw = (name, attributes = {}, ...children) =>
    fill(document.createElementNS("http://www.w3.org/2000/svg", name), attributes, children);
  const place = (id) => document.getElementById(id);

  // ---- functions, those of the same name and role side by side ----

  const plural = (count, word) => `${count} ${word}${count === 1 ? "" : "s"}`;
  const keyOf = (signal, role) => `${signal.toUpperCase()} ${role}`;
  const functions = new Map();
  runs.forEach((run, r) => {
    for (const signal of run.signals) {
      for (const part of signal.functions) {
        const key = keyOf(signal.name, part.role);
        const label = part.role === "main" ? signal.name : `${signal.name} (${part.role})`;
        if (!functions.has(key)) functions.set(key, { key, label, order: functions.size, runs: [] });
        functions.get(key).runs[r] = { signal, part };
      }
    }
  });
  const list = [...functions.values()];
  const beforeOf = (f) => f.runs.map((side) => side?.part.before).find((before) => before) ?? null;
  const afterOf = (f, r) => f.runs[r]?.part.after ?? null;
  const limit = Math.max(0, ...runs.map((run) => run.limit ?? 0));

  function remarks(f, r) {
    const side = f.runs[r];
    if (!side) return [];
    const tags = [];
    if (side.part.given_up) tags.push(["given up", "bad", side.part.given_up.why]);
    if (side.signal.removed_by !== null) tags.push(["removed", "", side.signal.removed_by]);
    if (side.signal.made_by !== "build") tags.push(["new node", "node", side.signal.made_by]);
    if (side.signal.register && side.part.role === "main") tags.push([side.signal.register, "", "register"]);
    if (side.part.after?.xor) {
      const halves = side.part.after.columns.map((column) => column.terms).join(" + ");
      tags.push([`XOR ${halves}`, "xor", "terms of the halves"]);
    }
    const gaveTerms = (state, i, all) => /^(split|factor) /.test(state.step) && i > 0 && state.terms < all[i - 1].terms;
    if (side.part.before && side.part.history.some(gaveTerms)) {
      tags.push(["split", "", "nodes took terms over"]);
    }
    if (side.part.minimized.length > 0) tags.push(["minimized", "", "by --minimize"]);
    return tags;
  }

  function setOf(f, r) {
    const choice = f.runs[r]?.part.choice;
    if (!choice) return "";
    return `${choice.set.toUpperCase()} ${choice.told_by ?? choice.why}`;
  }

  function change(from, to, isCost = true) {
    if (from === to) return make("span", { class: "none" }, "=");
    const percent = from === 0 ? "" : ` ${to > from ? "+" : "−"}${Math.round(100 * Math.abs(to - from) / from)} %`;
    return make("span", { class: !isCost ? "none" : to > from ? "up" : "down" }, `${to > from ? "▲" : "▼"}${percent}`);
  }

  // ---- head and totals ----

  function showHead() {
    const head = place("head");
    head.append(make("h1", {}, "ostrel report"));
    runs.forEach((run, r) => {
      const proof = run.proven ? make("span", { class: "badge good" }, "proven") : null;
      const fault = run.exit_code !== 0 ? make("span", { class: "badge bad" }, `exit code ${run.exit_code}`) : null;
      head.append(make("div", { class: "run" },
        hasTwo ? make("span", { class: `badge run${r}` }, letters[r]) : null,
        make("strong", {}, `${run.input.name} → ${run.output.name}`),
        make("code", {}, run.command.slice(1).join(" ")), proof, fault,
        make("span", { class: "badge" }, `ostrel ${run.version}`)));
    });
    if (hasTwo && runs[0].input.sha256 !== runs[1].input.sha256) {
      head.append(make("div", { class: "run" }, make("span", { class: "badge bad" }, "the inputs differ")));
    }
  }

  function showTotals() {
    const names = { terms: "terms of all functions", widest: "most terms of a function", rows: "rows of the file",
                    literals: "literals", functions: "functions", nodes: "nodes", xor_pairs: "XOR pairs",
                    depth: "depth" };
    const head = make("tr", {}, make("th"), make("th", { class: "n" }, "before"));
    runs.forEach((run, r) => head.append(make("th", { class: "n" }, hasTwo ? `after, ${letters[r]}` : "after"), make("th")));
    const costs = ["terms", "widest", "rows", "literals"];
    const body = make("tbody");
    for (const [name, text] of Object.entries(names)) {
      const row = make("tr", {}, make("td", {}, text), make("td", { class: "n" }, runs[0].before[name]));
      for (const run of runs) {
        row.append(make("td", { class: "n" }, run.after[name]), make("td", {}, change(run.before[name], run.after[name], costs.includes(name))));
      }
      body.append(row);
    }
    place("totals").append(make("table", {}, make("thead", {}, head), body));
  }

  // ---- the list of functions ----

  const widest = Math.max(1, limit, ...list.flatMap((f) =>
    [beforeOf(f), ...runs.map((run, r) => afterOf(f, r))].map((side) => side?.terms ?? 0)));
  const logarithmic = place("log");
  logarithmic.checked = limit > 0 && widest > 8 * limit;
  const widthOf = (terms) =>
    100 * (logarithmic.checked ? Math.log(terms + 1) / Math.log(widest + 1) : terms / widest);

  function barOf(kind, side) {
    if (!side) return null;
    return make("div", { class: "bar", title: plural(side.terms, "term") },
      make("i", { class: kind, style: `width: ${widthOf(side.terms).toFixed(2)}%` }));
  }

  const least = (value) => value ?? -1;
  const columns = [
    { name: "function", value: (f) => f.label, cell: (f) => f.label },
    { name: "before", number: true, value: (f) => least(beforeOf(f)?.terms), cell: (f) => beforeOf(f)?.terms ?? "–" },
    ...runs.map((run, r) => ({ name: hasTwo ? `after ${letters[r]}` : "after", number: true,
      value: (f) => least(afterOf(f, r)?.terms), cell: (f) => afterOf(f, r)?.terms ?? "–" })),
    { name: "terms", bars: true, value: (f) => Math.max(...runs.map((run, r) => afterOf(f, r)?.terms ?? 0)) - (beforeOf(f)?.terms ?? 0) },
    ...runs.flatMap((run, r) => [
      { name: hasTwo ? `literals ${letters[r]}` : "literals", number: true,
        value: (f) => least(afterOf(f, r)?.literals), cell: (f) => afterOf(f, r)?.literals ?? "–" },
      { name: hasTwo ? `depth ${letters[r]}` : "depth", number: true,
        value: (f) => least(afterOf(f, r)?.depth), cell: (f) => afterOf(f, r) ? afterOf(f, r).depth ?? "loop" : "–" },
      { name: hasTwo ? `set ${letters[r]}` : "set", value: (f) => setOf(f, r), cell: (f) => setOf(f, r) },
      { name: hasTwo ? `what was done, ${letters[r]}` : "what was done",
        value: (f) => remarks(f, r).map((tag) => tag[0]).join(" "),
        cell: (f) => make("span", {}, ...remarks(f, r).map(([text, kind, why]) =>
          make("span", { class: `tag ${kind}`, title: why }, text))) }])];

  function rowOf(f) {
    const row = make("tr", { tabindex: "0", "data-key": f.key });
    for (const column of columns) {
      if (column.bars) {
        const bars = make("div", { class: "bars" }, barOf("before", beforeOf(f)),
          ...runs.map((run, r) => barOf(`run${r}`, afterOf(f, r))));
        if (limit > 0) bars.append(make("b", { style: `left: ${widthOf(limit).toFixed(2)}%`, title: `limit: ${limit}` }));
        row.append(make("td", { class: "bars" }, bars));
      } else {
        row.append(make("td", column.number ? { class: "n" } : {}, column.cell(f)));
      }
    }
    row.addEventListener("click", () => choose(f.key));
    row.addEventListener("keydown", (event) => { if (event.key === "Enter") choose(f.key); });
    return row;
  }

  let sortedBy = null;
  let descends = false;
  const words = new Intl.Collator("en", { numeric: true });

  function inOrder() {
    const sorted = [...list];
    if (sortedBy === null) return sorted;
    const by = (a, b) => {
      const x = sortedBy.value(a);
      const y = sortedBy.value(b);
      return typeof x === "number" ? x - y : words.compare(x, y);
    };
    return sorted.sort((a, b) => (descends ? -by(a, b) : by(a, b)) || a.order - b.order);
  }

  function isShown(f) {
    const isChanged = !place("changed").checked || runs.some((run, r) =>
      f.runs[r] && (f.runs[r].part.history.length > 1 || !f.runs[r].part.before || !f.runs[r].part.after));
    return isChanged && f.label.toUpperCase().includes(place("filter").value.toUpperCase());
  }

  function showList() {
    const body = document.querySelector("#list tbody");
    body.replaceChildren(...inOrder().filter(isShown).map(rowOf));
    document.querySelectorAll("#list th").forEach((cell, i) => {
      if (columns[i] === sortedBy) cell.setAttribute("aria-sort", descends ? "descending" : "ascending");
      else cell.removeAttribute("aria-sort");
    });
    mark();
  }

  function prepareList() {
    const head = make("tr");
    for (const column of columns) {
      const button = make("button", { type: "button" }, column.name);
      button.addEventListener("click", () => {
        descends = sortedBy === column ? !descends : Boolean(column.number);
        sortedBy = column;
        showList();
      });
      head.append(make("th", column.number ? { class: "n" } : {}, button));
    }
    document.querySelector("#list thead").append(head);
    place("filter").addEventListener("input", showList);
    for (const id of ["changed", "log"]) place(id).addEventListener("change", showList);
    const legend = place("legend");
    legend.append(make("span", { class: "key before" }), "before");
    runs.forEach((run, r) => legend.append(make("span", { class: `key run${r}` }), hasTwo ? `after, ${letters[r]}` : "after"));
    if (limit > 0) legend.append(make("span", { class: "key limit" }), `limit ${limit}`);
    showList();
  }

  // ---- the graph: a column for each depth, who is read stands on the left ----

  const boxHeight = 18;
  const rowStep = 24;
  const gap = 70;

  function graphOf(run, r) {
    const vertices = new Map();
    for (const signal of run.signals) {
      const main = signal.functions.find((part) => part.after);
      if (!main) continue;
      const written = signal.functions.filter((part) => part.after);
      const reads = new Set(written.flatMap((part) => part.after.reads.map((name) => name.toUpperCase())));
      const lead = signal.functions.find((part) => part.role === "main" && part.after) ?? main;
      vertices.set(signal.name.toUpperCase(), { signal, reads, readers: [], key: keyOf(signal.name, lead.role),
        terms: lead.after.terms, level: lead.after.depth });
    }
    for (const [name, vertex] of vertices) {
      vertex.reads = [...vertex.reads].filter((read) => vertices.has(read));
      for (const read of vertex.reads) vertices.get(read).readers.push(name);
    }
    for (const [name, vertex] of vertices) {
      if (vertex.reads.length === 0 && vertex.readers.length === 0) vertices.delete(name);
    }
    // What stands behind a loop has no depth: it goes behind all others.
    const last = Math.max(0, ...[...vertices.values()].map((vertex) => vertex.level ?? 0));
    for (const vertex of vertices.values()) {
      vertex.column = vertex.level === null ? "behind a loop" : `depth ${vertex.level}`;
      vertex.level ??= last + 1;
    }
    return vertices;
  }

  function layOut(vertices) {
    const levels = new Map();
    for (const vertex of vertices.values()) {
      if (!levels.has(vertex.level)) levels.set(vertex.level, []);
      levels.get(vertex.level).push(vertex);
    }
    const filled = [...levels.keys()].sort((a, b) => a - b).map((level) => levels.get(level));
    for (let sweep = 0; sweep < 4; ++sweep) {
      const isForward = sweep % 2 === 0;
      for (const level of isForward ? filled : [...filled].reverse()) {
        for (const vertex of level) {
          const near = (isForward ? vertex.reads : vertex.readers).map((name) => vertices.get(name))
            .filter((other) => other.y !== undefined && other.level !== vertex.level);
          vertex.middle = near.length > 0 ? near.reduce((sum, other) => sum + other.y, 0) / near.length : vertex.y ?? 0;
        }
        level.sort((a, b) => a.middle - b.middle);
        level.forEach((vertex, i) => { vertex.y = (i + 0.5) / level.length; });
      }
    }
    const height = Math.max(...filled.map((level) => level.length)) * rowStep;
    let x = 10;
    for (const level of filled) {
      level.x = x;
      level.width = Math.max(...level.map((vertex) => labelOf(vertex).length)) * 6.3 + 14;
      for (const vertex of level) Object.assign(vertex, { x, width: level.width, y: 24 + vertex.y * height });
      x += level.width + gap;
    }
    return { levels: filled, width: x - gap + 10, height: height + 40 };
  }

  const labelOf = (vertex) => `${vertex.signal.name.slice(0, 24)} · ${vertex.terms}`;

  function edgeOf(from, to) {
    const x1 = from.x + from.width;
    const isBack = from.level >= to.level;
    const bend = isBack ? 40 : (to.x - x1) / 2;
    const path = `M${x1} ${from.y.toFixed(1)} C${x1 + bend} ${from.y.toFixed(1)} ${to.x - bend} ${to.y.toFixed(1)} ${to.x} ${to.y.toFixed(1)}`;
    return draw("path", { class: isBack ? "edge back" : "edge", d: path, "data-from": from.key, "data-to": to.key });
  }

  function showGraph(run, r) {
    const vertices = graphOf(run, r);
    const side = make("div", {}, make("h3", {}, hasTwo ? `${letters[r]}: ${run.output.name}` : run.output.name));
    if (vertices.size === 0) {
      side.append(make("p", {}, "No function reads another one."));
      return side;
    }
    const { levels, width, height } = layOut(vertices);
    const svg = draw("svg", { width, height, role: "img", "aria-label": "Functions and what they read" });
    for (const level of levels) {
      svg.append(draw("text", { class: "level", x: level.x, y: 12 }, level[0].column));
    }
    for (const vertex of vertices.values()) {
      for (const read of vertex.reads) svg.append(edgeOf(vertices.get(read), vertex));
    }
    for (const vertex of vertices.values()) {
      const kind = vertex.signal.kind === "node" ? "node" : vertex.signal.register ? "register" : "pin";
      const box = draw("g", { class: `vertex ${kind}`, "data-key": vertex.key, tabindex: "0" },
        draw("title", {}, `${vertex.signal.name}: ${plural(vertex.terms, "term")}, read by ${vertex.readers.length}`),
        draw("rect", { x: vertex.x, y: vertex.y - boxHeight / 2, width: vertex.width, height: boxHeight, rx: 4 }),
        draw("text", { x: vertex.x + 7, y: vertex.y + 4 }, labelOf(vertex)));
      box.addEventListener("click", (event) => { event.stopPropagation(); choose(vertex.key); });
      box.addEventListener("keydown", (event) => { if (event.key === "Enter") choose(vertex.key); });
      svg.append(box);
    }
    const frame = make("div", { class: "graph" }, svg);
    frame.addEventListener("click", () => choose(null));
    const alone = run.signals.filter((signal) => signal.functions.some((part) => part.after)).length - vertices.size;
    side.append(frame, make("p", { class: "none" },
      `Name and terms; nodes are green, registers yellow; a dashed line goes back.` +
      (alone > 0 ? ` ${plural(alone, "signal")} that neither read others nor are read are left out.` : "")));
    return side;
  }

  // ---- what was chosen ----

  let chosen = null;

  function mark() {
    for (const row of document.querySelectorAll("#list tbody tr")) {
      row.classList.toggle("chosen", row.dataset.key === chosen);
    }
    for (const graph of document.querySelectorAll(".graph")) {
      const near = new Set([chosen]);
      const isThere = [...graph.querySelectorAll(".vertex")].some((vertex) => vertex.dataset.key === chosen);
      for (const edge of graph.querySelectorAll(".edge")) {
        const isIn = isThere && edge.dataset.to === chosen;
        const isOut = isThere && edge.dataset.from === chosen;
        edge.classList.toggle("lit", isIn || isOut);
        edge.classList.toggle("out", isOut);
        edge.classList.toggle("faded", isThere && !isIn && !isOut);
        if (isIn) near.add(edge.dataset.from);
        if (isOut) near.add(edge.dataset.to);
      }
      for (const vertex of graph.querySelectorAll(".vertex")) {
        vertex.classList.toggle("chosen", vertex.dataset.key === chosen);
        vertex.classList.toggle("faded", isThere && !near.has(vertex.dataset.key));
      }
    }
  }

  // Scrolls the list and the graphs, and not the page, to what was chosen.
  function reveal() {
    for (const frame of document.querySelectorAll(".scroll, .graph")) {
      const one = frame.querySelector(".chosen");
      if (!one) continue;
      const inner = one.getBoundingClientRect();
      const outer = frame.getBoundingClientRect();
      if (inner.top < outer.top + 30 || inner.bottom > outer.bottom) frame.scrollTop += inner.top - outer.top - outer.height / 2;
      if (inner.left < outer.left || inner.right > outer.right) frame.scrollLeft += inner.left - outer.left - outer.width / 2;
    }
  }

  function productOf(run, number) {
    const row = run.rows[number - 1];
    if (row.length === 0) return "1";
    return row.map((literal) => (literal < 0 ? "!" : "") + run.columns[Math.abs(literal) - 1]).join(" · ");
  }

  function linkTo(name) {
    const f = list.find((other) => other.key.startsWith(`${name.toUpperCase()} `));
    const button = make("button", { type: "button" }, name);
    button.addEventListener("click", () => choose(f ? f.key : null));
    return button;
  }

  function historyOf(part) {
    const text = (state) => state.xor ? `pair of ${state.on}` :
      [state.on > 0 || state.off === 0 ? `${state.on} ON` : "", state.off > 0 ? `${state.off} OFF` : ""].filter((s) => s).join(", ") +
      (state.inverted ? ", inverted" : "");
    return make("table", {}, ...part.history.map((state) =>
      make("tr", {}, make("td", { class: "n" }, state.step), make("td", {}, text(state)))));
  }

  function sideOf(run, r, f) {
    const side = make("div");
    const { signal, part } = f.runs[r];
    if (hasTwo) side.append(make("h3", {}, make("span", { class: `badge run${r}` }, letters[r])));
    side.append(make("p", {}, ...remarks(f, r).map(([text, kind, why]) => make("span", { class: `tag ${kind}`, title: why }, text))));
    if (part.given_up) side.append(make("p", { class: "up" }, `Not written: ${part.given_up.why} (${part.given_up.by}).`));
    if (part.after) {
      const { terms, literals, support, depth } = part.after;
      side.append(make("p", {}, `${plural(terms, "term")}, ${plural(literals, "literal")} over ${plural(support, "column")}, depth ${depth ?? "of a loop"}; set ${setOf(f, r)}.`));
      if (part.after.reads.length > 0) side.append(make("h3", {}, "Reads"), make("p", {}, ...part.after.reads.map(linkTo)));
    }
    const readers = run.signals.filter((other) => other.functions.some((p) =>
      p.after?.reads.some((name) => name.toUpperCase() === signal.name.toUpperCase())));
    if (part.role === "main" && readers.length > 0) {
      side.append(make("h3", {}, "Read by"), make("p", {}, ...readers.map((reader) => linkTo(reader.name))));
    }
    for (const column of part.after?.columns ?? []) {
      side.append(make("h3", {}, column.name), make("table", { class: "terms" }, ...(column.rows ?? []).map((number) =>
        make("tr", { title: `row ${number} of the file` }, make("td", { class: "n" }, number), make("td", {}, productOf(run, number))))));
    }
    side.append(make("h3", {}, "Step by step"), historyOf(part));
    if (signal.messages.length > 0) {
      side.append(make("h3", {}, "Messages"), ...signal.messages.map((m) => make("p", {}, run.messages[m].text)));
    }
    return side;
  }

  function choose(key) {
    chosen = key === chosen ? null : key;
    const f = functions.get(chosen);
    const detail = place("detail");
    detail.hidden = !f;
    document.body.classList.toggle("open", Boolean(f));
    mark();
    if (!f) return;
    const close = make("button", { type: "button", class: "close", "aria-label": "Close" }, "×");
    close.addEventListener("click", () => choose(null));
    const before = beforeOf(f);
    detail.replaceChildren(close, make("h2", {}, f.label),
      make("p", {}, before ? `${plural(before.terms, "term")}, ${plural(before.literals, "literal")} before.` : "Made in the run."),
      ...runs.map((run, r) => f.runs[r] ? sideOf(run, r, f) : null).filter((side) => side));
    detail.scrollTop = 0;
    reveal();
  }

  // ---- time and messages ----

  function showTimes(run, r) {
    const all = run.steps.reduce((sum, step) => sum + step.seconds, 0);
    const long = run.steps.filter((step) => step.seconds >= all / 200);
    const most = Math.max(...long.map((step) => step.seconds), 1e-9);
    const grid = make("div", { class: "time" });
    for (const step of long) {
      grid.append(make("span", {}, step.name), make("span", {}, `${(1000 * step.seconds).toFixed(2)} ms`),
        make("i", { class: `run${r}`, style: `width: ${(100 * step.seconds / most).toFixed(1)}%` }));
    }
    return make("div", {}, make("h3", {}, `${hasTwo ? letters[r] + ": " : ""}${(1000 * all).toFixed(2)} ms in all` +
      (long.length < run.steps.length ? `, ${run.steps.length - long.length} steps below half a percent each` : "")), grid);
  }

  function showMessages(run, r) {
    const count = plural(run.messages.length, "message");
    const entries = run.messages.map((message) => make("li", {}, `${message.kind}: ${message.text}`));
    const details = make("details", {}, make("summary", {}, hasTwo ? `${letters[r]}: ${count}` : count), make("ul", {}, ...entries));
    details.open = entries.length <= 20;
    return make("div", {}, details);
  }

  showHead();
  showTotals();
  prepareList();
  const fillSides = (id, show) => document.querySelector(`#${id} .sides`).append(...runs.map(show));
  fillSides("graphs", showGraph);
  fillSides("times", showTimes);
  fillSides("messages", showMessages);
  document.addEventListener("keydown", (event) => { if (event.key === "Escape") choose(null); });
})();
