import { make } from "./dom.js";
import { bytes, count, plural } from "./format.js";
import { makeTable } from "./table.js";
import { addTab } from "./tabs.js";

// What was written, as tables.

const tag = (text, tone = "") => make("span", { className: "tag " + tone }, text);
const tags = (list) => make("span", { className: "tags" }, ...list);
const nothing = (text, isFine) => make("p", { className: "nothing" + (isFine ? " fine" : "") }, text);
const path = (text) => make("span", { className: "path" }, text);

/** Two lines in a cell: a name and what belongs to it. */
function twoLines(first, second) {
  return make("span", {}, first, make("span", { className: "small" }, second));
}

/** "Position s16×3": width and kind of a stream's numbers as they stand in the file. */
const shortForms = { Float: "f32", Short: "s16", Ushort: "u16", Byte: "s8", Ubyte: "u8" };

function streamText(stream) {
  const usage = stream.usage.replace("TextureCoordinate", "UV");
  const form = shortForms[stream.mode] ?? stream.mode;
  return usage + " " + (stream.constant ? "constant" : form + "×" + stream.dimension);
}

function addObjects(data, onPick) {
  const meshes = data.scenes.flatMap((scene) => scene.meshes);
  const columns = [
    {
      text: "Object",
      value: (mesh) => mesh.node,
      cell: (mesh) => twoLines(mesh.node, mesh.material + (mesh.visible ? "" : " · hidden")),
    },
    { text: "Vertices", value: (mesh) => mesh.vertices, cell: (mesh) => count(mesh.vertices), isNumber: true },
    { text: "Triangles", value: (mesh) => mesh.triangles, cell: (mesh) => count(mesh.triangles), isNumber: true },
    { text: "Sets", value: (mesh) => mesh.sets, isNumber: true },
    { text: "Skinning", value: (mesh) => mesh.skinning.replace("Skinning", "") },
    {
      text: "Vertex data",
      value: (mesh) => mesh.streams.length,
      cell: (mesh) => tags(mesh.streams.map((stream) => tag(streamText(stream)))),
    },
  ];
  const sum = (key) => count(meshes.reduce((total, mesh) => total + mesh[key], 0));
  const bones = data.scenes.reduce((total, scene) => total + scene.bones.length, 0);
  const lead = make("p", { className: "lead" },
    `${plural(meshes.length, "object")} · ${sum("vertices")} vertices · ${sum("triangles")} triangles · ` +
      plural(bones, "bone"));
  const notes = data.scenes.flatMap((scene) => scene.notes);
  const table = makeTable("Objects", columns, meshes, onPick);
  const content = meshes.length ? [lead, table.element] : [nothing("No model was written.")];
  if (notes.length) {
    content.push(make("details", {}, make("summary", {}, plural(notes.length, "thing") + " that the 3D view can't show"),
      make("ul", {}, ...notes.map((note) => make("li", {}, note)))));
  }
  addTab("objects", "Objects", meshes.length, "", ...content);
  return table;
}

function swatch(color) {
  const part = (value) => Math.round(255 * Math.min(1, Math.max(0, value)));
  const element = make("span", { className: "swatch", title: "diffuse colour" });
  element.style.backgroundColor = `rgb(${part(color[0])} ${part(color[1])} ${part(color[2])})`;
  return element;
}

function materialTraits(material) {
  const traits = [];
  if (material.blend !== "NotUsed") {
    traits.push(tag("blend: " + material.blend));
  }
  if (material.alphaTest) {
    traits.push(tag("alpha test"));
  }
  traits.push(tag("culling: " + material.culling));
  traits.push(tag(material.lit ? "lit" : "unlit"));
  return tags(traits);
}

function addMaterials(data) {
  const materials = data.scenes.flatMap((scene) => scene.materials);
  const columns = [
    {
      text: "Material",
      value: (material) => material.name,
      cell: (material) => make("span", {}, swatch(material.diffuse), material.name),
    },
    { text: "Textures", value: (material) => material.textures.join(", ") },
    { text: "Used by", value: (material) => material.users, isNumber: true },
    { text: "Drawing", value: (material) => material.blend, cell: materialTraits },
  ];
  const content = materials.length ? makeTable("Materials", columns, materials).element : nothing("No material was written.");
  addTab("materials", "Materials", materials.length, "", content);
}

function thumbnail(texture) {
  if (!texture.thumbnail) {
    return make("span", { className: "thumbnail absent" }, texture.format + " is not shown");
  }
  const isCoarse = texture.width <= 32 && texture.height <= 32;
  return make("img", {
    className: "thumbnail" + (isCoarse ? " coarse" : ""), src: texture.thumbnail, alt: "The texture " + texture.name,
  });
}

function addTextures(data) {
  const columns = [
    { text: "Picture", value: (texture) => texture.name, cell: thumbnail },
    { text: "Texture", value: (texture) => texture.name, cell: (texture) => twoLines(texture.name, texture.file) },
    {
      text: "Size",
      value: (texture) => texture.width * texture.height,
      cell: (texture) => `${texture.width} × ${texture.height}` + (texture.isCube ? " × 6" : ""),
      isNumber: true,
    },
    { text: "Format", value: (texture) => texture.format },
    { text: "Mip levels", value: (texture) => texture.levels, isNumber: true },
    { text: "Memory", value: (texture) => texture.bytes, cell: (texture) => bytes(texture.bytes), isNumber: true },
  ];
  const total = data.textures.reduce((sum, texture) => sum + texture.bytes, 0);
  const content = data.textures.length
    ? [
        make("p", { className: "lead" }, `${plural(data.textures.length, "texture")} · ${bytes(total)} of texture memory`),
        makeTable("Textures", columns, data.textures).element,
      ]
    : [nothing("No texture was written.")];
  addTab("textures", "Textures", data.textures.length, "", ...content);
}

function addMotion(data) {
  const rows = [
    ...data.clips.map((clip) => ({
      name: clip.name || "(no name)", kind: clip.kind, file: clip.file,
      facts: `${plural(clip.frames, "frame")}, ${clip.loop ? "loops" : "once"}, ${plural(clip.members, "moving part")}`,
    })),
    ...data.cameras.map((camera) => ({ name: camera.name, kind: "camera", file: camera.file, facts: camera.facts })),
    ...data.lights.map((light) => ({ name: light.name, kind: "light", file: light.file, facts: light.facts })),
  ];
  const columns = [
    { text: "Name", value: (row) => row.name || row.file, cell: (row) => twoLines(row.name, row.file) },
    { text: "Kind", value: (row) => row.kind },
    { text: "What it does", value: (row) => row.facts },
  ];
  const content = rows.length
    ? makeTable("Clips, cameras and lights", columns, rows).element
    : nothing("No animation, camera or light was written.");
  addTab("motion", "Scene", rows.length, "", content);
}

const severityTones = { error: "bad", warning: "warn", note: "" };
const severityRanks = { error: 0, warning: 1, note: 2 };

export function countMessages(data, severity) {
  return data.messages.filter((message) => message.severity === severity)
    .reduce((total, message) => total + message.count, 0);
}

function toneOf(errors, warnings) {
  return errors ? "bad" : warnings ? "warn" : "";
}

function addLog(data) {
  const columns = [
    {
      text: "Severity",
      value: (message) => severityRanks[message.severity],
      cell: (message) => tag(message.severity, severityTones[message.severity]),
    },
    {
      text: "Object",
      value: (message) => message.object,
      cell: (message) => make("span", { className: "name" }, message.object),
    },
    { text: "Message", value: (message) => message.text },
    { text: "Times", value: (message) => message.count, isNumber: true },
  ];
  const content = data.messages.length
    ? makeTable("Messages of the export", columns, data.messages).element
    : nothing("The export had nothing to tell: no errors, no warnings.", true);
  const tone = toneOf(countMessages(data, "error"), countMessages(data, "warning"));
  addTab("log", "Log", data.messages.length, tone, content);
}

function addFiles(data) {
  const columns = [
    { text: "File", value: (file) => file.path, cell: (file) => path(file.path) },
    { text: "Kind", value: (file) => file.kind },
    { text: "Size", value: (file) => file.size, cell: (file) => bytes(file.size), isNumber: true },
  ];
  const total = data.files.reduce((sum, file) => sum + file.size, 0);
  const content = data.files.length
    ? [
        make("p", { className: "lead" }, `${plural(data.files.length, "file")} · ${bytes(total)} in `, path(data.folder)),
        makeTable("Written files", columns, data.files).element,
      ]
    : [nothing("No file was written.")];
  addTab("files", "Files", data.files.length, "", ...content);
}

function addCheck(data) {
  const columns = [
    {
      text: "Severity",
      value: (finding) => severityRanks[finding.severity],
      cell: (finding) => tag(finding.severity, severityTones[finding.severity]),
    },
    { text: "Code", value: (finding) => finding.code, cell: (finding) => path(finding.code) },
    {
      text: "Finding",
      value: (finding) => finding.text,
      cell: (finding) => twoLines(finding.text, finding.file + (finding.line ? ", line " + finding.line : "")),
    },
  ];
  const content = data.findings.length
    ? makeTable("Findings of the check", columns, data.findings).element
    : data.files.length
      ? nothing("No findings: the written files keep to the format, and everything they refer to is there.", true)
      : nothing("There was no file to check.");
  const tone = toneOf(data.findings.some((finding) => finding.severity === "error"), data.findings.length);
  addTab("check", "Check", data.findings.length, tone, content);
}

/** Fills the panels. "onPick" hears of a mesh whose row was chosen; gives the table of meshes. */
export function addPanels(data, onPick) {
  const objects = addObjects(data, onPick);
  addMaterials(data);
  addTextures(data);
  addMotion(data);
  addLog(data);
  addFiles(data);
  addCheck(data);
  return objects;
}
