import { byId, make } from "./dom.js";
import { bytes, plural } from "./format.js";
import { countMessages } from "./panels.js";
import { showTab } from "./tabs.js";

// The line at the top: what this is, and whether it can be trusted, at a glance.

function verdict(text, tone, tab) {
  const button = make("button", { type: "button" }, text);
  button.addEventListener("click", () => showTab(tab));
  return make("li", { className: "verdict " + tone }, button);
}

export function fillHead(data) {
  byId("title").textContent = data.name;
  byId("origin").textContent = [data.scene, data.date, data.author && "by " + data.author, data.program]
    .filter(Boolean).join(" · ");
  const errors = countMessages(data, "error");
  const warnings = countMessages(data, "warning");
  const size = data.files.reduce((total, file) => total + file.size, 0);
  const list = [data.exitCode === 0 ? verdict("✓ Exported", "good", "files") : verdict("✕ Export failed", "bad", "log")];
  if (errors) {
    list.push(verdict(plural(errors, "error"), "bad", "log"));
  }
  list.push(verdict(warnings ? plural(warnings, "warning") : "No warnings", warnings ? "warn" : "good", "log"));
  if (data.files.length) {
    const isWrong = data.findings.some((finding) => finding.severity === "error");
    list.push(data.findings.length
      ? verdict("Check: " + plural(data.findings.length, "finding"), isWrong ? "bad" : "warn", "check")
      : verdict("✓ Check: no findings", "good", "check"));
  }
  list.push(verdict(`${plural(data.files.length, "file")}, ${bytes(size)}`, "", "files"));
  byId("verdicts").append(...list);
}
