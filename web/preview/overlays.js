import {
  BoxGeometry, BufferAttribute, BufferGeometry, EdgesGeometry, Float32BufferAttribute, GridHelper, Group, LineBasicMaterial,
  LineSegments, Matrix4, MeshBasicMaterial, Points, PointsMaterial, Vector3,
} from "three";

// What is drawn over the scene: grid, bones, boxes of shapes, the mark on what is selected.

/** A grid below the box, with cells of a round size. */
export function makeGrid(box) {
  const size = box.getSize(new Vector3());
  const span = Math.max(size.x, size.z, size.y * 0.5);
  const cell = 10 ** Math.floor(Math.log10(span / 4));
  const cells = Math.min(200, 2 * Math.ceil((span * 0.9) / cell));
  const grid = new GridHelper(cells * cell, cells, 0x7f8b99, 0x7f8b99);
  grid.material.transparent = true;
  grid.material.opacity = 0.32;
  grid.material.depthWrite = false;
  const centre = box.getCenter(new Vector3());
  const snap = (value) => Math.round(value / cell) * cell;
  grid.position.set(snap(centre.x), box.min.y - size.length() * 1e-4, snap(centre.z));
  return { grid, cell };
}

/** Lines from each bone to its parent, and a dot on each. "update" follows the pose. */
export function makeBones(nodes) {
  const isBone = new Set(nodes);
  const pairs = nodes.filter((node) => isBone.has(node.parent));
  const lines = new BufferGeometry().setAttribute("position", new Float32BufferAttribute(new Float32Array(pairs.length * 6), 3));
  const dots = new BufferGeometry().setAttribute("position", new Float32BufferAttribute(new Float32Array(nodes.length * 3), 3));
  const over = { depthTest: false, depthWrite: false, transparent: true };
  const group = new Group();
  group.add(new LineSegments(lines, new LineBasicMaterial({ color: 0xff9f1c, ...over })));
  group.add(new Points(dots, new PointsMaterial({ color: 0xffd166, size: 5, sizeAttenuation: false, ...over })));
  for (const child of group.children) {
    child.frustumCulled = false;
    child.renderOrder = 10;
  }
  const place = new Vector3();
  const put = (geometry, index, node) => {
    place.setFromMatrixPosition(node.matrixWorld);
    geometry.attributes.position.setXYZ(index, place.x, place.y, place.z);
  };
  return {
    group,
    update() {
      pairs.forEach((node, index) => {
        put(lines, 2 * index, node.parent);
        put(lines, 2 * index + 1, node);
      });
      nodes.forEach((node, index) => put(dots, index, node));
      lines.attributes.position.needsUpdate = true;
      dots.attributes.position.needsUpdate = true;
    },
  };
}

/** The oriented box that the file states for a shape. It goes to the mesh, whose space it is in. */
export function makeShapeBox(box) {
  const [x, y, z] = box.axes.map((axis) => new Vector3(...axis));
  const edges = new EdgesGeometry(new BoxGeometry(1, 1, 1));
  const lines = new LineSegments(edges, new LineBasicMaterial({ color: 0x18a999 }));
  lines.matrixAutoUpdate = false;
  lines.matrix.makeBasis(x.multiplyScalar(box.size[0]), y.multiplyScalar(box.size[1]), z.multiplyScalar(box.size[2]))
    .setPosition(...box.center);
  lines.raycast = () => {};
  return lines;
}

const markMaterial = new MeshBasicMaterial({
  color: 0xff3fa4, transparent: true, opacity: 0.45, depthWrite: false, polygonOffset: true, polygonOffsetFactor: -1,
  polygonOffsetUnits: -1,
});

/** The same mesh once more, in the colour of what is selected; it moves along with it. */
export function makeMark(mesh) {
  const mark = mesh.clone(false);
  mark.material = markMaterial;
  mark.renderOrder = 5;
  mark.raycast = () => {};
  return mark;
}
