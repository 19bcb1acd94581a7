import { Box3, Sphere, Vector3 } from "three";

// Where the camera stands so that everything is seen, from millimetres to kilometres.

const isUsable = (box) =>
  !box.isEmpty() && [...box.min.toArray(), ...box.max.toArray()].every(Number.isFinite);

const unionOf = (boxes) => boxes.reduce((all, box) => all.union(box), new Box3());

function boxOf(mesh) {
  if (mesh.isSkinnedMesh) {
    mesh.computeBoundingBox(); // of the present pose
  }
  return new Box3().setFromObject(mesh);
}

/** A box for each mesh that is drawn, around it in all of the poses: functions that set one each. */
export function measure(root, poses) {
  const boxes = new Map();
  for (const setPose of poses) {
    setPose();
    root.updateMatrixWorld(true);
    root.traverseVisible((object) => {
      const box = object.isMesh ? boxOf(object) : null;
      if (box && isUsable(box)) {
        boxes.set(object, box.union(boxes.get(object) ?? box));
      }
    });
  }
  return [...boxes.values()];
}

/** The box around the boxes of meshes, or around all nodes where there are none. Never empty, always finite. */
export function boundsOf(root, boxes) {
  const box = unionOf(boxes);
  if (box.isEmpty()) {
    root.traverse((object) => box.expandByPoint(object.getWorldPosition(new Vector3())));
  }
  if (!isUsable(box)) {
    box.set(new Vector3(-1, -1, -1), new Vector3(1, 1, 1));
  }
  if (box.getSize(new Vector3()).length() === 0) {
    box.expandByScalar(1);
  }
  return box;
}

/** The same without floors, water and the like: flat and much wider than all that stands on them. */
export function focusOf(root, boxes) {
  const width = (box) => Math.max(box.max.x - box.min.x, box.max.z - box.min.z);
  const isFlat = (box) => box.max.y - box.min.y < 0.05 * width(box);
  const standing = unionOf(boxes.filter((box) => !isFlat(box)));
  const isScenery = (box) => isFlat(box) && width(box) > 1.5 * width(standing);
  return boundsOf(root, standing.isEmpty() ? boxes : boxes.filter((box) => !isScenery(box)));
}

const outlook = new Vector3(0.62, 0.42, 1).normalize(); // from the front, right and above

/** Puts the camera where the box fills the view. */
export function frameBox(camera, controls, box) {
  const centre = box.getCenter(new Vector3());
  camera.position.copy(centre).add(outlook);
  camera.lookAt(centre);
  camera.updateMatrixWorld();
  const right = new Vector3().setFromMatrixColumn(camera.matrixWorld, 0);
  const up = new Vector3().setFromMatrixColumn(camera.matrixWorld, 1);
  const tanY = Math.tan((camera.fov * Math.PI) / 360);
  const tanX = tanY * camera.aspect;
  let distance = 0;
  for (let corner = 0; corner < 8; corner += 1) {
    const offset = new Vector3(
      corner & 1 ? box.max.x : box.min.x, corner & 2 ? box.max.y : box.min.y, corner & 4 ? box.max.z : box.min.z,
    ).sub(centre);
    const depth = offset.dot(outlook);
    distance = Math.max(distance, Math.abs(offset.dot(right)) / tanX + depth, Math.abs(offset.dot(up)) / tanY + depth);
  }
  camera.position.copy(centre).addScaledVector(outlook, distance * 0.98);
  controls.target.copy(centre);
  controls.minDistance = distance * 0.01;
  controls.maxDistance = distance * 20;
  controls.update();
}

/** Near and far planes that hold the box wherever the camera is, with the depth buffer well used. */
export function setPlanes(camera, box) {
  const ball = box.getBoundingSphere(new Sphere());
  const distance = camera.position.distanceTo(ball.center);
  camera.near = Math.max(distance - ball.radius * 3, ball.radius * 0.002);
  camera.far = distance + ball.radius * 12;
  camera.updateProjectionMatrix();
}
