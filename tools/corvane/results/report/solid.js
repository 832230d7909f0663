// The part in three dimensions, by WebGL.

const TURN_MILLISECONDS = 450;

class SolidView {
  /** Throws where the browser has no WebGL. */
  constructor(host) {
    this.host = host;
    this.renderer = new THREE.WebGLRenderer({antialias: true, alpha: true, preserveDrawingBuffer: true});
    this.renderer.setPixelRatio(Math.min(2, window.devicePixelRatio || 1));
    host.appendChild(this.renderer.domElement);
    this.scene = new THREE.Scene();
    this.camera = new THREE.OrthographicCamera(-1, 1, 1, -1, 0.1, 10);
    this.camera.up.set(0, 0, 1);
    this.controls = new THREE.OrbitControls(this.camera, this.renderer.domElement);
    this.controls.enableKeys = false;
    this.controls.addEventListener("change", () => this.render());
    const headlight = new THREE.DirectionalLight(0xffffff, 0.75);
    headlight.position.set(-0.4, 0.7, 1);
    this.camera.add(headlight, headlight.target);
    this.scene.add(this.camera, new THREE.HemisphereLight(0xffffff, 0x8b94a3, 0.55));
    this.body = new THREE.Group();
    this.marks = new THREE.Group();
    this.scene.add(this.body, this.marks);
    this.surface = new Surface(null);
    this.extent = this.surface.extent;
    this.tags = [];
    new ResizeObserver(() => this.resize()).observe(host);
    this.resize();
  }

  show(surface) {
    clearGroup(this.body);
    clearGroup(this.marks);
    this.surface = surface;
    if (surface.size) {
      const {corners, normals, creases} = surface.shaded();
      const geometry = new THREE.BufferGeometry();
      geometry.setAttribute("position", new THREE.BufferAttribute(corners, 3));
      geometry.setAttribute("normal", new THREE.BufferAttribute(normals, 3));
      this.body.add(new THREE.Mesh(geometry, new THREE.MeshPhongMaterial({
        color: 0xb9c3cf, specular: 0x222222, shininess: 30, side: THREE.DoubleSide,
        polygonOffset: true, polygonOffsetFactor: 1, polygonOffsetUnits: 1})));
      const edges = new THREE.BufferGeometry();
      edges.setAttribute("position", new THREE.BufferAttribute(creases, 3));
      this.body.add(new THREE.LineSegments(edges, new THREE.LineBasicMaterial({color: 0x3c4654})));
    }
    this.extent = extentOf(surface, []);
    this.place([0.8, -1, 0.7], this.extent.centre, 1);
  }

  /** Marks are seen through the part, faintly, so that none is lost on its far side. */
  mark(marked, direction) {
    clearGroup(this.marks);
    this.tags.forEach((tag) => tag.element.remove());
    this.tags = [];
    if (this.surface.extent.isEmpty) this.extent = extentOf(this.surface, marked);
    const size = this.extent.diagonal || 1;
    for (const {marks, colour, label} of marked) {
      for (const point of marks.points) this.addBoth(new THREE.SphereBufferGeometry(0.012 * size, 20, 14), colour, point);
      for (const [from, to] of marks.lines) this.addLine(from, to, 0.004 * size, colour);
      if (marks.triangles.length) this.addTriangles(marks.triangles, colour);
      if (marks.anchor && label) this.addTag(marks.anchor, label);
    }
    const anchor = marked.length && marked[0].marks.anchor;
    if (anchor && direction) this.turn(direction, scale(add(scale(anchor, 2), this.extent.centre), 1 / 3), 1.35);
    else this.render();
  }

  addBoth(geometry, colour, position, opacity = 0.95) {
    for (const hidden of [true, false]) {
      const mesh = new THREE.Mesh(geometry, new THREE.MeshBasicMaterial({
        color: new THREE.Color(colour), transparent: true, opacity: hidden ? 0.35 : opacity, depthTest: !hidden,
        side: THREE.DoubleSide, polygonOffset: true, polygonOffsetFactor: -2, polygonOffsetUnits: -2}));
      mesh.renderOrder = hidden ? 1 : 2;
      if (position) mesh.position.set(...position);
      this.marks.add(mesh);
    }
  }

  addLine(from, to, radius, colour) {
    const start = new THREE.Vector3(...from);
    const path = new THREE.LineCurve3(start, new THREE.Vector3(...to));
    if (path.getLength() > 0) this.addBoth(new THREE.TubeBufferGeometry(path, 1, radius, 8), colour);
    this.addBoth(new THREE.SphereBufferGeometry(1.6 * radius, 12, 8), colour, to);
    this.addBoth(new THREE.SphereBufferGeometry(1.6 * radius, 12, 8), colour, from);
  }

  addTriangles(corners, colour) {
    const geometry = new THREE.BufferGeometry();
    geometry.setAttribute("position", new THREE.BufferAttribute(new Float32Array(corners.flat()), 3));
    this.addBoth(geometry, colour, null, 0.7);
  }

  addTag(anchor, label) {
    const element = document.createElement("span");
    element.className = "tag";
    element.textContent = label;
    this.host.appendChild(element);
    this.tags.push({element, anchor: new THREE.Vector3(...anchor)});
  }

  /** Moves the camera at once. */
  place(direction, target, zoom) {
    const far = 2 * (this.extent.diagonal || 1);
    const [x, y, z] = unit(direction);
    // Straight above, "up" would have no meaning.
    const slant = Math.abs(z) > 0.9999 ? -1e-3 : 0;
    this.controls.target.set(...target);
    this.camera.position.set(target[0] + far * x, target[1] + far * (y + slant), target[2] + far * z);
    this.camera.zoom = zoom;
    this.camera.near = 0;
    this.camera.far = 2 * far;
    this.resize();
    this.controls.update();
    this.render();
  }

  turn(direction, target, zoom) {
    const still = window.matchMedia("(prefers-reduced-motion: reduce)").matches;
    const from = unit(this.camera.position.clone().sub(this.controls.target).toArray());
    const start = this.controls.target.toArray();
    const firstZoom = this.camera.zoom;
    const began = performance.now();
    this.turning = (this.turning || 0) + 1;
    const own = this.turning;
    const step = () => {
      if (own !== this.turning) return;
      const part = still ? 1 : Math.min(1, (performance.now() - began) / TURN_MILLISECONDS);
      const eased = part * part * (3 - 2 * part);
      const mix = (a, b) => add(scale(a, 1 - eased), scale(b, eased));
      const way = mix(from, unit(direction));
      this.place(length(way) < 1e-3 ? direction : way, mix(start, target), firstZoom + (zoom - firstZoom) * eased);
      if (part < 1) requestAnimationFrame(step);
    };
    step();
  }

  turnTo(direction) { this.turn(direction, this.extent.centre, 1); }
  fit() { this.turnTo([0.8, -1, 0.7]); }
  zoomBy(factor) { this.place(this.direction(), this.controls.target.toArray(), this.camera.zoom * factor); }
  turnBy(horizontal, vertical) {
    const [x, y, z] = this.direction();
    const around = Math.atan2(y, x) + horizontal;
    const above = Math.max(-1.55, Math.min(1.55, Math.asin(z) + vertical));
    this.place([Math.cos(around) * Math.cos(above), Math.sin(around) * Math.cos(above), Math.sin(above)],
               this.controls.target.toArray(), this.camera.zoom);
  }
  direction() { return unit(this.camera.position.clone().sub(this.controls.target).toArray()); }

  resize() {
    const width = this.host.clientWidth || 1;
    const height = this.host.clientHeight || 1;
    this.renderer.setSize(width, height, false);
    const half = 0.56 * (this.extent && this.extent.diagonal || 1);
    const aspect = width / height;
    const high = aspect >= 1 ? half : half / aspect;
    Object.assign(this.camera, {left: -high * aspect, right: high * aspect, top: high, bottom: -high});
    this.camera.updateProjectionMatrix();
    this.render();
  }

  render() {
    this.renderer.render(this.scene, this.camera);
    for (const {element, anchor} of this.tags || []) {
      const at = anchor.clone().project(this.camera);
      element.style.left = `${50 * (at.x + 1)}%`;
      element.style.top = `${50 * (1 - at.y)}%`;
    }
  }
}

function clearGroup(group) {
  for (const child of [...group.children]) {
    group.remove(child);
    child.geometry.dispose();
    child.material.dispose();
  }
}

function makeView(host) {
  // Asked first, because the library tells the console of a failure.
  if (typeof THREE !== "undefined" && document.createElement("canvas").getContext("webgl")) {
    try {
      return new SolidView(host);
    } catch (problem) {
      host.replaceChildren();
    }
  }
  return new DrawnView(host);
}
