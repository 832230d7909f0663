// The surface of a part as the pictures need it: corners, triangles, faces, normals, creases.

/** Corners nearer to flat than this are drawn round; sharper ones are creases. */
const CREASE_COSINE = Math.cos(35 * Math.PI / 180);
/** Surfaces of more triangles are drawn flat and without creases, which would take too long. */
const MOST_SMOOTH = 300000;

function bytesOf(base64) {
  const text = atob(base64 || "");
  const bytes = new Uint8Array(text.length);
  for (let i = 0; i < text.length; ++i) bytes[i] = text.charCodeAt(i);
  return bytes.buffer;
}

const subtract = (a, b) => [a[0] - b[0], a[1] - b[1], a[2] - b[2]];
const add = (a, b) => [a[0] + b[0], a[1] + b[1], a[2] + b[2]];
const scale = (a, factor) => [a[0] * factor, a[1] * factor, a[2] * factor];
const dot = (a, b) => a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
const cross = (a, b) =>
  [a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]];
const length = (a) => Math.sqrt(dot(a, a));
const unit = (a) => { const size = length(a); return size > 0 ? scale(a, 1 / size) : [0, 0, 0]; };

/** The smallest box around points, as its centre and its diagonal. */
class Extent {
  constructor() { this.least = [Infinity, Infinity, Infinity]; this.most = [-Infinity, -Infinity, -Infinity]; }
  add(point) {
    for (let axis = 0; axis < 3; ++axis) {
      this.least[axis] = Math.min(this.least[axis], point[axis]);
      this.most[axis] = Math.max(this.most[axis], point[axis]);
    }
  }
  get isEmpty() { return !(this.least[0] <= this.most[0]); }
  get centre() { return this.isEmpty ? [0, 0, 0] : scale(add(this.least, this.most), 0.5); }
  get diagonal() { return this.isEmpty ? 0 : length(subtract(this.most, this.least)); }
}

class Surface {
  /** `geometry` is the part's, or null for a part without a picture. */
  constructor(geometry) {
    this.positions = new Float32Array(bytesOf(geometry && geometry.positions));
    this.indices = new Uint32Array(bytesOf(geometry && geometry.indices));
    this.faces = new Uint32Array(bytesOf(geometry && geometry.faces));
    this.extent = new Extent();
    for (let i = 0; i + 2 < this.positions.length; i += 3)
      this.extent.add([this.positions[i], this.positions[i + 1], this.positions[i + 2]]);
  }

  get size() { return Math.floor(this.indices.length / 3); }

  corner(index) {
    const at = 3 * index;
    return [this.positions[at], this.positions[at + 1], this.positions[at + 2]];
  }

  triangle(index) {
    return [0, 1, 2].map((i) => this.corner(this.indices[3 * index + i]));
  }

  normal(index) {
    const [a, b, c] = this.triangle(index);
    return unit(cross(subtract(b, a), subtract(c, a)));
  }

  /** The triangles of faces, by the numbers that findings give. */
  trianglesOf(faces) {
    const wanted = new Set(faces);
    const corners = [];
    for (let i = 0; i < this.faces.length && i < this.size; ++i)
      if (wanted.has(this.faces[i])) corners.push(...this.triangle(i));
    return corners;
  }

  /** Which way the surface looks next to a point. */
  outwardAt(point) {
    let best = -1;
    let least = Infinity;
    for (let i = 0; i < this.size; ++i) {
      const [a, b, c] = this.triangle(i);
      const away = subtract(scale(add(add(a, b), c), 1 / 3), point);
      // A large triangle is near although its centre is not.
      const distance = dot(away, away) - 0.25 * dot(subtract(b, a), subtract(b, a));
      if (distance < least) { least = distance; best = i; }
    }
    return best < 0 ? null : this.normal(best);
  }

  /** One number for all corners that lie at the same place. */
  places() {
    const places = new Uint32Array(this.positions.length / 3);
    const known = new Map();
    const grid = 1e5 / (this.extent.diagonal || 1);
    for (let i = 0; i < places.length; ++i) {
      const key = this.corner(i).map((value) => Math.round(value * grid)).join();
      let place = known.get(key);
      if (place === undefined) known.set(key, place = known.size);
      places[i] = place;
    }
    return places;
  }

  /** Corners, three a triangle, with the normals that make round what is round; and the creases. */
  shaded() {
    const count = this.size;
    const corners = new Float32Array(9 * count);
    const normals = new Float32Array(9 * count);
    const flat = [];
    for (let i = 0; i < count; ++i) {
      flat.push(this.normal(i));
      this.triangle(i).forEach((corner, k) => {
        corners.set(corner, 9 * i + 3 * k);
        normals.set(flat[i], 9 * i + 3 * k);
      });
    }
    const creases = [];
    if (count <= MOST_SMOOTH) {
      const places = this.places();
      this.round(places, flat, normals);
      this.findCreases(places, flat, creases);
    }
    return {corners, normals, creases: new Float32Array(creases)};
  }

  round(places, flat, normals) {
    const around = new Map();
    this.indices.forEach((corner, i) => {
      const place = places[corner];
      if (!around.has(place)) around.set(place, []);
      around.get(place).push(Math.floor(i / 3));
    });
    for (let i = 0; i < 3 * this.size; ++i) {
      const own = flat[Math.floor(i / 3)];
      let sum = [0, 0, 0];
      const others = around.get(places[this.indices[i]]);
      // The hub of a large fan is flat anyway, and each with each would take the square.
      if (others.length > 64) continue;
      for (const other of others)
        if (dot(flat[other], own) > CREASE_COSINE) sum = add(sum, flat[other]);
      normals.set(unit(sum), 3 * i);
    }
  }

  findCreases(places, flat, creases) {
    const edges = new Map();
    for (let i = 0; i < 3 * this.size; ++i) {
      const triangle = Math.floor(i / 3);
      const from = this.indices[i];
      const to = this.indices[3 * triangle + (i + 1) % 3];
      const [low, high] = [places[from], places[to]].sort((a, b) => a - b);
      const key = low * 4294967296 + high;
      const other = edges.get(key);
      if (!other) {
        edges.set(key, {from, to, triangle});
      } else {
        edges.delete(key);
        if (dot(flat[other.triangle], flat[triangle]) < CREASE_COSINE)
          creases.push(...this.corner(from), ...this.corner(to));
      }
    }
    for (const edge of edges.values()) creases.push(...this.corner(edge.from), ...this.corner(edge.to));
  }
}

/** What marks a place: points, lines, triangles, and a point that its label is put at. */
function marksOf(place, surface) {
  const points = place.points || [];
  if (place.kind === "point") return {points, lines: [], triangles: [], anchor: points[0]};
  if (place.kind === "polyline")
    return {points: [], lines: points.slice(1).map((p, i) => [points[i], p]), triangles: [],
            anchor: points[Math.floor(points.length / 2)]};
  if (place.kind === "box" && points.length === 2) {
    const corner = (bits) => [0, 1, 2].map((axis) => points[bits >> axis & 1][axis]);
    const lines = [];
    for (let bits = 0; bits < 8; ++bits)
      for (let axis = 0; axis < 3; ++axis)
        if (!(bits >> axis & 1)) lines.push([corner(bits), corner(bits | 1 << axis)]);
    return {points: [], lines, triangles: [], anchor: scale(add(points[0], points[1]), 0.5)};
  }
  const triangles = points.length ? points : surface.trianglesOf(place.faces || []);
  const middle = triangles.reduce(add, [0, 0, 0]);
  return {points: [], lines: [], triangles,
          anchor: triangles.length ? scale(middle, 1 / triangles.length) : undefined};
}

/** From where a place is seen best: against the surface there, a little aslant. */
function viewOf(marks, surface) {
  const centre = surface.extent.centre;
  let outward = null;
  if (marks.triangles.length >= 3) {
    outward = [0, 0, 0];
    for (let i = 0; i + 2 < marks.triangles.length; i += 3)
      outward = add(outward, cross(subtract(marks.triangles[i + 1], marks.triangles[i]),
                                   subtract(marks.triangles[i + 2], marks.triangles[i])));
    outward = unit(outward);
  } else if (marks.anchor && surface.size) {
    outward = surface.outwardAt(marks.anchor);
  }
  const away = marks.anchor ? unit(subtract(marks.anchor, centre)) : [0, 0, 0];
  const mixed = add(add(scale(outward || [0, 0, 0], 1), scale(away, 0.35)), [0.42, -0.5, 0.42]);
  return unit(mixed);
}
