// The parts of the page that need no browser.
import assert from "node:assert/strict";
import test from "node:test";
import { Box3, BoxGeometry, Group, Mesh, PerspectiveCamera, Vector3 } from "../../web/node_modules/three/build/three.module.js";
import { bytes, length, plural } from "../../web/preview/format.js";
import { boundsOf, focusOf, frameBox, measure, setPlanes } from "../../web/preview/framing.js";
import { makeRowFinder } from "../../web/preview/model.js";
import { makeBones, makeGrid, makeShapeBox } from "../../web/preview/overlays.js";

test("numbers as people read them", () => {
  const cases = [
    [bytes, 0, "0 bytes"], [bytes, 1, "1 byte"], [bytes, 1023, "1,023 bytes"], [bytes, 1024, "1.0 KiB"],
    [bytes, 15000, "15 KiB"], [bytes, 2 ** 20, "1.0 MiB"], [bytes, 5 * 2 ** 40, "5120 GiB"],
    [length, 10, "10"], [length, 0.1, "0.1"], [length, 1e-7, "1e-7"], [length, 123456, "123000"],
  ];
  for (const [format, number, text] of cases) {
    assert.equal(format(number), text);
  }
  assert.equal(plural(1, "bone"), "1 bone");
  assert.equal(plural(1234, "bone"), "1,234 bones");
});

const corners = (box) => [0, 1, 2, 3, 4, 5, 6, 7].map((i) => new Vector3(
  i & 1 ? box.max.x : box.min.x, i & 2 ? box.max.y : box.min.y, i & 4 ? box.max.z : box.min.z,
));

test("everything is in view and fills it, from tiny to huge, on every shape of window", () => {
  const shapes = [[1, 1, 1], [1, 20, 1], [30, 1, 1], [10, 0, 10], [0, 0, 5]];
  for (const scale of [1e-5, 1e-2, 1, 1e3, 1e6]) {
    for (const aspect of [0.4, 1, 2.5]) {
      for (const shape of shapes) {
        const size = new Vector3(...shape).multiplyScalar(scale);
        const box = new Box3().setFromCenterAndSize(new Vector3(3, -2, 1).multiplyScalar(scale * 10), size);
        const camera = new PerspectiveCamera(38, aspect);
        const controls = { target: new Vector3(), update() {} };
        frameBox(camera, controls, box);
        setPlanes(camera, box);
        camera.updateMatrixWorld();
        const seen = corners(box).map((corner) => corner.project(camera));
        const reach = Math.max(...seen.map((corner) => Math.max(Math.abs(corner.x), Math.abs(corner.y))));
        const name = `scale ${scale}, aspect ${aspect}, shape ${shape}`;
        assert.ok(reach > 0.6 && reach < 1.08, `${name}: reaches to ${reach}`);
        assert.ok(seen.every((corner) => corner.z > -1 && corner.z < 1), name + ": between the planes");
        assert.ok(camera.near > 0 && camera.far / camera.near < 1e5, name);
      }
    }
  }
});

const block = (x, y, z, at = [0, 0, 0]) => {
  const mesh = new Mesh(new BoxGeometry(x, y, z));
  mesh.position.set(...at);
  return mesh;
};
const still = [() => {}];
const rounded = (box) => [...box.min.toArray(), ...box.max.toArray()].map((value) => Math.round(value * 1000) / 1000);

test("floors are left out of what is looked at first, but not where there is nothing else", () => {
  const tower = block(1, 4, 1, [0, 2, 0]);
  const floor = block(50, 0.01, 50);
  const cases = [
    ["tower on a floor", [tower, floor], [-0.5, 0, -0.5, 0.5, 4, 0.5]],
    ["floor alone", [floor], [-25, -0.005, -25, 25, 0.005, 25]],
    ["a plate of the tower's size", [tower, block(1.2, 0.01, 1.2)], [-0.6, -0.005, -0.6, 0.6, 4, 0.6]],
  ];
  for (const [name, meshes, expected] of cases) {
    const root = new Group().add(...meshes);
    assert.deepEqual(rounded(focusOf(root, measure(root, still))), expected, name);
  }
});

test("there is always a box to look at", () => {
  const broken = block(1, 1, 1);
  broken.geometry.attributes.position.array.fill(NaN);
  broken.geometry.boundingBox = new Box3(new Vector3(NaN, 0, 0), new Vector3(NaN, 1, 1));
  const cases = [
    ["nothing", [], [-1, -1, -1, 1, 1, 1]],
    ["nodes only", [Object.assign(new Group(), { name: "bone" })], [-1, -1, -1, 1, 1, 1]],
    ["numbers that are none, and a block", [broken, block(2, 2, 2)], [-1, -1, -1, 1, 1, 1]],
  ];
  for (const [name, objects, expected] of cases) {
    const root = new Group();
    objects.forEach((object) => root.add(object));
    assert.deepEqual(rounded(boundsOf(root, measure(root, still))), expected, name);
  }
});

test("what moves is measured in all its poses, and stays in the last", () => {
  const mesh = block(2, 2, 2);
  const root = new Group().add(mesh);
  const boxes = measure(root, [10, 5, 0].map((x) => () => mesh.position.set(x, 0, 0)));
  assert.deepEqual(boxes.map(rounded), [[-1, -1, -1, 11, 1, 1]]);
  assert.equal(mesh.position.x, 0);
});

test("the grid has round cells, not too many", () => {
  for (const size of [1e-4, 0.3, 1, 7, 2500, 1e6]) {
    const { grid, cell } = makeGrid(new Box3(new Vector3(), new Vector3(size, size / 2, size)));
    const power = Math.log10(cell);
    assert.ok(Math.abs(power - Math.round(power)) < 1e-9, `a cell of ${cell} for ${size}`);
    assert.ok(grid.geometry.attributes.position.count <= 4 * 201, String(size));
  }
});

test("a box of the file stands where the file says", () => {
  const lines = makeShapeBox({ center: [1, 2, 3], axes: [[0, 1, 0], [0, 0, 1], [1, 0, 0]], size: [2, 4, 6] });
  lines.updateMatrixWorld();
  lines.matrixWorld.copy(lines.matrix);
  const box = new Box3().setFromBufferAttribute(lines.geometry.attributes.position).applyMatrix4(lines.matrix);
  assert.deepEqual(rounded(box), [-2, 1, 1, 4, 3, 5]); // 6 along x, 2 along y, 4 along z
});

test("bones are joined with their parents alone", () => {
  const [root, arm, hand, other] = [1, 2, 3, 4].map((x) => {
    const node = new Group();
    node.position.set(x, 0, 0);
    return node;
  });
  root.add(arm);
  arm.add(hand);
  root.updateMatrixWorld(true);
  other.updateMatrixWorld(true);
  const bones = makeBones([root, arm, hand, other]);
  bones.update();
  const [lines, dots] = bones.group.children.map(({ geometry }) => geometry.attributes.position);
  assert.deepEqual([...lines.array].filter((_, i) => i % 3 === 0), [1, 3, 3, 6]);
  assert.deepEqual([...dots.array].filter((_, i) => i % 3 === 0), [1, 3, 6, 4]);
});

test("every primitive finds the row that tells of it", () => {
  const rows = [
    { node: "house", material: "wall", sets: 1 }, { node: "house", material: "roof", sets: 2 },
    { node: "twin", material: "wall", sets: 1 }, { node: "twin", material: "wall", sets: 1 },
    { node: "bare", material: "", sets: 1 },
  ];
  const json = {
    materials: [{ name: "wall" }, { name: "roof" }],
    meshes: [
      { name: "house", primitives: [{ material: 0 }, { material: 1 }, { material: 1 }] },
      { name: "twin", primitives: [{ material: 0 }, { material: 0 }] },
      { name: "bare", primitives: [{}] },
      { name: "unknown", primitives: [{ material: 0 }] },
    ],
  };
  const rowOf = makeRowFinder(json, { meshes: rows });
  const found = json.meshes.flatMap((mesh, meshes) =>
    mesh.primitives.map((_, primitives) => rows.indexOf(rowOf({ meshes, primitives }))));
  assert.deepEqual(found, [0, 1, 1, 2, 3, 4, -1]);
  assert.equal(rowOf(undefined), null);
});
