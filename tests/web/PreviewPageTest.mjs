// Opens pages of exports in a headless Chromium and looks at them:
//     node PreviewPageTest.mjs PROGRAM EXAMPLES SAMPLES
import assert from "node:assert/strict";
import { spawnSync } from "node:child_process";
import { existsSync, mkdtempSync, readFileSync, rmSync, writeFileSync } from "node:fs";
import { tmpdir } from "node:os";
import { basename, join } from "node:path";
import { pathToFileURL } from "node:url";
import { setTimeout as sleep } from "node:timers/promises";
import { Browser } from "./Browser.mjs";
import { compare, countColors, decodePng } from "./Png.mjs";

const [program, examples, samples] = process.argv.slice(2);
const folder = mkdtempSync(join(tmpdir(), "tq4x-pages-"));
const kinds = ["Qskla", "Qmata", "Qmdla", "Qcam", "Qlgt"].flatMap((kind) => ["--set", `Output${kind}:true`]);

/** Exports a scene with every kind of file and gives the page's place. */
function exportScene(scene, name, more = []) {
  const page = join(folder, name + ".html");
  const run = spawnSync(program,
    ["export", scene, "-o", join(folder, name), "-n", name, "--preview", page, "--fit-textures", ...kinds, ...more],
    { encoding: "utf8", env: { ...process.env, XDG_DATA_HOME: join(folder, "data") } });
  return { page, code: run.status, told: run.stderr };
}

const isShown = "/ready|failed/.test(document.documentElement?.dataset.state)";

const size = { width: 1000, height: 600 }; // small ones are drawn sooner

async function openPage(browser, file, options = size) {
  const page = await browser.open(pathToFileURL(file), options);
  await page.waitFor(isShown, 60);
  return page;
}

/** What is wrong with a page as such; an empty list is a page that works. */
async function problemsOf(page) {
  const { state = "loading", errors = "0", firstError } =
    await page.evaluate("({ ...document.documentElement?.dataset })");
  const problems = [...page.errors, ...page.requests.map((address) => "asks for " + address)];
  if (state !== "ready") {
    problems.push("the state is " + state);
  }
  if (errors !== "0") {
    problems.push(`${errors} errors, the first: ${firstError}`);
  }
  return problems;
}

/** Waits until what was asked for is drawn. */
const settle = (page) => page.evaluate("new Promise((done) => requestAnimationFrame(() => requestAnimationFrame(() => done(true))))");

async function canvasPicture(page) {
  const area = await page.evaluate("(({ x, y, width, height }) => ({ x, y, width, height }))" +
    "(document.getElementById('view').getBoundingClientRect())");
  return decodePng(await page.takePicture(area));
}

const rowsOf = (page, panel) => page.evaluate(`document.querySelectorAll("#panel-${panel} tbody tr").length`);
const textOf = (page, selector) => page.evaluate(`document.querySelector(${JSON.stringify(selector)}).textContent`);

/** Every table has a row for each thing that the data holds. */
async function expectRows(page) {
  const data = JSON.parse(await textOf(page, "#data"));
  const total = (key) => data.scenes.reduce((sum, scene) => sum + scene[key].length, 0);
  const expected = {
    objects: total("meshes"), materials: total("materials"), textures: data.textures.length,
    motion: data.clips.length + data.cameras.length + data.lights.length, log: data.messages.length,
    files: data.files.length, check: data.findings.length,
  };
  for (const [panel, count] of Object.entries(expected)) {
    assert.equal(await rowsOf(page, panel), count, "rows of " + panel);
  }
  return expected;
}

async function expectPicture(page, least) {
  const picture = await canvasPicture(page);
  const colors = countColors(picture);
  assert.ok(colors >= least, `the view has ${colors} colours, ${least} at least are expected`);
  return picture;
}

// ---------------------------------------------------------------------------------------------------------

const tests = {
  async "the example scene"(browser) {
    const { page: file, code, told } = exportScene(join(examples, "lighthouse/lighthouse.glb"), "lighthouse");
    assert.equal(code, 0, told);
    const page = await openPage(browser, file);
    assert.deepEqual(await problemsOf(page), []);
    const rows = await expectRows(page);
    assert.ok(rows.objects >= 20 && rows.textures >= 5 && rows.motion >= 5, JSON.stringify(rows));
    assert.equal(await textOf(page, "#panel-check"), "No findings: the written files keep to the format, " +
      "and everything they refer to is there.");
    assert.equal(await page.evaluate("[...document.images].every((image) => image.naturalWidth > 0)"), true);
    await expectPicture(page, 300);
    await tryMarks(page);
    await tryToggles(page);
    await tryTabs(page);
    await tryPlayer(page);
    assert.deepEqual(await problemsOf(page), []);
    await page.close();
  },

  async "a small dark screen"(browser) {
    const page = await openPage(browser, join(folder, "lighthouse.html"), { width: 420, height: 900, isDark: true });
    assert.deepEqual(await problemsOf(page), []);
    await expectPicture(page, 300);
    const [wide, dark] = await page.evaluate(
      "[document.documentElement.scrollWidth, getComputedStyle(document.body).backgroundColor]");
    assert.ok(wide <= 420, `the page is ${wide} pixels wide`);
    assert.equal(dark, "rgb(15, 19, 24)");
    await page.close();
  },

  async "texts that are markup"(browser) {
    const text = "</script><img src=x onerror='window.hit=1'><b>&lt;";
    const page = await openPage(browser, writePage("hostile.html", (data) => spoil(data, text)));
    assert.deepEqual(await problemsOf(page), []);
    await expectRows(page);
    assert.equal(await page.evaluate("document.querySelectorAll('img[src=x], b').length"), 0);
    assert.equal(await page.evaluate("typeof hit"), "undefined");
    for (const panel of ["objects", "materials", "textures", "motion", "log", "files", "check"]) {
      assert.ok((await textOf(page, "#panel-" + panel)).includes(text), panel + " shows the text as it stands");
    }
    assert.equal(await textOf(page, "#title"), text);
    await page.close();
  },

  async "no model"(browser) {
    const { page: file, code, told } = exportScene(join(examples, "lighthouse/lighthouse.glb"), "parts",
      ["--set", "OutputQmdl:false", "--set", "OutputQskla:false"]);
    assert.equal(code, 0, told);
    const page = await openPage(browser, file);
    assert.deepEqual(await problemsOf(page), []);
    const rows = await expectRows(page);
    assert.ok(rows.objects === 0 && rows.textures > 0 && rows.motion > 0, JSON.stringify(rows));
    assert.ok((await textOf(page, "#notice")).startsWith("No model was written"));
    await page.close();
  },

  async "no WebGL"() {
    const plain = await Browser.start(["--disable-3d-apis"]);
    const page = await openPage(plain, join(folder, "lighthouse.html"));
    assert.deepEqual(await problemsOf(page), []);
    await expectRows(page);
    assert.ok((await textOf(page, "#notice")).startsWith("There is no 3D view: this browser has no WebGL"));
    await page.evaluate("document.querySelector('#panel-objects .pick').click()");
    await page.press("f");
    assert.equal(await page.evaluate("document.querySelectorAll('tr.chosen').length"), 1);
    assert.deepEqual(await problemsOf(page), []);
    await page.close();
    await plain.close();
  },

  async "no export at all"(browser) {
    const { page: file, code } = exportScene(join(folder, "missing.glb"), "missing");
    assert.equal(code, 3);
    const page = await openPage(browser, file);
    assert.deepEqual(await problemsOf(page), []);
    await expectRows(page);
    assert.equal(await textOf(page, "#verdicts"), "✕ Export failed1 errorNo warnings0 files, 0 bytes");
    assert.equal(await page.evaluate("document.getElementById('panel-log').hidden"), false);
    await page.close();
  },

  async "a page that is broken is found out"(browser) {
    const whole = readFileSync(join(folder, "lighthouse.html"), "utf8");
    const broken = {
      "a script that fails": whole.replace("<script>/*!", "<script>throw new Error('broken');/*!")
        .replace(/script-src [^;]*;/, "script-src 'unsafe-inline';"),
      "a foreign script": whole.replace("</body>", "<script>var hit = 1;</script></body>"),
      "a damaged model": whole.replace(/id="scene-0">.{200}/, 'id="scene-0">'),
    };
    for (const [name, text] of Object.entries(broken)) {
      assert.notEqual(text, whole, name);
      writeFileSync(join(folder, "broken.html"), text);
      const page = await browser.open(pathToFileURL(join(folder, "broken.html")), size);
      for (let i = 0; i < 200 && (await problemsOf(page)).join() === "the state is loading"; i += 1) {
        await sleep(100);
      }
      const problems = await problemsOf(page);
      assert.ok(problems.length > 0 && problems[0] !== "the state is loading", `${name}: ${problems}`);
      assert.equal(await page.evaluate("typeof hit"), "undefined", name);
      await page.close();
    }
  },

  async "the samples"(browser) {
    const scenes = ["CesiumMan/CesiumMan.glb", "GeometryCameraLight/geometry-camera-light.glb"];
    if (!existsSync(samples)) {
      console.log("NOT RUN: the sample scenes are absent; they are looked for in " + samples);
      return;
    }
    for (const scene of scenes) {
      const name = basename(scene, ".glb");
      const { page: file, code, told } = exportScene(join(samples, "gltf", scene), name);
      assert.equal(code, 0, told);
      const page = await openPage(browser, file);
      assert.deepEqual(await problemsOf(page), [], name);
      await expectRows(page);
      await expectPicture(page, 60);
      if (name === "CesiumMan") {
        assert.equal(await page.evaluate("document.getElementById('player').hidden"), false, "it has a clip");
        await tryPlayer(page);
      }
      await page.close();
    }
  },
};

/** A click on a row marks the object, a click on the object its row. */
async function tryMarks(page) {
  const before = await canvasPicture(page);
  await page.evaluate("[...document.querySelectorAll('#panel-objects .pick')]" +
    ".find((button) => button.textContent.startsWith('Island')).click()");
  await settle(page);
  const part = compare(before, await canvasPicture(page));
  assert.ok(part > 0.02, `choosing a row changes ${part} of the view`);
  assert.equal(await textOf(page, "#picked"), "Island · Ground");
  await page.evaluate("document.querySelector('#panel-objects tbody tr').click()");
  const { x, y, width, height } = await page.evaluate("(({ x, y, width, height }) => ({ x, y, width, height }))" +
    "(document.getElementById('canvas').getBoundingClientRect())");
  const other = await textOf(page, "#picked");
  await page.click(x + width / 2, y + height / 2);
  const isOther = await page.waitFor(`document.getElementById("picked").textContent !== ${JSON.stringify(other)}`, 20);
  assert.ok(isOther, "a click into the view chooses another object");
  assert.equal(await page.evaluate("document.querySelectorAll('tr.chosen').length"), 1);
  await page.click(x + 5, y + 5); // above all objects
  assert.ok(await page.waitFor("document.querySelectorAll('tr.chosen').length === 0", 20), "a click on nothing");
}

/** Every way of looking at it changes the view, and changes it back. */
async function tryToggles(page) {
  const names = await page.evaluate("[...document.querySelectorAll('#tools [aria-pressed]')].map((b) => b.textContent)");
  assert.ok(["Wireframe", "Normals", "Bones", "Boxes", "Grid"].every((name) => names.includes(name)), String(names));
  const plain = await canvasPicture(page);
  for (const name of names) {
    const press = () => page.evaluate("[...document.querySelectorAll('#tools button')]" +
      `.find((button) => button.textContent === ${JSON.stringify(name)}).click()`);
    await press();
    await settle(page);
    const part = compare(plain, await canvasPicture(page));
    assert.ok(part > 0.002, `${name} changes ${part} of the view`);
    await press();
  }
  await settle(page);
  assert.ok(compare(plain, await canvasPicture(page)) < 0.001, "all is as it was");
}

async function tryTabs(page) {
  await page.evaluate("document.getElementById('tab-objects').focus()");
  const shown = () => page.evaluate("[...document.querySelectorAll('[role=tabpanel]')].filter((p) => !p.hidden).map((p) => p.id).join()");
  await page.press("ArrowRight");
  assert.equal(await shown(), "panel-materials");
  await page.press("ArrowLeft");
  await page.press("ArrowLeft");
  assert.equal(await shown(), "panel-check");
  await page.evaluate("document.querySelector('#panel-objects th:nth-child(3) button').click()");
  const counts = await page.evaluate("[...document.querySelectorAll('#panel-objects tbody tr')]" +
    ".map((row) => Number(row.cells[2].textContent.replaceAll(',', '')))");
  assert.deepEqual(counts, [...counts].sort((a, b) => a - b), "sorted by a click");
}

/** Steps, plays and stops by keys; the picture follows. */
async function tryPlayer(page) {
  const frame = () => page.evaluate("Number(document.querySelector('.frames strong').textContent)");
  await page.evaluate("document.activeElement.blur()");
  assert.equal(await frame(), 0);
  const first = await canvasPicture(page);
  await page.press("ArrowRight");
  assert.equal(await frame(), 1);
  await page.press("End");
  const last = await frame();
  assert.ok(last > 10, `the last frame is ${last}`);
  await page.press("Home");
  for (let i = 0; i < Math.floor(last / 3); i += 1) {
    await page.press("ArrowRight");
  }
  await settle(page);
  const part = compare(first, await canvasPicture(page));
  assert.ok(part > 0.001, `a third of the clip later ${part} of the view is different`);
  await page.press("Home");
  await page.press(" ");
  assert.ok(await page.waitFor("Number(document.querySelector('.frames strong').textContent) > 1", 20), "it plays");
  await page.press(" ");
  const stopped = await frame();
  await sleep(200);
  assert.equal(await frame(), stopped, "it has stopped");
}

/** The example's page with data that a function has changed. */
function writePage(name, change) {
  const whole = readFileSync(join(folder, "lighthouse.html"), "utf8");
  const file = join(folder, name);
  writeFileSync(file, whole.replace(/(<script type="application\/json" id="data">)([^<]*)/, (_, start, text) => {
    const data = JSON.parse(text);
    change(data);
    return start + JSON.stringify(data).replaceAll("<", "\\u003c");
  }));
  return file;
}

/** Puts a text in the place of every text, but for words and addresses that the program itself writes. */
function spoil(data, text) {
  data.messages = [{ severity: "warning", object: "", text: "", count: 1 }];
  data.findings = [{ code: "", severity: "error", file: "", line: 1, text: "" }];
  const visit = (value, key) => {
    if (Array.isArray(value)) {
      return value.map((item) => visit(item, key));
    }
    if (value && typeof value === "object") {
      return Object.fromEntries(Object.entries(value).map(([name, item]) => [name, visit(item, name)]));
    }
    return typeof value === "string" && !["glb", "thumbnail", "severity", "problem"].includes(key) ? text : value;
  };
  Object.assign(data, visit(data, ""));
}

let failures = 0;
try {
  const browser = await Browser.start();
  for (const [name, test] of Object.entries(tests)) {
    const start = Date.now();
    try {
      await test(browser);
      console.log(`passed: ${name} (${((Date.now() - start) / 1000).toFixed(1)} s)`);
    } catch (problem) {
      failures += 1;
      console.log(`FAILED: ${name}\n${problem.stack}`);
    }
  }
  await browser.close();
} finally {
  rmSync(folder, { recursive: true, force: true });
}
process.exitCode = failures ? 1 : 0;
