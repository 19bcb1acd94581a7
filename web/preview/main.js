import "./errors.js";
import { tellError } from "./errors.js";
import { byId, makeChoice, makeToggle, make } from "./dom.js";
import { length } from "./format.js";
import { fillHead } from "./head.js";
import { describe, loadModel } from "./model.js";
import { addPanels } from "./panels.js";
import { Player } from "./player.js";
import { showTab } from "./tabs.js";
import { Viewport } from "./viewport.js";

const root = document.documentElement;

function addTools(viewport, gltf) {
  const parts = [
    makeToggle("Wireframe", "Show the edges of triangles", false, (isOn) => viewport.setWireframe(isOn)),
    makeToggle("Normals", "Colour by the direction of the normals", false, (isOn) => viewport.setNormals(isOn)),
    makeToggle("Bones", "Show the bones over the scene", viewport.bones.group.visible, (isOn) => viewport.setBones(isOn)),
    makeToggle("Boxes", "Show the bounding box that the file states for each shape", false, (isOn) => viewport.setBoxes(isOn)),
    makeToggle("Grid", "Show the ground grid", true, (isOn) => viewport.setGrid(isOn)),
  ];
  if (viewport.content.lights.length) {
    parts.push(makeToggle("Lights", "Light it with the exported lights", false, (isOn) => viewport.setSceneLights(isOn)));
  }
  const reset = make("button", { type: "button", title: "Show everything (F)" }, "Fit");
  reset.addEventListener("click", () => viewport.frame());
  parts.push(reset);
  if (gltf.cameras.length) {
    const names = ["free", ...gltf.cameras.map((camera, index) => camera.userData.name || camera.name || "camera " + index)];
    parts.push(makeChoice("Camera", names, 0, (index) => viewport.setCamera(gltf.cameras[index - 1])));
  }
  byId("tools").replaceChildren(...parts);
  document.addEventListener("keydown", (event) => {
    if (event.key === "f" && !event.ctrlKey && !event.metaKey && !event.target.closest?.("input, select")) {
      viewport.frame();
    }
  });
}

/** The view's clips with what the files say of them: several files may move parts of one clip. */
function clipRows(data, gltf) {
  const rate = data.framesPerSecond;
  return gltf.animations.map((clip) => {
    const told = data.clips.filter((candidate) => candidate.name === clip.name);
    const frames = Math.max(1, Math.round(clip.duration * rate), ...told.map((part) => part.frames));
    return { clip, rate, frames, name: clip.name, loop: told.length === 0 || told.some((part) => part.loop) };
  });
}

const posedVertices = 200000; // above, looking at several poses would take long

/** Poses over a clip, the first frame last, so that it stays. */
function posesOf(player, content) {
  if (!player) {
    return [() => {}];
  }
  const vertices = content.meshes.reduce((sum, { object }) => sum + object.geometry.attributes.position.count, 0);
  const parts = vertices > posedVertices ? [0] : [1, 0.75, 0.5, 0.25, 0];
  return parts.map((part) => () => player.goTo(part * player.row.frames));
}

async function showScene(data, scene, onPick) {
  const gltf = await loadModel(byId(scene.glb).textContent);
  const viewport = new Viewport(byId("canvas"));
  viewport.onPick = onPick;
  const clips = clipRows(data, gltf);
  const player = clips.length ? new Player(gltf.scene, clips, () => viewport.invalidate()) : null;
  viewport.onFrame = (now) => player?.advance(now) ?? false;
  const content = describe(gltf, scene);
  viewport.show(content, posesOf(player, content));
  addTools(viewport, gltf);
  byId("scale").textContent = "grid: " + length(viewport.cell) + (viewport.cell === 1 ? " unit" : " units");
  viewport.draw();
  return viewport;
}

const hasWebGl = () => Boolean(document.createElement("canvas").getContext("webgl2"));

/** Why there is no 3D view; nothing if there is something to show. */
function reasonForNone(data, shown) {
  if (shown) {
    return hasWebGl() ? "" : "There is no 3D view: this browser has no WebGL, or it is switched off. " +
      "The tables tell what was written.";
  }
  const problem = data.scenes.find((scene) => scene.problem)?.problem;
  return problem ? "There is no 3D view. " + problem : "No model was written, so there is nothing to show in 3D.";
}

async function start() {
  const data = JSON.parse(byId("data").textContent);
  let viewport = null;
  const choose = (mesh) => {
    viewport?.choose(mesh);
    objects.choose(mesh);
    byId("picked").textContent = mesh ? mesh.node + " · " + mesh.material : "";
  };
  const objects = addPanels(data, choose);
  fillHead(data);
  const hasMeshes = data.scenes.some((scene) => scene.meshes.length);
  showTab(data.exitCode !== 0 ? "log" : hasMeshes ? "objects" : data.textures.length ? "textures" : "motion");
  const shown = data.scenes.find((scene) => scene.glb && (scene.meshes.length || scene.bones.length));
  const reason = reasonForNone(data, shown);
  if (reason) {
    byId("notice").textContent = reason;
    byId("canvas").hidden = true;
    byId("tools").hidden = true;
    return;
  }
  viewport = await showScene(data, shown, (mesh) => {
    if (mesh) {
      showTab("objects");
    }
    choose(mesh);
  });
}

start().then(
  () => (root.dataset.state = "ready"),
  (problem) => {
    tellError(problem?.message ?? problem);
    byId("notice").textContent = "The 3D view failed: " + (problem?.message ?? problem);
    root.dataset.state = "failed";
  },
);
