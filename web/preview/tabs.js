import { byId, make } from "./dom.js";

// Panels behind tabs: arrows move between tabs, as everywhere.

const tabs = [];

export function showTab(id) {
  for (const tab of tabs) {
    const isShown = tab.id === id;
    tab.button.setAttribute("aria-selected", String(isShown));
    tab.button.tabIndex = isShown ? 0 : -1;
    tab.body.hidden = !isShown;
  }
}

function move(event) {
  const step = { ArrowRight: 1, ArrowLeft: -1 }[event.key];
  if (!step) {
    return;
  }
  const now = tabs.findIndex((tab) => tab.button === event.currentTarget);
  const next = tabs[(now + step + tabs.length) % tabs.length];
  showTab(next.id);
  next.button.focus();
  event.preventDefault();
  event.stopPropagation();
}

/** Adds a panel. "tone" is "warn", "bad" or nothing: how its number looks. */
export function addTab(id, text, number, tone, ...content) {
  const badge = make("span", { className: "count " + tone }, String(number));
  const button = make("button",
    { type: "button", id: "tab-" + id, role: "tab", "aria-controls": "panel-" + id }, text, badge);
  button.addEventListener("click", () => showTab(id));
  button.addEventListener("keydown", move);
  const body = make("div",
    { id: "panel-" + id, role: "tabpanel", "aria-labelledby": "tab-" + id, "data-rows": String(number) }, ...content);
  tabs.push({ id, button, body });
  byId("tabs").append(button);
  byId("bodies").append(body);
}
