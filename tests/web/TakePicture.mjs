// A picture of a page: node TakePicture.mjs PAGE.html OUT.png [WIDTHxHEIGHT] [dark|light] [SCRIPT]
// The script, if there is one, runs in the page before the picture is taken.
import { writeFileSync } from "node:fs";
import { resolve } from "node:path";
import { pathToFileURL } from "node:url";
import { setTimeout as sleep } from "node:timers/promises";
import { Browser } from "./Browser.mjs";

const [file, output, size = "1280x800", theme = "light", script = ""] = process.argv.slice(2);
const [width, height] = size.split("x").map(Number);
const browser = await Browser.start();
const page = await browser.open(pathToFileURL(resolve(file)), { width, height, isDark: theme === "dark" });
await page.waitFor("/ready|failed/.test(document.documentElement?.dataset.state)");
if (script) {
  await page.evaluate(script);
}
await sleep(500); // the last picture is drawn
writeFileSync(output, await page.takePicture());
page.errors.forEach((error) => console.error(error));
await browser.close();
