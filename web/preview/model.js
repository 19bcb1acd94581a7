import { LoadingManager } from "three";
import { GLTFLoader } from "three/examples/jsm/loaders/GLTFLoader.js";

// From the embedded model to what the view shows.

function bytesOf(text) {
  const signs = atob(text);
  const bytes = new Uint8Array(signs.length);
  for (let i = 0; i < signs.length; i += 1) {
    bytes[i] = signs.charCodeAt(i);
  }
  return bytes.buffer;
}

/** Loads a model in base64; resolves when its pictures are there too. */
export function loadModel(text) {
  return new Promise((resolve, reject) => {
    const manager = new LoadingManager();
    manager.onError = (address) => reject(new Error("A picture of the model can't be loaded: " + address.slice(0, 80)));
    new GLTFLoader(manager).parse(bytesOf(text), "", resolve, reject);
  });
}

/** Finds the row of a primitive: converted meshes carry the node's name, and each set of a shape is a primitive. */
export function makeRowFinder(json, scene) {
  const waiting = new Map();
  for (const row of scene.meshes) {
    const key = JSON.stringify([row.node, row.material]);
    waiting.set(key, [...(waiting.get(key) ?? []), ...Array(Math.max(1, row.sets)).fill(row)]);
  }
  const found = new Map();
  json.meshes?.forEach((mesh, meshIndex) => mesh.primitives.forEach((primitive, index) => {
    const rows = waiting.get(JSON.stringify([mesh.name, json.materials?.[primitive.material]?.name ?? ""]));
    const row = rows?.length > 1 ? rows.shift() : rows?.[0];
    found.set(meshIndex + "/" + index, row ?? null);
  }));
  return (place) => (place ? (found.get(place.meshes + "/" + place.primitives) ?? null) : null);
}

/** Strong highlights come as metal, which is black where it has nothing to mirror: its colour is shown instead. */
function showPlainly(material) {
  if (material.isMeshStandardMaterial) {
    material.metalness = 0;
  }
}

/** The scene's meshes, each with the row that tells of it, and all else that the view wants to know. */
export function describe(gltf, scene) {
  const content = { root: gltf.scene, meshes: [], bones: [], boxes: [], lights: [] };
  const { json, associations } = gltf.parser;
  const rowOf = makeRowFinder(json, scene);
  const boneNames = new Set(scene.bones);
  const boxed = new Set();
  gltf.scene.traverse((object) => {
    const place = associations.get(object);
    if (object.isMesh) {
      showPlainly(object.material);
      const row = rowOf(place);
      content.meshes.push({ object, key: row });
      if (row?.box && !boxed.has(row)) {
        boxed.add(row);
        content.boxes.push({ object, box: row.box });
      }
    } else if (object.isLight) {
      content.lights.push(object);
    }
    if (place?.nodes !== undefined && boneNames.has(json.nodes[place.nodes].name)) {
      content.bones.push(object);
    }
  });
  return content;
}
