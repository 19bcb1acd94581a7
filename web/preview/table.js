import { make } from "./dom.js";

// A table that is sorted by a click on a heading.
//
// A column is {text, value(row), cell(row)?, isNumber?}: "value" sorts and is shown where there is no "cell".
// Rows that "onPick" is given for can be chosen, by mouse or keyboard.

function compare(a, b) {
  return typeof a === "number" && typeof b === "number" ? a - b : String(a).localeCompare(String(b), "en", { numeric: true });
}

function makeRow(columns, row, onPick) {
  const cells = columns.map((column, index) => {
    let content = column.cell ? column.cell(row) : String(column.value(row));
    if (onPick && index === 0) {
      content = make("button", { type: "button", className: "pick" }, content);
    }
    return make("td", { className: column.isNumber ? "number" : "" }, content);
  });
  const line = make("tr", { className: onPick ? "clickable" : "" }, ...cells);
  if (onPick) {
    line.addEventListener("click", () => onPick(row));
  }
  return line;
}

export function makeTable(caption, columns, rows, onPick) {
  const lines = rows.map((row) => makeRow(columns, row, onPick));
  const body = make("tbody", {}, ...lines);
  const headings = columns.map((column) => {
    const button = make("button", { type: "button", title: "Sort by " + column.text.toLowerCase() }, column.text);
    return make("th", { scope: "col", className: column.isNumber ? "number" : "" }, button);
  });
  headings.forEach((heading, index) => {
    heading.firstChild.addEventListener("click", () => {
      const isDown = heading.getAttribute("aria-sort") === "ascending";
      headings.forEach((other) => other.removeAttribute("aria-sort"));
      heading.setAttribute("aria-sort", isDown ? "descending" : "ascending");
      const order = rows.map((_, place) => place);
      const value = columns[index].value;
      order.sort((a, b) => (isDown ? -1 : 1) * compare(value(rows[a]), value(rows[b])));
      body.append(...order.map((place) => lines[place]));
    });
  });
  const element = make("table", { "aria-label": caption }, make("thead", {}, make("tr", {}, ...headings)), body);
  return {
    element,
    /** Marks a row, or none, and brings it into view. */
    choose(row) {
      lines.forEach((line, place) => {
        const isChosen = rows[place] === row;
        line.classList.toggle("chosen", isChosen);
        if (isChosen) {
          line.setAttribute("aria-current", "true");
          line.scrollIntoView({ block: "nearest" });
        } else {
          line.removeAttribute("aria-current");
        }
      });
    },
  };
}
