// A headless Chromium, driven over a pipe: pages, pictures of them, mouse and keys.
import { spawn } from "node:child_process";
import { mkdtempSync, rmSync } from "node:fs";
import { tmpdir } from "node:os";
import { join } from "node:path";
import { setTimeout as sleep } from "node:timers/promises";

const switches = [
  "--headless", "--no-sandbox", "--disable-gpu", "--use-gl=angle", "--use-angle=swiftshader",
  "--enable-unsafe-swiftshader", "--disable-dev-shm-usage", "--no-first-run", "--hide-scrollbars", "--mute-audio",
  "--disable-background-networking", "--disable-component-update", "--remote-debugging-pipe",
];

export class Browser {
  /** "more": further switches. */
  static async start(more = []) {
    const browser = new Browser();
    browser.folder = mkdtempSync(join(tmpdir(), "tq4x-browser-"));
    browser.process = spawn("chromium", [...switches, ...more, "--user-data-dir=" + browser.folder, "about:blank"],
      { stdio: ["ignore", "ignore", "ignore", "pipe", "pipe"] });
    browser.waiting = new Map();
    browser.sessions = new Map();
    browser.last = 0;
    browser.ended = new Promise((resolve) => {
      browser.process.on("error", resolve); // not installed
      browser.process.on("exit", (code) => resolve(new Error("Chromium ended, code " + code)));
    });
    browser.ended.then((problem) => browser.waiting.forEach(({ reject }) => reject(problem)));
    browser.process.stdio[3].on("error", () => {});
    let text = "";
    browser.process.stdio[4].setEncoding("utf8").on("data", (part) => {
      const messages = (text + part).split("\0");
      text = messages.pop();
      messages.forEach((message) => browser.take(JSON.parse(message)));
    });
    await browser.send("Browser.getVersion");
    return browser;
  }

  take(message) {
    if (message.id) {
      const { resolve, reject } = this.waiting.get(message.id);
      this.waiting.delete(message.id);
      message.error ? reject(new Error(message.error.message)) : resolve(message.result);
    } else {
      this.sessions.get(message.sessionId)?.(message);
    }
  }

  send(method, params = {}, sessionId = undefined) {
    this.last += 1;
    const id = this.last;
    return new Promise((resolve, reject) => {
      this.waiting.set(id, { resolve, reject });
      this.process.stdio[3].write(JSON.stringify({ id, method, params, sessionId }) + "\0");
    });
  }

  /** Opens a page: {width, height, isDark}. */
  async open(address, { width = 1280, height = 800, isDark = false } = {}) {
    const { targetId } = await this.send("Target.createTarget", { url: "about:blank" });
    const { sessionId } = await this.send("Target.attachToTarget", { targetId, flatten: true });
    const page = new Page(this, targetId, sessionId);
    this.sessions.set(sessionId, (message) => page.hear(message));
    for (const domain of ["Page", "Runtime", "Log", "Network"]) {
      await page.send(domain + ".enable");
    }
    await page.send("Emulation.setDeviceMetricsOverride", { width, height, deviceScaleFactor: 1, mobile: false });
    await page.send("Emulation.setEmulatedMedia",
      { features: [{ name: "prefers-color-scheme", value: isDark ? "dark" : "light" }] });
    await page.send("Page.navigate", { url: String(address) });
    return page;
  }

  async close() {
    this.send("Browser.close").catch(() => {}); // it may end before it answers
    await Promise.race([this.ended, sleep(5000).then(() => this.process.kill("SIGKILL"))]);
    await this.ended;
    rmSync(this.folder, { recursive: true, force: true, maxRetries: 10, retryDelay: 100 });
  }
}

export class Page {
  constructor(browser, targetId, sessionId) {
    this.browser = browser;
    this.targetId = targetId;
    this.sessionId = sessionId;
    this.errors = []; // texts of the console and of exceptions
    this.requests = []; // addresses outside of the page itself
  }

  send(method, params) {
    return this.browser.send(method, params, this.sessionId);
  }

  hear({ method, params }) {
    if (method === "Runtime.exceptionThrown") {
      this.errors.push(params.exceptionDetails.exception?.description ?? params.exceptionDetails.text);
    } else if (method === "Runtime.consoleAPICalled" && params.type === "error") {
      this.errors.push(params.args.map((arg) => arg.value ?? arg.description).join(" "));
    } else if (method === "Log.entryAdded" && params.entry.level === "error") {
      this.errors.push(params.entry.text);
    } else if (method === "Network.requestWillBeSent" && !/^(file|data|blob):/.test(params.request.url)) {
      this.requests.push(params.request.url);
    }
  }

  /** The value of an expression in the page. */
  async evaluate(expression) {
    const { result, exceptionDetails } = await this.send("Runtime.evaluate",
      { expression, returnByValue: true, awaitPromise: true });
    if (exceptionDetails) {
      throw new Error(expression + ": " + (exceptionDetails.exception?.description ?? exceptionDetails.text));
    }
    return result.value;
  }

  /** Waits until an expression is true; false if it does not become so. */
  async waitFor(expression, seconds = 30) {
    const end = Date.now() + seconds * 1000;
    while (Date.now() < end) {
      if (await this.evaluate(expression)) {
        return true;
      }
      await sleep(50);
    }
    return false;
  }

  /** The bytes of a PNG file of the page, or of an area {x, y, width, height} of it. */
  async takePicture(area) {
    const { data } = await this.send("Page.captureScreenshot", { format: "png", ...(area && { clip: { ...area, scale: 1 } }) });
    return Buffer.from(data, "base64");
  }

  async click(x, y) {
    for (const type of ["mouseMoved", "mousePressed", "mouseReleased"]) {
      await this.send("Input.dispatchMouseEvent", { type, x, y, button: type === "mouseMoved" ? "none" : "left", clickCount: 1 });
    }
  }

  async press(key) {
    const text = key.length === 1 ? key : undefined;
    await this.send("Input.dispatchKeyEvent", { type: "keyDown", key, code: key === " " ? "Space" : key, text });
    await this.send("Input.dispatchKeyEvent", { type: "keyUp", key, code: key === " " ? "Space" : key });
  }

  close() {
    return this.browser.send("Target.closeTarget", { targetId: this.targetId });
  }
}
