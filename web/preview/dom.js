// Elements. Texts of a scene are nobody's markup: they get into the page as text alone.

/** Makes an element. Properties with a "-" and "role" become attributes, all others fields. Children are nodes or texts. */
export function make(tag, properties = {}, ...children) {
  const element = document.createElement(tag);
  for (const [key, value] of Object.entries(properties)) {
    if (key.includes("-") || key === "role") {
      element.setAttribute(key, value);
    } else {
      element[key] = value;
    }
  }
  element.append(...children);
  return element;
}

export const byId = (id) => document.getElementById(id);

/** A button that is on or off; calls back with its new state. */
export function makeToggle(text, title, isOn, onChange) {
  const button = make("button", { type: "button", title, "aria-pressed": String(isOn) }, text);
  button.addEventListener("click", () => {
    const now = button.getAttribute("aria-pressed") !== "true";
    button.setAttribute("aria-pressed", String(now));
    onChange(now);
  });
  return button;
}

/** A labelled choice of rows {text, value}; calls back with the index of the chosen row. */
export function makeChoice(label, texts, chosen, onChange) {
  const select = make("select", {}, ...texts.map((text, index) => make("option", { value: String(index) }, text)));
  select.selectedIndex = chosen;
  select.addEventListener("change", () => onChange(select.selectedIndex));
  return make("label", {}, label, select);
}
