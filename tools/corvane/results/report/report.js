// The report: reads the results that the page carries, and shows them.

const VERDICTS = [
  {name: "failed", text: tr("Failed")}, {name: "error", text: tr("Could not judge")},
  {name: "notRun", text: tr("Not run")}, {name: "waived", text: tr("Waived")}, {name: "passed", text: tr("Passed")}];
const ROWS_A_PAGE = 300;
/** Parts with a picture in the printed form. */
const PRINTED_PARTS = 60;
const NOTE = "#1f6fd1";

const byId = (id) => document.getElementById(id);

/** An element with a text, and more elements below it. Texts of files never become markup. */
function element(name, attributes, ...content) {
  const made = document.createElement(name);
  for (const [key, value] of Object.entries(attributes || {}))
    if (value !== undefined && value !== null) made.setAttribute(key, value);
  made.append(...content.filter((part) => part !== null && part !== undefined));
  return made;
}

const toneOf = (verdict) => `--tone: var(--${verdict})`;
const colourOf = (verdict) => getComputedStyle(document.documentElement).getPropertyValue(`--${verdict}`).trim();
const numberText = (value) => value === undefined ? "" : String(Number(value.toPrecision(6)));
const withUnit = (value, unit) => value === undefined ? "" : numberText(value) + (unit ? "\u00a0" + unit : "");
const severityText = (severity) =>
  severity.name || (severity.number < 0 ? tr("none") : String(severity.number));
const fileOf = (path) => path ? path.split(/[\\/]/).pop() : tr("no part");

function readPage() {
  const parse = (node) => JSON.parse(node.textContent);
  const parts = [...document.querySelectorAll("script.part")].map(parse);
  const geometries = new Map();
  document.querySelectorAll("script.geometry").forEach((node) => geometries.set(Number(node.dataset.part), node));
  return {run: parse(byId("run-data")), end: parse(byId("end-data")), parts,
          surfaceOf: (part) => new Surface(geometries.has(part.number) ? parse(geometries.get(part.number)) : null)};
}

/** One row for each finding, and one for a result without any. */
function rowsOf(parts) {
  const rows = [];
  for (const part of parts)
    for (const rule of part.rules || []) {
      const findings = rule.findings || [];
      const shown = findings.some((finding) => !finding.note) ? findings.filter((finding) => !finding.note) : [null];
      for (const finding of shown) {
        const reasons = (rule.reasons || []).join("; ");
        const verdict = finding && finding.waiver ? "waived" : rule.verdict;
        const message = finding ? finding.message
          : reasons || findings.map((note) => note.message).join("; ");
        const severity = severityText(rule.severity);
        const text = [part.path, rule.name, rule.category, rule.description, rule.source, message, severity,
                      finding && finding.fingerprint].join("\n").toLowerCase();
        rows.push({part, rule, finding, verdict, message, severity, text});
      }
    }
  return rows;
}

const rank = (row) => VERDICTS.findIndex((verdict) => verdict.name === row.verdict);
const gravity = (row) => row.rule.severity.number < 0 ? Infinity : row.rule.severity.number;
const COLUMNS = [
  {id: "verdict", text: tr("Result"), key: rank,
   cell: (row) => element("span", {class: "verdict", style: toneOf(row.verdict)}, VERDICTS[rank(row)].text)},
  {id: "severity", text: tr("Severity"), key: gravity, cell: (row) => row.severity},
  {id: "part", text: tr("Part"), key: (row) => row.part.number, cell: (row) => fileOf(row.part.path)},
  {id: "rule", text: tr("Rule"), key: (row) => row.rule.name, cell: (row) => row.rule.name},
  {id: "category", text: tr("Category"), key: (row) => row.rule.category || "", cell: (row) => row.rule.category || ""},
  {id: "message", text: tr("Finding"), key: (row) => row.message, cell: (row) => row.message},
  {id: "measured", text: tr("Measured"), number: true, key: (row) => row.finding && row.finding.measured,
   cell: (row) => row.finding ? withUnit(row.finding.measured, row.finding.unit) : ""},
  {id: "limit", text: tr("Limit"), number: true, key: (row) => row.finding && row.finding.limit,
   cell: (row) => row.finding ? withUnit(row.finding.limit, row.finding.unit) : ""}];
/** A column that says the same in every row takes room from the others. */
const columnsOf = (page) => COLUMNS.filter((column) => column.id !== "part" || page.parts.length > 1);

function compare(a, b) {
  const missing = (value) => value === undefined || value === null;
  if (missing(a) || missing(b)) return missing(a) - missing(b);
  return typeof a === "string" ? a.localeCompare(b) : a - b;
}

class Report {
  constructor(page) {
    this.page = page;
    this.columns = columnsOf(page);
    this.rows = rowsOf(page.parts);
    this.order = {column: COLUMNS[0], down: false};
    this.limit = ROWS_A_PAGE;
    this.verdicts = new Set(VERDICTS.map((verdict) => verdict.name).filter((name) => name !== "passed"));
    if (!this.rows.some((row) => this.verdicts.has(row.verdict))) this.verdicts.add("passed");
    this.view = makeView(byId("picture"));
    this.showHead();
    this.showTiles();
    this.showBars("severity-table", tr("By severity"), (row) => row.severity, gravity);
    this.showBars("category-table", tr("By category"), (row) => row.rule.category || tr("none"), () => 0);
    this.makeFilters();
    this.makeTable();
    makeViews(byId("views"), byId("picture"), this.view);
    this.showRows();
    this.choose(this.shown[0]);
    const print = () => showPaper(page, this.rows);
    window.addEventListener("beforeprint", print);
    window.matchMedia("print").addEventListener("change", (event) => event.matches && print());
  }

  showHead() {
    const {run, end} = this.page;
    const count = run.parts === 1 ? fileOf(this.page.parts[0] && this.page.parts[0].path) : tr("{0} parts", run.parts);
    document.title = tr("Part check: {0}", count);
    const facts = [count, (run.ruleFiles || []).map((file) => fileOf(file.name)).join(", "),
                   run.started.replace("T", " ").replace("Z", " UTC"), `${run.tool.name} ${run.tool.version}`];
    if (end.database) facts.push(end.database);
    byId("run-facts").textContent = facts.filter((fact) => fact).join(" \u00b7 ");
    const notices = [...(end.notices || [])];
    if (end.interrupted) notices.unshift(tr("The run was interrupted: parts or rules are missing."));
    byId("notices").hidden = notices.length === 0;
    byId("notices").append(...notices.map((notice) => element("li", {}, notice)));
  }

  showTiles() {
    for (const {name, text} of VERDICTS) {
      const count = this.page.end.summary[name] || 0;
      const tile = element("button", {type: "button", style: toneOf(name), "data-verdict": name,
                                      "aria-pressed": this.verdicts.has(name)}, element("b", {}, String(count)), text);
      tile.addEventListener("click", () => {
        if (!this.verdicts.delete(name)) this.verdicts.add(name);
        tile.setAttribute("aria-pressed", this.verdicts.has(name));
        this.showRows();
      });
      byId("tiles").append(tile);
    }
  }

  showBars(id, title, nameOf, orderOf) {
    const groups = new Map();
    for (const row of this.rows) {
      const name = nameOf(row);
      if (!groups.has(name)) groups.set(name, {name, order: orderOf(row), counts: {}, all: 0, bad: 0});
      const group = groups.get(name);
      group.counts[row.verdict] = (group.counts[row.verdict] || 0) + 1;
      group.all += 1;
      group.bad += row.verdict === "failed" || row.verdict === "error";
    }
    const sorted = [...groups.values()].sort((a, b) => compare(a.order, b.order) || b.bad - a.bad || b.all - a.all);
    const most = Math.max(1, ...sorted.map((group) => group.all));
    const bars = element("div", {class: "bars"});
    for (const group of sorted.slice(0, 8)) {
      const bar = element("span", {class: "bar", "aria-hidden": "true", style: `width: ${100 * group.all / most}%`});
      for (const {name} of VERDICTS)
        if (group.counts[name]) bar.append(element("i", {style: `${toneOf(name)}; flex: ${group.counts[name]}`}));
      bars.append(element("span", {class: "name", title: group.name}, group.name), bar,
                  element("span", {class: "count"}, tr("{0} of {1}", group.bad, group.all)));
    }
    byId(id).className = "sheet";
    byId(id).append(element("h2", {}, tr("{0}: failed or not judged", title)), bars);
  }

  makeFilters() {
    const choices = (id, all, names) => {
      byId(id).append(element("option", {value: ""}, all),
                      ...names.map(([value, text]) => element("option", {value}, text)));
      byId(id).addEventListener("change", () => this.showRows());
    };
    const distinct = (nameOf) => [...new Set(this.rows.map(nameOf))].map((name) => [name, name]);
    choices("part-filter", tr("All parts"), this.page.parts.map((part) => [String(part.number), fileOf(part.path)]));
    choices("severity-filter", tr("All severities"), distinct((row) => row.severity));
    choices("category-filter", tr("All categories"), distinct((row) => row.rule.category || "").filter(([name]) => name));
    byId("part-filter").hidden = this.page.parts.length < 2;
    byId("search").addEventListener("input", () => this.showRows());
    byId("filters").addEventListener("submit", (event) => event.preventDefault());
    byId("more").addEventListener("click", () => { this.limit += ROWS_A_PAGE; this.fill(); });
    document.addEventListener("keydown", (event) => {
      if (event.key !== "/" || /^(input|select|textarea)$/i.test(event.target.tagName)) return;
      event.preventDefault();
      byId("search").focus();
    });
  }

  makeTable() {
    const head = element("tr");
    for (const column of this.columns) {
      const button = element("button", {type: "button"}, column.text);
      button.addEventListener("click", () => {
        this.order = {column, down: this.order.column === column && !this.order.down};
        this.showRows();
      });
      column.head = element("th", {scope: "col", class: column.number ? "number" : null}, button);
      head.append(column.head);
    }
    document.querySelector("#rows thead").append(head);
    document.querySelector("#rows tbody").addEventListener("keydown", (event) => this.moveInTable(event));
  }

  moveInTable(event) {
    const row = event.target.closest("tr");
    if (!row) return;
    const next = {ArrowDown: row.nextElementSibling, ArrowUp: row.previousElementSibling,
                  Home: row.parentNode.firstElementChild, End: row.parentNode.lastElementChild}[event.key];
    if (next) next.click();
    else if (event.key === "Enter" || event.key === " ") row.click();
    else return;
    event.preventDefault();
  }

  showRows() {
    const words = byId("search").value.toLowerCase().split(/\s+/).filter((word) => word);
    const [part, severity, category] =
      ["part-filter", "severity-filter", "category-filter"].map((id) => byId(id).value);
    this.shown = this.rows.filter((row) => this.verdicts.has(row.verdict) &&
      (!part || String(row.part.number) === part) && (!severity || row.severity === severity) &&
      (!category || row.rule.category === category) && words.every((word) => row.text.includes(word)));
    const {column, down} = this.order;
    this.shown.sort((a, b) => (down ? -1 : 1) * compare(column.key(a), column.key(b)) ||
                              gravity(a) - gravity(b) || a.part.number - b.part.number);
    for (const other of this.columns) other.head.removeAttribute("aria-sort");
    column.head.setAttribute("aria-sort", down ? "descending" : "ascending");
    byId("shown").textContent = tr("{0} of {1}", this.shown.length, this.rows.length);
    this.limit = ROWS_A_PAGE;
    this.fill();
  }

  fill() {
    const body = document.querySelector("#rows tbody");
    body.replaceChildren(...this.shown.slice(0, this.limit).map((row) => this.line(row)));
    if (!this.shown.length)
      body.append(element("tr", {}, element("td", {class: "empty", colspan: this.columns.length}, tr("No result matches."))));
    else if (!body.querySelector('[tabindex="0"]')) body.firstElementChild.tabIndex = 0;
    byId("more").hidden = this.shown.length <= this.limit;
  }

  line(row) {
    const chosen = row === this.chosen;
    const line = element("tr", {"aria-selected": chosen, tabindex: chosen ? 0 : -1},
      ...this.columns.map((column) =>
        element("td", {class: column.number ? "number" : `of-${column.id}`}, column.cell(row))));
    line.addEventListener("click", () => {
      for (const other of line.parentNode.children) { other.setAttribute("aria-selected", false); other.tabIndex = -1; }
      line.setAttribute("aria-selected", true);
      line.tabIndex = 0;
      line.focus();
      this.choose(row);
    });
    row.line = line;
    return line;
  }

  choose(row) {
    this.chosen = row;
    if (!row) return;
    if (row.line) { row.line.setAttribute("aria-selected", true); row.line.tabIndex = 0; }
    if (this.part !== row.part) {
      this.part = row.part;
      this.surface = this.page.surfaceOf(row.part);
      this.view.show(this.surface);
    }
    showDetail(byId("detail"), row, (place) => this.mark(row, place));
    this.mark(row, null);
  }

  /** Marks all places of a row's finding, or one of them, and turns the part to the first. */
  mark(row, only) {
    const marked = [];
    const findings = row.finding ? [row.finding] : row.rule.findings || [];
    for (const finding of findings)
      for (const place of finding.places || [])
        if (!only || place === only)
          marked.push({marks: marksOf(place, this.surface), label: place.label || "",
                       colour: finding.note ? NOTE : colourOf(row.verdict)});
    const seen = marked.find(({marks}) => marks.anchor);
    if (seen) { marked.splice(marked.indexOf(seen), 1); marked.unshift(seen); }
    this.view.mark(marked, seen ? viewOf(seen.marks, this.surface) : null);
    const note = !this.surface.size && !seen ? tr("No picture of this part.") : seen ? "" : tr("This result names no place.");
    byId("stage-note").textContent = note;
    byId("stage-note").hidden = !note;
  }
}

function startTheme() {
  const dark = window.matchMedia("(prefers-color-scheme: dark)");
  const set = (isDark) => { document.documentElement.dataset.theme = isDark ? "dark" : "light"; };
  set(dark.matches);
  dark.addEventListener("change", () => set(dark.matches));
  byId("theme").addEventListener("click", () => set(document.documentElement.dataset.theme !== "dark"));
}

startTheme();
window.report = new Report(readPage());
