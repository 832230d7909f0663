// The part as lines and areas, for browsers without WebGL and for paper.

/** Of more triangles only the largest are drawn. */
const MOST_DRAWN = 8000;
const SVG = "http://www.w3.org/2000/svg";

function svgElement(name, attributes, parent) {
  const element = document.createElementNS(SVG, name);
  for (const key of Object.keys(attributes)) element.setAttribute(key, attributes[key]);
  if (parent) parent.appendChild(element);
  return element;
}

class Projection {
  /** Looks against `direction` with z upward. */
  constructor(direction, extent, width, height) {
    this.back = unit(direction);
    const up = Math.abs(this.back[2]) > 0.999 ? [0, 1, 0] : [0, 0, 1];
    this.right = unit(cross(up, this.back));
    this.up = cross(this.back, this.right);
    this.centre = extent.centre;
    this.factor = 0.9 * Math.min(width, height) / (extent.diagonal || 1);
    this.middle = [width / 2, height / 2];
  }
  depth(point) { return dot(subtract(point, this.centre), this.back); }
  at(point) {
    const from = subtract(point, this.centre);
    return [this.middle[0] + this.factor * dot(from, this.right),
            this.middle[1] - this.factor * dot(from, this.up)].map((value) => value.toFixed(2)).join(" ");
  }
}

function drawSurface(svg, surface, projection) {
  const light = unit(add(scale(projection.back, 1), add(scale(projection.up, 0.7), scale(projection.right, -0.4))));
  let shown = [];
  for (let i = 0; i < surface.size; ++i) {
    const corners = surface.triangle(i);
    const normal = cross(subtract(corners[1], corners[0]), subtract(corners[2], corners[0]));
    if (dot(normal, projection.back) <= 0) continue;
    const depth = corners.reduce((sum, corner) => sum + projection.depth(corner), 0);
    shown.push({corners, depth, size: length(normal), shade: dot(unit(normal), light)});
  }
  if (shown.length > MOST_DRAWN) shown = shown.sort((a, b) => b.size - a.size).slice(0, MOST_DRAWN);
  shown.sort((a, b) => a.depth - b.depth);
  for (const {corners, shade} of shown) {
    const grey = Math.round(120 + 115 * Math.max(0, shade));
    const colour = `rgb(${grey - 14},${grey - 4},${Math.min(255, grey + 6)})`;
    svgElement("path", {d: "M" + corners.map((c) => projection.at(c)).join("L") + "Z",
                        fill: colour, stroke: colour, "stroke-width": 0.5}, svg);
  }
}

function drawMarks(svg, marks, projection, colour, label) {
  for (let i = 0; i + 2 < marks.triangles.length; i += 3)
    svgElement("path", {d: "M" + marks.triangles.slice(i, i + 3).map((c) => projection.at(c)).join("L") + "Z",
                        fill: colour, "fill-opacity": 0.55}, svg);
  for (const [from, to] of marks.lines)
    svgElement("path", {d: "M" + projection.at(from) + "L" + projection.at(to), stroke: colour,
                        "stroke-width": 2.5, "stroke-linecap": "round"}, svg);
  for (const point of marks.points) {
    const [x, y] = projection.at(point).split(" ");
    svgElement("circle", {cx: x, cy: y, r: 5, fill: colour, stroke: "#fff", "stroke-width": 1.5}, svg);
  }
  if (!marks.anchor || !label) return;
  const [x, y] = projection.at(marks.anchor).split(" ").map(Number);
  const text = svgElement("text", {x: x + 9, y: y + 4, "font-size": 13, fill: "#111", stroke: "#fff",
                                   "stroke-width": 3, "paint-order": "stroke"}, svg);
  text.textContent = label;
}

/** A picture of the part with marks, each `{marks, colour, label}`. */
function draw(surface, extent, marked, direction, width, height) {
  const svg = svgElement("svg", {viewBox: `0 0 ${width} ${height}`, role: "img"});
  const projection = new Projection(direction, extent, width, height);
  drawSurface(svg, surface, projection);
  for (const {marks, colour, label} of marked) drawMarks(svg, marks, projection, colour, label);
  return svg;
}

/** The picture beside the table where there is no WebGL. */
class DrawnView {
  constructor(host) {
    this.host = host;
    this.surface = new Surface(null);
    this.marked = [];
    this.direction = unit([0.8, -1, 0.7]);
  }
  show(surface) { this.surface = surface; this.draw(); }
  mark(marked, direction) {
    this.marked = marked;
    if (direction) this.direction = direction;
    this.draw();
  }
  turnTo(direction) { this.direction = unit(direction); this.draw(); }
  turnBy(horizontal, vertical) {
    const [x, y, z] = this.direction;
    const around = Math.atan2(y, x) + horizontal;
    const above = Math.max(-1.5, Math.min(1.5, Math.asin(z) + vertical));
    this.turnTo([Math.cos(around) * Math.cos(above), Math.sin(around) * Math.cos(above), Math.sin(above)]);
  }
  zoomBy() {}
  fit() { this.turnTo([0.8, -1, 0.7]); }
  draw() {
    this.host.replaceChildren(
      draw(this.surface, extentOf(this.surface, this.marked), this.marked, this.direction, 480, 360));
  }
}

/** Of the part, or of the marks where the part has no surface. */
function extentOf(surface, marked) {
  if (!surface.extent.isEmpty) return surface.extent;
  const extent = new Extent();
  for (const {marks} of marked)
    for (const point of [...marks.points, ...marks.lines.flat(), ...marks.triangles]) extent.add(point);
  return extent;
}
