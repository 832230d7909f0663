// What is known of one result, the buttons that turn the part, and the form for paper.

function gauge(finding, verdict) {
  const {measured, limit} = finding;
  if (measured === undefined || limit === undefined || measured < 0 || limit < 0) return null;
  const most = 1.15 * Math.max(measured, limit) || 1;
  const percent = (value) => `${100 * value / most}%`;
  return element("div", {class: "gauge", style: toneOf(verdict), "aria-hidden": "true"},
    element("i", {style: `width: ${percent(measured)}`}), element("s", {style: `left: ${percent(limit)}`}),
    element("span", {style: `left: clamp(2rem, ${percent(limit)}, calc(100% - 4rem))`},
            tr("limit {0}", withUnit(limit, finding.unit))));
}

function pairs(list) {
  const shown = list.filter(([, value]) => value !== undefined && value !== "" && value !== null);
  return element("dl", {}, ...shown.flatMap(([name, value]) => [element("dt", {}, name), element("dd", {}, value)]));
}

function waiverText(waiver) {
  const by = waiver.kind === "baseline" ? tr("It was there before: it is in the baseline.")
    : waiver.author ? tr("Accepted by {0}: {1}", waiver.author, waiver.reason || "")
    : tr("Accepted: {0}", waiver.reason || "");
  const until = waiver.expires ? " " + tr("Until {0}.", waiver.expires) : "";
  return element("p", {class: "waiver"}, by + until + (waiver.place ? ` (${waiver.place})` : ""));
}

function placeButtons(finding, choose) {
  const places = finding.places || [];
  return places.length < 2 ? [] : places.map((place, i) => {
    const button = element("button", {type: "button", class: "place"}, place.label || `${tr(place.kind)} ${i + 1}`);
    button.addEventListener("click", () => choose(place));
    return button;
  });
}

function measures(finding, verdict) {
  return [finding.measured === undefined && finding.limit === undefined ? null
            : pairs([[tr("Measured"), withUnit(finding.measured, finding.unit)],
                     [tr("Limit"), withUnit(finding.limit, finding.unit)]]),
          gauge(finding, verdict)];
}

/** Fills `host` with a row; `choose` is called with a place that the user wants to see. */
function showDetail(host, row, choose) {
  const {part, rule, finding, verdict} = row;
  const content = [
    element("h2", {}, rule.name),
    element("p", {}, element("span", {class: "verdict", style: toneOf(verdict)}, VERDICTS[rank(row)].text),
            ` \u00b7 ${row.severity}` + (rule.category ? ` \u00b7 ${rule.category}` : "")),
    element("p", {}, row.message)];
  if (finding) {
    content.push(...measures(finding, verdict), ...placeButtons(finding, choose));
    if (finding.waiver) content.push(waiverText(finding.waiver));
  }
  if (rule.description) content.push(element("h3", {}, tr("Rule")), element("p", {}, rule.description));
  if (rule.why) content.push(element("h3", {}, tr("Why")), element("p", {}, rule.why));
  if (rule.how) content.push(element("h3", {}, tr("How it is measured")), element("p", {}, rule.how));
  if (rule.source) content.push(element("h3", {}, tr("Source of the limit")), element("p", {}, rule.source));
  const notes = (rule.findings || []).filter((other) => other.note && row.finding);
  if (notes.length) content.push(element("h3", {}, tr("Notes")), ...notes.map((note) => element("p", {}, note.message)));
  if (finding && (rule.reasons || []).length)
    content.push(element("h3", {}, tr("About the run")), ...rule.reasons.map((reason) => element("p", {}, reason)));
  const parameters = (rule.parameters || []).filter((parameter) => parameter.on !== false);
  if (parameters.length)
    content.push(element("h3", {}, tr("Parameters")),
                 pairs(parameters.map((parameter) => [parameter.name || String(parameter.number),
                                                      (parameter.values || []).join(", ")])));
  content.push(element("h3", {}, tr("Origin")), pairs([
    [tr("Part"), part.path], [tr("Rule file"), rule.line ? `${rule.ruleFile}:${rule.line}` : rule.ruleFile],
    [tr("Made of"), (rule.components || []).map((component) => component.name).join(", ")],
    [tr("Fingerprint"), finding && finding.fingerprint], [tr("Took"), tr("{0} s", numberText(rule.seconds || 0))]]));
  host.replaceChildren(element("div", {class: "sheet"}, ...content.filter((item) => item)));
}

function makeViews(host, picture, view) {
  const directions = [[tr("Fit"), null], [tr("Front"), [0, -1, 0]], [tr("Back"), [0, 1, 0]], [tr("Left"), [-1, 0, 0]],
                      [tr("Right"), [1, 0, 0]], [tr("Top"), [0, 0, 1]], [tr("Bottom"), [0, 0, -1]]];
  for (const [name, direction] of directions) {
    const button = element("button", {type: "button"}, name);
    button.addEventListener("click", () => direction ? view.turnTo(direction) : view.fit());
    host.append(button);
  }
  const step = Math.PI / 12;
  const moves = {ArrowLeft: () => view.turnBy(-step, 0), ArrowRight: () => view.turnBy(step, 0),
                 ArrowUp: () => view.turnBy(0, step), ArrowDown: () => view.turnBy(0, -step),
                 "+": () => view.zoomBy(1.25), "-": () => view.zoomBy(0.8), Home: () => view.fit()};
  picture.addEventListener("keydown", (event) => {
    if (!moves[event.key]) return;
    event.preventDefault();
    moves[event.key]();
  });
}

/** The printed form: each part that has something to say, with a picture and its findings. */
function showPaper(page, rows) {
  const paper = byId("paper");
  paper.replaceChildren();
  let pictures = 0;
  for (const part of page.parts) {
    const own = rows.filter((row) => row.part === part && row.verdict !== "passed");
    const article = element("article", {}, element("h2", {}, part.path || tr("No part")));
    if (!own.length) {
      article.append(element("p", {}, tr("All rules passed.")));
    } else {
      if (pictures < PRINTED_PARTS) {
        const picture = paperPicture(page.surfaceOf(part), own);
        if (picture) { article.append(picture); pictures += 1; }
      }
      article.append(paperTable(own));
    }
    paper.append(article);
  }
}

function paperPicture(surface, rows) {
  const marked = [];
  rows.forEach((row, i) => {
    for (const place of row.finding && row.finding.places || [])
      marked.push({marks: marksOf(place, surface), label: String(i + 1), colour: row.verdict === "waived" ? "#5b5fa8" : "#c4281c"});
  });
  return surface.size || marked.length
    ? draw(surface, extentOf(surface, marked), marked, [0.8, -1, 0.7], 900, 380) : null;
}

function paperTable(rows) {
  const titles = ["", tr("Result"), tr("Severity"), tr("Rule"), tr("Finding"), tr("Measured"), tr("Limit")];
  return element("table", {}, element("thead", {}, element("tr", {}, ...titles.map((title) => element("th", {}, title)))),
    element("tbody", {}, ...rows.map((row, i) => element("tr", {}, ...[
      String(i + 1), VERDICTS[rank(row)].text, row.severity, row.rule.name,
      row.message + (row.finding && row.finding.waiver ? " " + tr("(waived: {0})", row.finding.waiver.reason || tr("baseline")) : ""),
      row.finding ? withUnit(row.finding.measured, row.finding.unit) : "",
      row.finding ? withUnit(row.finding.limit, row.finding.unit) : ""].map((text) => element("td", {}, text))))));
}
