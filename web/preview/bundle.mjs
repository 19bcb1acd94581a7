// Makes the page of an export, all in one file, with gaps for the data of an export:
//     node bundle.mjs OUTPUT
// Gaps are words between at signs; the program fills @TITLE@, @DATA@ and @MODELS@.
import { createHash } from "node:crypto";
import { readFileSync, writeFileSync } from "node:fs";
import { dirname, join } from "node:path";
import { fileURLToPath } from "node:url";
import { build } from "esbuild";

const here = dirname(fileURLToPath(import.meta.url));
const read = (...parts) => readFileSync(join(here, ...parts), "utf8");

async function bundle(entry) {
  const result = await build({
    entryPoints: [join(here, entry)], bundle: true, minify: true, write: false, format: "iife", charset: "ascii",
    target: ["chrome111", "firefox113", "safari16.4"], legalComments: "none", logLevel: "error",
  });
  return result.outputFiles[0].text.trim();
}

const notice = read("..", "node_modules", "three", "LICENSE").trim();
const script = "/*! three.js\n" + notice.replaceAll("*/", "* /") + "\n*/\n" + (await bundle("main.js")) + "\n";
const style = await bundle("page.css");

// The browser runs this script and no other, whatever a scene brings.
const hash = "'sha256-" + createHash("sha256").update(script, "utf8").digest("base64") + "'";

const page = read("page.html").replace("@SCRIPT_HASH@", () => hash).replace("@STYLE@", () => style).replace("@SCRIPT@", () => script);
writeFileSync(process.argv[2], page);
